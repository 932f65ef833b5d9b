#include "app/DesktopNotices.h"

#include "app/BusLink.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>

#include <utility>

namespace kalvo {

namespace {

constexpr int kServiceDecides = -1; ///< how long it is shown
constexpr uchar kCritical = 2;      ///< urgency: stays until it is closed
constexpr uchar kLow = 0;
const QString kService = QStringLiteral("org.freedesktop.Notifications");
const QString kNoticePath = QStringLiteral("/org/freedesktop/Notifications");

QDBusMessage ToService(const QString& method) {
    return QDBusMessage::createMethodCall(kService, kNoticePath, kService, method);
}

QVariantMap Hints(bool isWarning, const QString& picture) {
    QVariantMap hints{{QStringLiteral("desktop-entry"), QStringLiteral("kalvo")},
                      {QStringLiteral("urgency"), QVariant::fromValue(isWarning ? kCritical : kLow)}};
    if (!isWarning)
        hints.insert(QStringLiteral("transient"), true);
    if (!picture.isEmpty())
        hints.insert(QStringLiteral("image-path"), picture);
    return hints;
}

} // namespace

DesktopNotices::DesktopNotices(std::function<bool()> isAway, QObject* parent)
    : QObject(parent), isAway_(std::move(isAway)) {}

void DesktopNotices::SetBus(const BusLink& session) {
    session_ = &session;
    // From whichever service there is: asking for the owner of a name would wait.
    session.Bus().connect({}, kNoticePath, kService, QStringLiteral("ActionInvoked"), this,
                          SLOT(TakeAction(uint, QString)));
}

void DesktopNotices::SetWanted(bool warnings, bool titles) {
    warnings_ = warnings;
    titles_ = titles;
}

void DesktopNotices::Warn(const QString& text) {
    if (warnings_ && !text.isEmpty())
        Send({Kind::Warning, QStringLiteral("Kalvo"), text, {}});
}

void DesktopNotices::TellTitle(const QString& title, const QString& artist, const QString& artUrl) {
    if (titles_)
        Send({Kind::Title, title, artist, artUrl});
}

void DesktopNotices::Send(const Notice& notice) {
    if (session_ == nullptr || !isAway_())
        return;
    const bool isWarning = notice.kind == Kind::Warning;
    QDBusMessage request = ToService(QStringLiteral("Notify"));
    request << QStringLiteral("Kalvo") << (isWarning ? 0U : title_) << QStringLiteral("kalvo") << notice.summary
            << notice.body.toHtmlEscaped() << QStringList{QStringLiteral("default"), QStringLiteral("Kalvo zeigen")}
            << Hints(isWarning, notice.picture) << kServiceDecides;
    auto* waiting = new QDBusPendingCallWatcher(session_->Bus().asyncCall(request), this);
    connect(waiting, &QDBusPendingCallWatcher::finished, this, [this, waiting, isWarning] {
        waiting->deleteLater();
        const QDBusPendingReply<uint> reply = *waiting;
        if (reply.isError())
            return;
        if (!isWarning)
            title_ = reply.value();
        else if (!open_.contains(reply.value()))
            open_.append(reply.value());
    });
}

void DesktopNotices::Withdraw() {
    for (const uint id : std::exchange(open_, {})) {
        QDBusMessage request = ToService(QStringLiteral("CloseNotification"));
        request << id;
        session_->Bus().send(request);
    }
}

void DesktopNotices::TakeAction(uint id, const QString& action) {
    if (action == QStringLiteral("default") && (id == title_ || open_.contains(id)))
        Q_EMIT Pressed();
}

} // namespace kalvo
