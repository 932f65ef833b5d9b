#pragma once

#include "live/AutoDjFill.h"
#include "live/AutoDjStore.h"

#include <QDialog>

#include <optional>

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QSpinBox;

namespace kalvo {

class AutoDjRefill;
class DataFolder;
class ElidedLabel;
class ValueChoice;

/**
 * The automatic DJ: which titles are to be drawn, how many, by which rules and into which list; and "Nachfüllen", which
 * goes on when the window is closed. Modeless.
 */
class frmAutoDj : public QDialog {
    Q_OBJECT

public:
    struct Parts {
        const DataFolder& folder;
        const TitleSource& source;
        RandomSource& random;
        PlaylistActions& lists;
        const Clock& clock;
        AutoDjStore& store;
        AutoDjRefill& refill;
    };
    /** All parts outlive the window. */
    explicit frmAutoDj(const Parts& parts, QWidget* parent = nullptr);

    /** The category files have been written anew. */
    void ReloadValues();
    /** Shows what was chosen last; to be called when its signals are heard, since category files may be missing. */
    void Start();

    void done(int result) override;

Q_SIGNALS:
    void ListsWanted();
    /** The archive view is to show its default record source. */
    void NormalViewWanted();
    /** For the status line. */
    void Told(const QString& text);

private:
    QBoxLayout* BuildSaved();
    QBoxLayout* BuildGoal();
    QBoxLayout* BuildRules();
    QBoxLayout* BuildRefill();
    QBoxLayout* BuildEnd();
    QPushButton* AddButton(QBoxLayout& row, const QString& name, const QString& text, const QString& what,
                           void (frmAutoDj::*act)());
    QSpinBox* MakeNumber(const QString& name, const QString& what, int highest);

    /** What the window shows; no value, after a message, without values. */
    std::optional<AutoDjSelection> Selection();
    AutoDjSelection Shown() const;
    std::optional<double> Hours() const;
    void Show(const AutoDjSelection& selection);
    void ShowSaved(const QString& name);
    void ShowRefill();
    void ShowProgress(int percent);
    void SetRunning(bool running);
    void Tell(const QString& text);
    void Keep();

    void Fill();
    void End(int titles, qint64 seconds, bool isReached);
    void LoadSaved();
    void SaveSelection();
    void RemoveSelection();
    void SwitchRefill(bool on);
    void ChangeRefillBelow(int titles);

    Parts parts_;
    AutoDjFill fill_;
    ValueChoice* values_;
    QComboBox* saved_;
    QLineEdit* hours_; ///< `Text1`
    QRadioButton* firstList_;
    QRadioButton* bothLists_; ///< `optBeideWiedergabelisten`
    QCheckBox* artistRule_;
    QSpinBox* artistDistance_;
    QCheckBox* playedRule_;
    QCheckBox* versionRule_;
    QCheckBox* refill_;
    QSpinBox* refillBelow_;
    ElidedLabel* refillState_;
    QProgressBar* progress_; ///< `ProgressBar1`
    QLabel* percent_;
    ElidedLabel* told_;
    QPushButton* start_ = nullptr; ///< `Command1`
};

} // namespace kalvo
