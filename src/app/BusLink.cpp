#include "app/BusLink.h"

#include <QFileInfo>

#include <utility>

namespace kalvo {

BusLink::BusLink(QString name, QObject* parent) : QObject(parent), name_(std::move(name)) {}

BusLink::~BusLink() {
    if (worker_ == nullptr)
        return;
    worker_.reset(); // what it has connected goes, too
    QDBusConnection::disconnectFromBus(name_);
}

QString BusLink::SessionAddress() {
    if (qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS"))
        return qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    const QString socket = qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus");
    return QFileInfo::exists(socket) ? QStringLiteral("unix:path=") + socket : QString();
}

QString BusLink::SystemAddress() {
    return qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS", QStringLiteral("unix:path=/var/run/dbus/system_bus_socket"));
}

void BusLink::Connect(const QString& address) {
    if (address.isEmpty() || worker_ != nullptr)
        return;
    worker_ = std::make_unique<BackgroundWorker>();
    worker_->Do([this, address, name = name_] {
        const bool connected = QDBusConnection::connectToBus(address, name).isConnected();
        return [this, connected] {
            connected_ = connected;
            if (connected)
                Q_EMIT Connected();
        };
    });
}

} // namespace kalvo
