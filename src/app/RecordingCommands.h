#pragma once

#include "playback/MasterRecorder.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

class QMenu;
class QWidget;

namespace kalvo {

struct Desk;
class StatusLine;
class frmMitschnitt;

/** The recording of the mix: its window, `Mitschnitt` in the menu, and its running time in the status line. */
class RecordingCommands : public QObject {
    Q_OBJECT

public:
    /** All outlive the commands. window: parent of the recording's. */
    RecordingCommands(Desk& desk, QMenu& toolsMenu, StatusLine& status, QWidget& window);
    ~RecordingCommands() override;

private:
    void Mitschnitt();
    void Refresh();
    void ShowChange();
    void TellFailure(const QString& message);

    Desk& desk_;
    StatusLine& status_;
    QWidget& window_;
    MasterRecorder recorder_;
    QPointer<frmMitschnitt> dialog_;
    QTimer display_;
};

} // namespace kalvo
