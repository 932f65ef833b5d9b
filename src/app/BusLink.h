#pragma once

#include "base/BackgroundWorker.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <memory>

namespace kalvo {

/**
 * The connection to a message bus of the desktop or the system. Connecting waits for the bus and is done by a thread of
 * its own; whoever uses the connection afterwards makes asynchronous calls only. UI thread.
 */
class BusLink : public QObject {
    Q_OBJECT

public:
    /** name: of the connection within the process, different from all others. */
    explicit BusLink(QString name, QObject* parent = nullptr);
    ~BusLink() override;

    /** Of the user's session; empty when there is none. Never starts a bus. */
    static QString SessionAddress();
    static QString SystemAddress();

    /** Connects at most once; with an empty address or a bus that does not answer nothing is ever told. */
    void Connect(const QString& address);
    bool IsConnected() const { return connected_; }
    /** Only when connected. */
    QDBusConnection Bus() const { return QDBusConnection(name_); }

Q_SIGNALS:
    void Connected();

private:
    QString name_;
    std::unique_ptr<BackgroundWorker> worker_; ///< since Connect()
    bool connected_ = false;
};

} // namespace kalvo
