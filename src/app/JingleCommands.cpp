#include "app/JingleCommands.h"

#include "app/Desk.h"
#include "app/DeskActions.h"
#include "live/ui/frmJingle.h"
#include "live/ui/frmJingleAnzeige.h"
#include "widgets/xMessageBox.h"

namespace kalvo {

namespace {

constexpr int kSecond = 1000;       // ms
constexpr int kJingleInterval = 50; // ms

} // namespace

JingleCommands::JingleCommands(Desk& desk, DeskActions& actions, QWidget& window)
    : QObject(&window),
      desk_(desk),
      window_(window),
      file_(desk.folder.Path(QStringLiteral("\\TerminPlayNeu.dll")), desk.settings, desk.clock),
      scheduler_(file_, desk.clock),
      player_(desk.mixer),
      history_(player_, desk.evening, desk.clock),
      timer6_(new QTimer(this)),
      ticks_(new QTimer(this)),
      display_(new frmJingleAnzeige(player_, &window)) {
    QAction* open =
        actions.toolsMenu->addAction(QStringLiteral("&Termin-Play (Jingle)..."), this, &JingleCommands::TerminPlay);
    open->setObjectName(QStringLiteral("TerminPlay"));
    ShowEnded();
    connect(&player_, &JinglePlayer::Started, this, &JingleCommands::ShowStarted);
    connect(&player_, &JinglePlayer::Ended, this, &JingleCommands::ShowEnded);
    connect(&history_, &JingleHistory::Told, this, &JingleCommands::Warned);
    connect(&player_, &JinglePlayer::Failed, this, &JingleCommands::TellFailed);
    timer6_->setObjectName(QStringLiteral("Timer6"));
    connect(timer6_, &QTimer::timeout, this, &JingleCommands::Check);
    timer6_->start(kSecond);
    ticks_->setInterval(kJingleInterval);
    connect(ticks_, &QTimer::timeout, this, &JingleCommands::Tick);
}

void JingleCommands::TerminPlay() {
    if (player_.IsPlaying())
        display_->show(); // it may have been closed, and the jingle shall be stopped
    if (!list_) {
        list_ = new frmJingle(file_, desk_.folder.Path(QStringLiteral("\\sample\\")), &window_);
        list_->setAttribute(Qt::WA_DeleteOnClose);
        connect(list_, &frmJingle::Saved, this, [this] { scheduler_.Reload(); });
    }
    list_->show();
    list_->raise();
    list_->activateWindow();
}

void JingleCommands::Check() {
    for (const DueJingle& jingle : scheduler_.Check())
        player_.Add(jingle);
    if (player_.IsBusy() && !ticks_->isActive())
        ticks_->start();
    Q_EMIT Looked();
}

void JingleCommands::Tick() {
    player_.Tick();
    if (player_.IsPlaying())
        display_->Refresh();
    if (!player_.IsBusy())
        ticks_->stop();
}

void JingleCommands::ShowStarted(const DueJingle& jingle) {
    window_.setWindowTitle(jingle.Caption());
    display_->Refresh();
    display_->show();
}

void JingleCommands::ShowEnded() {
    window_.setWindowTitle(QStringLiteral("Kalvo [der mixer made in germany]"));
}

/** One message stands for all that follow until it is closed; the status line names each file. */
void JingleCommands::TellFailed(const QString& path) {
    Q_EMIT Warned(QStringLiteral("Termin-Play: Kann diese Datei nicht wiedergeben: ") + path);
    if (message_)
        return;
    message_ =
        new xMessageBox(&window_, QStringLiteral("Termin-Play"), QStringLiteral("Kann diese Datei nicht wiedergeben!"),
                        {QStringLiteral("ok")}, xMessageBox::Sign::Warning);
    message_->setModal(false);
    message_->setAttribute(Qt::WA_DeleteOnClose);
    message_->setAttribute(Qt::WA_ShowWithoutActivating);
    message_->show();
}

} // namespace kalvo
