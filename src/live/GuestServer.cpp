#include "live/GuestServer.h"

#include <cerrno>

namespace kalvo {

namespace {

QString ReasonOf(int error, int port) {
    if (error == EADDRINUSE)
        return QStringLiteral("Der Anschluss %1 wird schon von einem anderen Programm benutzt.").arg(port);
    if (error == EACCES)
        return QStringLiteral("Der Anschluss %1 darf nicht benutzt werden. Erlaubt sind die ab 1024.").arg(port);
    return QStringLiteral("Der Anschluss %1 kann nicht geöffnet werden.").arg(port);
}

} // namespace

GuestServer::GuestServer(const Clock& clock, QObject* parent, const GuestRates& rates, const GuestHttpLimits& limits)
    : QObject(parent),
      site_(
          clock,
          [this](const GuestWish& wish) {
              QMetaObject::invokeMethod(
                  this, [this, wish] { Q_EMIT Wished(wish); }, Qt::QueuedConnection);
          },
          rates),
      http_(site_, limits) {}

GuestServer::~GuestServer() {
    http_.Stop();
}

bool GuestServer::Start(int port) {
    if (IsOn())
        return true;
    port_ = http_.Start(port);
    failure_ = IsOn() ? QString() : ReasonOf(errno, port);
    if (IsOn())
        Q_EMIT Switched(true);
    return IsOn();
}

void GuestServer::Stop() {
    if (!IsOn())
        return;
    http_.Stop();
    port_ = 0;
    Q_EMIT Switched(false);
}

} // namespace kalvo
