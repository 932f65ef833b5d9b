#include "live/GuestConnections.h"

#include "live/GuestNetwork.h"

#include <netinet/in.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <exception>
#include <system_error>
#include <utility>

namespace kalvo {

namespace {

constexpr int kBacklog = 64;
constexpr int kNiceness = 10;
constexpr std::chrono::milliseconds kRetry(50); ///< when the system has no socket left

/** For the calling thread alone. */
void BeNice() {
    setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), kNiceness);
}

int ListenOn(int port) {
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (socket < 0)
        return -1;
    const int on = 1;
    setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof(on));
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_ANY);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    if (bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0 &&
        listen(socket, kBacklog) == 0)
        return socket;
    const int reason = errno;
    close(socket);
    errno = reason;
    return -1;
}

int PortOf(int socket) {
    sockaddr_in address = {};
    socklen_t size = sizeof(address);
    getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

} // namespace

GuestConnections::GuestConnections(Serve serve, const GuestConnectionLimits& limits)
    : serve_(std::move(serve)), limits_(limits) {}

GuestConnections::~GuestConnections() {
    Stop();
}

int GuestConnections::Start(int port) {
    Stop();
    listening_ = ListenOn(port);
    if (listening_ < 0)
        return 0;
    wake_ = eventfd(0, EFD_CLOEXEC);
    if (wake_ < 0) {
        const int reason = errno;
        close(std::exchange(listening_, -1));
        errno = reason;
        return 0;
    }
    stopping_ = false;
    try {
        threads_.emplace_back([this] { Accept(); });
        for (int i = 0; i < limits_.threads; ++i)
            threads_.emplace_back([this] { Work(); });
    } catch (const std::system_error&) { // no further thread
        Stop();
        errno = EAGAIN;
        return 0;
    }
    return PortOf(listening_);
}

void GuestConnections::Stop() {
    if (listening_ < 0)
        return;
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
        for (const int socket : open_)
            shutdown(socket, SHUT_RDWR);
    }
    come_.notify_all();
    eventfd_write(wake_, 1);
    for (std::thread& thread : threads_)
        thread.join();
    threads_.clear();
    for (const Connection& connection : queue_)
        Close(connection);
    queue_.clear();
    close(wake_);
    close(listening_);
    listening_ = -1;
}

void GuestConnections::Accept() {
    BeNice();
    std::array<pollfd, 2> wanted{{{listening_, POLLIN, 0}, {wake_, POLLIN, 0}}};
    while (poll(wanted.data(), wanted.size(), -1) >= 0 || errno == EINTR) {
        if (wanted[1].revents != 0)
            return;
        sockaddr_in from = {};
        socklen_t size = sizeof(from);
        const int socket = accept4(listening_, reinterpret_cast<sockaddr*>(&from), &size, SOCK_CLOEXEC);
        if (socket >= 0)
            Take({socket, ntohl(from.sin_addr.s_addr)});
        else if (errno == EMFILE || errno == ENFILE || errno == ENOBUFS || errno == ENOMEM)
            std::this_thread::sleep_for(kRetry);
    }
}

void GuestConnections::Take(const Connection& connection) {
    const bool local = GuestNetwork::IsLocal(connection.address);
    const std::lock_guard lock(mutex_);
    const auto known = perAddress_.find(connection.address);
    const bool crowded = known != perAddress_.end() && known->second >= limits_.perAddress;
    if (!local || crowded || stopping_ || queue_.size() >= static_cast<std::size_t>(limits_.waiting)) {
        close(connection.socket);
        return;
    }
    ++perAddress_[connection.address];
    open_.insert(connection.socket);
    queue_.push_back(connection);
    come_.notify_one();
}

void GuestConnections::Work() {
    BeNice();
    while (true) {
        std::unique_lock lock(mutex_);
        come_.wait(lock, [this] { return stopping_ || !queue_.empty(); });
        if (stopping_)
            return;
        const Connection connection = queue_.front();
        queue_.pop_front();
        lock.unlock();
        try {
            serve_(connection.socket);
        } catch (const std::exception&) { // no memory: this guest gets no answer, the music plays on
        }
        lock.lock();
        Close(connection);
    }
}

/** With mutex_ held, or no other thread left. */
void GuestConnections::Close(const Connection& connection) {
    open_.erase(connection.socket);
    if (const auto address = perAddress_.find(connection.address); --address->second == 0)
        perAddress_.erase(address);
    close(connection.socket);
}

} // namespace kalvo
