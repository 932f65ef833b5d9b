#pragma once

#include "app/BusLink.h"

#include <QDBusUnixFileDescriptor>
#include <QObject>

#include <optional>

class QDBusMessage;
class QDBusPendingCallWatcher;

namespace kalvo {

/**
 * Keeps screen saver and sleep away while it is wanted: asks the desktop's screen saver, and where there is none the
 * login service. Nobody there: nothing happens. UI thread; nothing here waits.
 */
class IdleInhibitor : public QObject {
    Q_OBJECT

public:
    explicit IdleInhibitor(QObject* parent = nullptr);
    ~IdleInhibitor() override;

    /** The session's bus; until then what is wanted is only remembered. */
    void SetBus(const BusLink& session);
    void Want(bool wanted);

private:
    bool IsHeld() const { return cookie_ || lock_.isValid(); }
    void Apply();
    void AskScreenSaver();
    void AskLogin();
    /** Waits for the answer with `taken`, which gives false when it is a refusal. */
    template<typename Taken>
    void Await(const QDBusConnection& bus, const QDBusMessage& request, Taken taken);
    void Release();

    const BusLink* session_ = nullptr;
    BusLink system_;
    bool wanted_ = false;
    bool asking_ = false;
    bool refused_ = false;         ///< by the screen saver, since it has been wanted
    std::optional<uint> cookie_;   ///< of the screen saver
    QDBusUnixFileDescriptor lock_; ///< of the login service, which ends when it is closed
};

} // namespace kalvo
