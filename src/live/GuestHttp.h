#pragma once

#include "live/GuestConnections.h"

#include <chrono>
#include <memory>

namespace kalvo {

class GuestSite;

struct GuestHttpLimits {
    GuestConnectionLimits connections;
    std::chrono::milliseconds request{8000}; ///< from the connection to the answer's last byte
};

/**
 * The guests' site on a port: HTTP with one request per connection, so that no telephone holds a thread that another
 * one waits for. Requests that are too large, too slow or of a kind that the site does not have end here.
 * Owner's thread; the site is asked on the threads of the connections and outlives this.
 */
class GuestHttp {
public:
    explicit GuestHttp(GuestSite& site, const GuestHttpLimits& limits = {});
    ~GuestHttp();

    /** The port, a free one for 0; 0, with errno set, when it cannot be had. */
    int Start(int port) { return connections_.Start(port); }
    void Stop() { connections_.Stop(); }

private:
    class Parser;
    void Serve(int socket);

    GuestHttpLimits limits_;
    std::unique_ptr<Parser> parser_;
    GuestConnections connections_; ///< last: its threads end before the rest goes
};

} // namespace kalvo
