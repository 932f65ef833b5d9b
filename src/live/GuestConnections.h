#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

namespace kalvo {

struct GuestConnectionLimits {
    int threads = 24;
    int perAddress = 8; ///< connections of one address, below `threads`: a single telephone cannot hold all threads
    int waiting = 64;   ///< connections without a thread yet
};

/**
 * Takes connections on a port and has each served on one of a fixed number of threads. What is over the limits, and
 * what does not come from a local network, is closed at once.
 *
 * Threads: one accepts, the others serve. They are nice to the rest of the program, which makes music. Start, Stop,
 * destructor: the owner's thread. `mutex_` guards the queue and what is known of the open sockets.
 */
class GuestConnections {
public:
    /** Called on a serving thread with a connected socket, which is closed afterwards. */
    using Serve = std::function<void(int socket)>;

    GuestConnections(Serve serve, const GuestConnectionLimits& limits);
    ~GuestConnections();
    GuestConnections(const GuestConnections&) = delete;
    GuestConnections& operator=(const GuestConnections&) = delete;

    /** port: 0 takes a free one. 0, with errno set, when the port cannot be had. */
    int Start(int port);
    /** Connections that are being served are broken off. */
    void Stop();

private:
    struct Connection {
        int socket;
        std::uint32_t address;
    };

    void Accept();
    void Take(const Connection& connection);
    void Work();
    void Close(const Connection& connection);

    Serve serve_;
    GuestConnectionLimits limits_;
    int listening_ = -1;
    int wake_ = -1; ///< an event that ends Accept()
    std::mutex mutex_;
    std::condition_variable come_;
    bool stopping_ = false;
    std::deque<Connection> queue_;
    std::set<int> open_;
    std::map<std::uint32_t, int> perAddress_;
    std::vector<std::thread> threads_;
};

} // namespace kalvo
