#pragma once

#include "live/JingleFile.h"
#include "live/JingleHistory.h"
#include "live/JinglePlayer.h"
#include "live/JingleScheduler.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

class QWidget;

namespace kalvo {

struct Desk;
class DeskActions;
class frmJingle;
class frmJingleAnzeige;
class xMessageBox;

/**
 * Scheduled play in the main window: `Timer6` looks every second for what is due; the window's caption tells what
 * plays. Messages stand beside the running program: nothing waits for their answer.
 */
class JingleCommands : public QObject {
    Q_OBJECT

public:
    /** desk, actions and window outlive the commands. */
    JingleCommands(Desk& desk, DeskActions& actions, QWidget& window);

    void TerminPlay();
    /** None when nothing is scheduled. */
    const std::optional<ComingJingle>& Next() const { return scheduler_.Next(); }

Q_SIGNALS:
    /** For the status line; stays there for a while. */
    void Warned(const QString& text);
    /** Once a second. */
    void Looked();

private:
    void Check();
    void Tick();
    void ShowStarted(const DueJingle& jingle);
    void ShowEnded();
    void TellFailed(const QString& path);

    Desk& desk_;
    QWidget& window_;
    JingleFile file_;
    JingleScheduler scheduler_;
    JinglePlayer player_;
    JingleHistory history_;
    QTimer* timer6_;
    QTimer* ticks_; ///< while something plays, opens or waits
    QPointer<frmJingle> list_;
    frmJingleAnzeige* display_;
    QPointer<xMessageBox> message_;
};

} // namespace kalvo
