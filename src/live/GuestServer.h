#pragma once

#include "live/GuestHttp.h"
#include "live/GuestSite.h"

#include <QObject>

namespace kalvo {

/**
 * The guests' page on the local network: shows what plays and the archive's titles, takes wishes. UI thread; off until
 * Start(). Wishes that threads of the page take arrive by Wished(), from the event loop.
 */
class GuestServer : public QObject {
    Q_OBJECT

public:
    static constexpr int kDefaultPort = 8090;

    /** The clock outlives the server and may be asked by any thread. */
    explicit GuestServer(const Clock& clock, QObject* parent = nullptr, const GuestRates& rates = {},
                         const GuestHttpLimits& limits = {});
    ~GuestServer() override;

    /**
     * port: 0 takes a free one. False when it cannot be had, Failure() tells why. Does nothing when the page is on
     * already.
     */
    bool Start(int port);
    void Stop();
    bool IsOn() const { return port_ != 0; }
    /** 0 while it is off. */
    int Port() const { return port_; }
    /** German; of the latest Start(). */
    const QString& Failure() const { return failure_; }

    GuestSite& Site() { return site_; }

Q_SIGNALS:
    void Wished(const kalvo::GuestWish& wish);
    /** It went on or off. */
    void Switched(bool on);

private:
    GuestSite site_;
    GuestHttp http_; ///< after the site, which its threads ask
    int port_ = 0;
    QString failure_;
};

} // namespace kalvo
