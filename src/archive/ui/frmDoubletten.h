#pragma once

#include "archive/DuplicateFinder.h"

#include <QDialog>

class QAction;
class QBoxLayout;
class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QTableView;

namespace kalvo {

class DuplicateModel;
class ElidedLabel;
class SearchButton;
class ShownNumbers;

/**
 * The duplicate finder: searches the archive for titles that it holds more than once, and deletes what the user marks
 * in the result. Modeless; a search runs in the background, is ended by its button, and by closing the window. Files go
 * into the bin in the background, too, whatever becomes of the window.
 */
class frmDoubletten : public QDialog {
    Q_OBJECT

public:
    /** The archive outlives the dialog. */
    explicit frmDoubletten(Archive& archive, QWidget* parent = nullptr);
    ~frmDoubletten() override;

Q_SIGNALS:
    /** Titles were deleted from the archive, without their files; the archive does not show it yet. */
    void Deleted();

private:
    QBoxLayout* BuildStart();
    void BuildList();
    QBoxLayout* BuildButtons();
    QPushButton* AddCommand(QBoxLayout& row, const QString& name, const QString& text, void (frmDoubletten::*run)());

    void StartOrCancel();
    void ShowIdle(const QString& progress);
    void ShowProgress(const QString& text, int percent);
    void End(const DuplicateReport& report);
    void ShowStale(const DuplicateReport& report);
    void FitColumns();

    /** `Nr` of the marked rows. */
    QList<qint64> Selected() const;
    void ShowSelection();
    void DeleteFromArchive();
    void MoveToBin();
    void ShowBinned(const BinReport& report);
    void RemoveRows(const QList<qint64>& numbers);
    void ShowFileInformation();

    Archive& archive_;
    DuplicateFinder* finder_;
    DuplicateModel* found_;
    ShownNumbers* shownNumbers_; ///< of `List2`
    QComboBox* mode_;            ///< `Combo1`
    SearchButton* start_;        ///< `Command1`
    QTableView* list_;           ///< `List1`
    ElidedLabel* progressText_;  ///< `Label2`
    QProgressBar* progress_;     ///< `ProgressBar`
    QLabel* hint_;               ///< `lblHinweis`
    QList<QAction*> commands_;   ///< what can be done with the marked rows
};

} // namespace kalvo
