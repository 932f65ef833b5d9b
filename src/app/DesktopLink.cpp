#include "app/DesktopLink.h"

#include "app/ConsolePanel.h"
#include "app/Desk.h"
#include "app/DesktopOptions.h"
#include "app/OptionCommands.h"
#include "app/StatusLine.h"
#include "playback/ui/MixerPanel.h"

#include <QApplication>
#include <QWindow>

namespace kalvo {

DesktopLink::DesktopLink(const Parts& parts, QObject* parent)
    : QObject(parent),
      parts_(parts),
      session_(QStringLiteral("kalvo-sitzung")),
      remote_(parts.desk),
      service_(remote_),
      notices_([] { return QGuiApplication::focusWindow() == nullptr; }) {
    connect(&session_, &BusLink::Connected, this, &DesktopLink::Begin);
    connect(&remote_, &DeskRemote::VolumeChanged, this,
            [this](int volume) { parts_.console.Mixing().SetVolume(volume); });
    ConnectService();
    ConnectNotices();
    session_.Connect(BusLink::SessionAddress());
}

DesktopLink::~DesktopLink() = default;

void DesktopLink::ConnectService() {
    connect(&service_, &MprisService::RaiseWanted, this, &DesktopLink::RaiseWanted, Qt::QueuedConnection);
    connect(&service_, &MprisService::QuitWanted, this, &DesktopLink::QuitWanted, Qt::QueuedConnection);
    connect(&service_, &MprisService::FilesGiven, this, &DesktopLink::FilesGiven, Qt::QueuedConnection);
    connect(&service_, &MprisService::TitleChanged, this, [this] { cover_.Show(service_.Facts().title.path); });
    connect(&cover_, &CoverFile::Changed, this, &DesktopLink::TakeCover);
}

void DesktopLink::ConnectNotices() {
    connect(&parts_.status, &StatusLine::Warned, &notices_, &DesktopNotices::Warn);
    connect(&parts_.desk.mixer, &Mixer::OutputChanged, &notices_,
            [this](const OutputNews& news) { notices_.Warn(news.text); });
    connect(&parts_.desk.mixer, &Mixer::Finished, &notices_,
            [this] { notices_.Warn(QStringLiteral("Beide Wiedergabelisten sind am Ende.")); });
    connect(&notices_, &DesktopNotices::Pressed, this, &DesktopLink::RaiseWanted, Qt::QueuedConnection);
    connect(qApp, &QGuiApplication::focusWindowChanged, &notices_, [this](const QWindow* window) {
        if (window != nullptr)
            notices_.Withdraw();
    });
}

/** What changes on the desk is of interest from now on. */
void DesktopLink::Begin() {
    const Mixer* mixer = &parts_.desk.mixer;
    connect(mixer, &Mixer::PlayerChanged, this, &DesktopLink::FollowDesk);
    connect(mixer, &Mixer::FaderMoved, this, &DesktopLink::FollowDesk);
    connect(mixer, &Mixer::OptionsChanged, this, &DesktopLink::FollowDesk);
    connect(&parts_.options, &OptionCommands::Confirmed, this, &DesktopLink::ApplyOptions);
    notices_.SetBus(session_);
    idle_.SetBus(session_);
    ApplyOptions();
    service_.Watch();
}

void DesktopLink::ApplyOptions() {
    const DesktopOptions options = DesktopOptions::Read(parts_.desk.settings);
    notices_.SetWanted(options.warnings, options.titles);
    staysAwake_ = options.staysAwake;
    options.remote ? service_.Register(session_.Bus()) : service_.Unregister();
    FollowDesk();
}

void DesktopLink::FollowDesk() {
    const Mixer& mixer = parts_.desk.mixer;
    const int onAir = mixer.OnAirPlayer();
    idle_.Want(staysAwake_ && onAir != 0 && mixer.Activity(onAir) == audio::Activity::Playing);
    service_.Refresh();
}

/** The last that comes with a new title. */
void DesktopLink::TakeCover(const QString& url) {
    service_.SetArtUrl(url);
    const DeskFacts& facts = service_.Facts();
    if (facts.track != 0 && facts.track != toldTrack_)
        notices_.TellTitle(facts.title.title, facts.title.artist, url);
    toldTrack_ = facts.track;
}

} // namespace kalvo
