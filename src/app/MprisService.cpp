#include "app/MprisService.h"

#include "app/DeskRemote.h"
#include "app/MprisAdaptors.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <cmath>
#include <utility>

namespace kalvo {

namespace {

constexpr int kSoonMilliseconds = 30;
constexpr int kLookMilliseconds = 500;
constexpr double kJump = 0.8; ///< seconds off the expected position that are a jump
constexpr uint kDoNotQueue = 4;
constexpr uint kPrimaryOwner = 1;
constexpr uint kAlreadyOwner = 4;
const QString kPath = QStringLiteral("/org/mpris/MediaPlayer2");
const QString kName = QStringLiteral("org.mpris.MediaPlayer2.kalvo");

QDBusMessage ToBus(const QString& method) {
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    return QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus, method);
}

} // namespace

MprisService::MprisService(DeskRemote& remote, QObject* parent)
    : QObject(parent), remote_(remote), player_(new MprisPlayerAdaptor(*this)) {
    new MprisRootAdaptor(*this);
    soon_.setSingleShot(true);
    soon_.setInterval(kSoonMilliseconds);
    connect(&soon_, &QTimer::timeout, this, &MprisService::Tell);
    look_.setInterval(kLookMilliseconds);
    connect(&look_, &QTimer::timeout, this, &MprisService::Tell);
    since_.start();
    connect(&remote, &DeskRemote::VolumeChanged, this, &MprisService::Refresh);
}

MprisService::~MprisService() {
    Unregister();
}

void MprisService::Watch() {
    Tell();
    look_.start();
}

void MprisService::Register(const QDBusConnection& bus) {
    if (bus_ != nullptr)
        return;
    bus_ = std::make_unique<QDBusConnection>(bus);
    bus_->registerObject(kPath, this, QDBusConnection::ExportAdaptors);
    AskForName(kName, false);
}

/** The bus answers with a number; a name of another program's is left to it. */
void MprisService::AskForName(const QString& name, bool mayBeTaken) {
    QDBusMessage request = ToBus(QStringLiteral("RequestName"));
    request << name << kDoNotQueue;
    auto* waiting = new QDBusPendingCallWatcher(bus_->asyncCall(request), this);
    connect(waiting, &QDBusPendingCallWatcher::finished, this, [this, name, mayBeTaken, waiting] {
        waiting->deleteLater();
        const QDBusPendingReply<uint> reply = *waiting;
        if (bus_ == nullptr || reply.isError())
            return;
        if (reply.value() == kPrimaryOwner || reply.value() == kAlreadyOwner)
            name_ = name;
        else if (!mayBeTaken)
            AskForName(kName + QStringLiteral(".instance%1").arg(QCoreApplication::applicationPid()), true);
    });
}

void MprisService::Unregister() {
    if (bus_ == nullptr)
        return;
    if (!name_.isEmpty()) {
        QDBusMessage release = ToBus(QStringLiteral("ReleaseName"));
        release << std::exchange(name_, {});
        bus_->send(release);
    }
    bus_->unregisterObject(kPath);
    bus_.reset();
}

void MprisService::SetArtUrl(const QString& url) {
    artUrl_ = url;
    Refresh();
}

void MprisService::Refresh() {
    if (!soon_.isActive())
        soon_.start();
}

void MprisService::Tell() {
    const int before = facts_.track;
    facts_ = remote_.Facts();
    if (facts_.track != before) {
        artUrl_.clear();
        Q_EMIT TitleChanged();
    }
    facts_.artUrl = artUrl_;
    const QVariantMap now = mpris::Properties(facts_);
    const QVariantMap changes = mpris::Changes(std::exchange(told_, now), now);
    if (bus_ != nullptr && !changes.isEmpty()) {
        QDBusMessage signal = QDBusMessage::createSignal(kPath, QStringLiteral("org.freedesktop.DBus.Properties"),
                                                         QStringLiteral("PropertiesChanged"));
        signal << QStringLiteral("org.mpris.MediaPlayer2.Player") << changes << QStringList();
        bus_->send(signal);
    }
    if (facts_.track != before || changes.contains(QStringLiteral("PlaybackStatus"))) {
        position_ = remote_.Position();
        since_.start();
    } else {
        TellPosition();
    }
}

void MprisService::TellPosition() {
    const double now = remote_.Position();
    const double seconds = static_cast<double>(since_.restart()) / 1000;
    const double expected = mpris::Expected(std::exchange(position_, now), seconds, facts_);
    if (facts_.track != 0 && std::abs(now - expected) > kJump)
        Q_EMIT player_->Seeked(std::llround(now * mpris::kMicroseconds));
}

} // namespace kalvo
