#include "app/ListenCommands.h"

#include "app/Desk.h"
#include "app/DeskActions.h"
#include "app/ListBand.h"
#include "archive/ui/ArchivePanel.h"
#include "archive/ui/SelectedTitleView.h"
#include "base/FaderLaw.h"
#include "playlists/PlaylistActions.h"
#include "playlists/ui/PlaylistPanel.h"

#include <QAction>

namespace kalvo {

ListenCommands::ListenCommands(const Parts& parts)
    : QObject(&parts.window),
      parts_(parts),
      preListening_(parts.desk.mixer, this),
      playThrough_(parts.desk.mixer, parts.desk.list1, parts.desk.list2, this) {
    BuildMenu();
    ConnectPreListening();
    ConnectPlayThrough();
}

ListenCommands::~ListenCommands() = default;

void ListenCommands::BuildMenu() {
    playing_ = new QAction(this);
    playing_->setObjectName(QStringLiteral("TitelAnspielen"));
    connect(playing_, &QAction::triggered, this, &ListenCommands::TitelAnspielen);
    UnlockTransport();
    auto* separator = new QAction(this);
    separator->setSeparator(true);
    parts_.actions.listMenu->addSeparator();
    parts_.actions.listMenu->addAction(playing_);
    for (const int player : {1, 2})
        parts_.band.Panel(player).View().addActions({separator, playing_});
}

// ---- pre-listening

void ListenCommands::ConnectPreListening() {
    PlayCounter* counter = &parts_.desk.counter;
    SelectedTitleView* title = &parts_.archive.Title();
    connect(&parts_.archive, &ArchivePanel::PreListenRequested, this, &ListenCommands::PreListen);
    connect(&preListening_, &PreListening::Beginning, counter, &PlayCounter::StopTimer3);
    connect(&preListening_, &PreListening::Told, this, &ListenCommands::Told);
    connect(&preListening_, &PreListening::FileMissing, this, [this, title] {
        title->ShowInPlaceOfArtist(PreListening::MissingText());
        Q_EMIT Told(PreListening::MissingText());
    });
    connect(&preListening_, &PreListening::Changed, this, [this, title] {
        if (preListening_.IsFading())
            playThrough_.Abandon();
        title->ShowPreListening(preListening_.IsFading() || preListening_.IsPlaying());
        parts_.band.Panel(1).SetOtherCaption(preListening_.IsPlaying() ? PreListening::Caption() : QString());
    });
}

void ListenCommands::PreListen(const TitleRecord& title) {
    preListening_.Ask({title.Titel, title.Interpret, {}, title.Pfad});
}

// ---- play-through

void ListenCommands::ConnectPlayThrough() {
    connect(&playThrough_, &PlayThrough::Beginning, &parts_.desk.counter, &PlayCounter::StopTimer3);
    connect(&playThrough_, &PlayThrough::Selected, this, [this](int player, int row) {
        PlaylistView& view = parts_.band.Panel(player).View();
        view.selectRow(row);
        view.ShowComing(row);
    });
    connect(&playThrough_, &PlayThrough::Changed, this, [this] {
        UnlockTransport();
        if (playThrough_.Player() != 0) {
            preListening_.Abandon();
            LockTransport();
        }
    });
}

void ListenCommands::TitelAnspielen() {
    if (playThrough_.Player() != 0) {
        playThrough_.End();
        return;
    }
    const int player = parts_.lists.ActiveList();
    if (parts_.desk.List(player).IsEmpty()) {
        Q_EMIT Told(QStringLiteral("Wiedergabeliste %1 ist leer.").arg(player));
        return;
    }
    playThrough_.Begin(player, PlayThrough::SecondsOf(parts_.desk.settings.GetSetting(
                                   QStringLiteral("Mixer"), QStringLiteral("ScanIntervall"), QStringLiteral("7"))));
}

/** Of what starts and stops music only the player's own stop remains. */
void ListenCommands::LockTransport() {
    const DeskActions& actions = parts_.actions;
    const auto own = static_cast<std::size_t>(playThrough_.Player() - 1);
    QList<QObject*> all = {actions.stop.at(1 - own)};
    for (const auto& both : {actions.play, actions.pause, actions.next, actions.fadeTo})
        all.append({both[0], both[1]});
    QStringList names = {QStringLiteral("cmdStop%1").arg(OtherPlayer(playThrough_.Player()))};
    names += QStringLiteral("cmdPlay1 cmdPause1 Command1 cmdAnfang1 cmdPlay2 cmdPause2 Command3 cmdAnfang2 Command5 "
                            "Command6")
                 .split(u' ');
    for (const QString& name : names)
        all.append(parts_.window.findChild<QWidget*>(name));
    for (QObject* one : std::as_const(all)) {
        if (one != nullptr && one->property("enabled").toBool()) {
            one->setProperty("enabled", false);
            locked_.append(one);
        }
    }
    playing_->setText(QStringLiteral("Titel a&nspielen beenden"));
}

void ListenCommands::UnlockTransport() {
    for (const QPointer<QObject>& one : std::as_const(locked_)) {
        if (one)
            one->setProperty("enabled", true);
    }
    locked_.clear();
    playing_->setText(QStringLiteral("Titel a&nspielen"));
}

} // namespace kalvo
