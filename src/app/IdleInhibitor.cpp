#include "app/IdleInhibitor.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

#include <utility>

namespace kalvo {

namespace {

const QString kWho = QStringLiteral("Kalvo");
const QString kWhy = QStringLiteral("Es wird Musik gespielt");
const QString kScreenSaverService = QStringLiteral("org.freedesktop.ScreenSaver");

QDBusMessage ToScreenSaver(const QString& method) {
    return QDBusMessage::createMethodCall(kScreenSaverService, QStringLiteral("/org/freedesktop/ScreenSaver"),
                                          kScreenSaverService, method);
}

QDBusMessage ToLogin() {
    QDBusMessage request = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("Inhibit"));
    request << QStringLiteral("sleep:idle") << kWho << kWhy << QStringLiteral("block");
    return request;
}

} // namespace

IdleInhibitor::IdleInhibitor(QObject* parent) : QObject(parent), system_(QStringLiteral("kalvo-system")) {
    connect(&system_, &BusLink::Connected, this, &IdleInhibitor::Apply);
}

IdleInhibitor::~IdleInhibitor() {
    Release();
}

void IdleInhibitor::SetBus(const BusLink& session) {
    session_ = &session;
    // A screen saver that is started again knows nothing of what was asked before.
    auto* watcher =
        new QDBusServiceWatcher(kScreenSaverService, session.Bus(), QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, [this] {
        cookie_.reset();
        refused_ = false;
        Apply();
    });
    Apply();
}

void IdleInhibitor::Want(bool wanted) {
    if (wanted == wanted_)
        return;
    wanted_ = wanted;
    refused_ = false;
    Apply();
}

void IdleInhibitor::Apply() {
    if (session_ == nullptr || asking_)
        return; // the answer comes back here
    if (!wanted_)
        Release();
    else if (!IsHeld() && refused_)
        AskLogin();
    else if (!IsHeld())
        AskScreenSaver();
}

template<typename Taken>
void IdleInhibitor::Await(const QDBusConnection& bus, const QDBusMessage& request, Taken taken) {
    asking_ = true;
    auto* waiting = new QDBusPendingCallWatcher(bus.asyncCall(request), this);
    connect(waiting, &QDBusPendingCallWatcher::finished, this, [this, waiting, taken] {
        waiting->deleteLater();
        asking_ = false;
        taken(*waiting);
    });
}

void IdleInhibitor::AskScreenSaver() {
    QDBusMessage request = ToScreenSaver(QStringLiteral("Inhibit"));
    request << kWho << kWhy;
    Await(session_->Bus(), request, [this](const QDBusPendingReply<uint>& reply) {
        if (reply.isError())
            refused_ = true;
        else
            cookie_ = reply.value();
        Apply();
    });
}

void IdleInhibitor::AskLogin() {
    if (!system_.IsConnected()) {
        system_.Connect(BusLink::SystemAddress());
        return;
    }
    Await(system_.Bus(), ToLogin(), [this](const QDBusPendingReply<QDBusUnixFileDescriptor>& reply) {
        if (!reply.isError())
            lock_ = reply.value();
        if (IsHeld() && !wanted_)
            Release();
    });
}

void IdleInhibitor::Release() {
    lock_ = QDBusUnixFileDescriptor();
    if (!cookie_)
        return;
    QDBusMessage request = ToScreenSaver(QStringLiteral("UnInhibit"));
    request << *std::exchange(cookie_, std::nullopt);
    session_->Bus().send(request);
}

} // namespace kalvo
