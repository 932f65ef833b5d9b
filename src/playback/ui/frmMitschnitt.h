#pragma once

#include "playback/MasterRecorder.h"
#include "playback/RecordingOptions.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace kalvo {

class ElidedLabel;
class IconButton;
class LevelBar;
class TimeLabel;

/** "01:23:45" */
QString RecordingTime(double seconds);

/**
 * The window of the recording: format, folder and name, start and stop, running time, level and the room on the disk.
 * Modeless; the recording goes on when it is closed. A view: the owner tells it what runs.
 */
class frmMitschnitt : public QDialog {
    Q_OBJECT

public:
    frmMitschnitt(const RecordingOptions& options, const QDateTime& now, QWidget* parent = nullptr);
    ~frmMitschnitt() override;

    void ShowState(const RecordingState& state);
    /** 0 to 1, the lit share of the bar. */
    void ShowLevels(float left, float right);
    /** A new suggestion for the name, unless the user has typed one. */
    void SuggestName(const QDateTime& now);

Q_SIGNALS:
    void StartRequested(const kalvo::RecordingOrder& order);
    void StopRequested();
    /** Format or folder have been chosen. */
    void OptionsChosen(const kalvo::RecordingOptions& options);

private:
    void Build();
    QLayout* BuildHead();
    QLayout* BuildRows();
    void ChooseFolder();
    void OpenFolder();
    void StartOrStop();
    void ShowEnding();
    void ShowFree(const RecordingState& state);
    void ShowStatus(const RecordingState& state);

    RecordingOptions options_;
    QString suggested_;
    RecordingStatus status_ = RecordingStatus::Idle;
    IconButton* start_;       ///< `cmdAufnahme`
    TimeLabel* time_;         ///< `lblZeit`
    ElidedLabel* statusText_; ///< `lblStand`
    LevelBar* level_;         ///< `Pegel`
    QComboBox* format_;       ///< `cboFormat`
    ElidedLabel* folder_;     ///< `lblOrdner`
    QPushButton* choose_;     ///< `cmdOrdner`
    QLineEdit* name_;         ///< `txtName`
    QLabel* ending_;
    ElidedLabel* file_;   ///< `lblDatei`
    ElidedLabel* size_;   ///< `lblGroesse`
    ElidedLabel* free_;   ///< `lblFrei`
    ElidedLabel* titles_; ///< `lblTitel`
};

} // namespace kalvo
