#include "live/GuestStream.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace kalvo {

namespace {

constexpr std::chrono::milliseconds kFarewell(300);
constexpr std::size_t kMostDiscarded = 1 << 20;

void Tell(const sockaddr_in& address, std::string& ip, int& port) {
    std::array<char, INET_ADDRSTRLEN> text = {};
    inet_ntop(AF_INET, &address.sin_addr, text.data(), text.size());
    ip = text.data();
    port = ntohs(address.sin_port);
}

} // namespace

GuestStream::GuestStream(int socket, Clock::time_point deadline) : socket_(socket), deadline_(deadline) {}

bool GuestStream::Wait(short events) const {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline_ - Clock::now());
    pollfd wanted{socket_, events, 0};
    return left.count() > 0 && poll(&wanted, 1, static_cast<int>(left.count())) > 0;
}

ssize_t GuestStream::Receive(char* to, size_t size) const {
    return Wait(POLLIN) ? recv(socket_, to, size, MSG_DONTWAIT) : -1;
}

GuestStream::Head GuestStream::ReadHead() {
    constexpr std::string_view end = "\r\n\r\n";
    std::array<char, 2048> block;
    while (true) {
        const std::size_t searched = ahead_.size() < end.size() ? 0 : ahead_.size() - end.size();
        if (Clock::now() >= deadline_)
            return Head::Late;
        const ssize_t count = Receive(block.data(), block.size());
        if (count <= 0)
            return Clock::now() >= deadline_ ? Head::Late : Head::Closed;
        ahead_.append(block.data(), static_cast<std::size_t>(count));
        const std::size_t found = ahead_.find(end, searched);
        headEnd_ = found + end.size();
        if (found != std::string::npos && headEnd_ <= kLargestHead)
            return Head::Complete;
        if (ahead_.size() > kLargestHead)
            return Head::TooLarge;
    }
}

bool GuestStream::HeadHas(std::string_view name) const {
    const std::string wanted = '\n' + std::string(name) + ':';
    const auto isSame = [](char c, char lower) {
        return c == lower || (c >= 'A' && c <= 'Z' && c + ('a' - 'A') == lower);
    };
    const auto end = ahead_.begin() + static_cast<std::ptrdiff_t>(headEnd_);
    return std::search(ahead_.begin(), end, wanted.begin(), wanted.end(), isSame) != end;
}

bool GuestStream::is_readable() const {
    return taken_ < ahead_.size() || Wait(POLLIN);
}

ssize_t GuestStream::read(char* to, size_t size) {
    if (taken_ < headEnd_) {
        size = std::min(size, headEnd_ - taken_);
    } else {
        size = std::min(size, kLargestBody - std::min(body_, kLargestBody));
        if (size == 0)
            return -1;
    }
    if (taken_ < ahead_.size()) {
        const std::size_t count = std::min(size, ahead_.size() - taken_);
        std::memcpy(to, ahead_.data() + taken_, count);
        body_ += taken_ < headEnd_ ? 0 : count;
        taken_ += count;
        return static_cast<ssize_t>(count);
    }
    const ssize_t count = Receive(to, size);
    body_ += count > 0 ? static_cast<std::size_t>(count) : 0;
    return count;
}

ssize_t GuestStream::write(const char* from, size_t size) {
    std::size_t sent = 0;
    while (sent < size) {
        if (!Wait(POLLOUT))
            return -1;
        const ssize_t count = send(socket_, from + sent, size - sent, MSG_NOSIGNAL | MSG_DONTWAIT);
        if (count <= 0)
            return -1;
        sent += static_cast<std::size_t>(count);
    }
    return static_cast<ssize_t>(sent);
}

void GuestStream::Finish() {
    shutdown(socket_, SHUT_WR);
    deadline_ = std::min(deadline_, Clock::now() + kFarewell);
    std::array<char, 4096> block;
    for (std::size_t discarded = 0; discarded < kMostDiscarded;) {
        const ssize_t count = Receive(block.data(), block.size());
        if (count <= 0)
            return;
        discarded += static_cast<std::size_t>(count);
    }
}

void GuestStream::get_remote_ip_and_port(std::string& ip, int& port) const {
    sockaddr_in address = {};
    socklen_t size = sizeof(address);
    getpeername(socket_, reinterpret_cast<sockaddr*>(&address), &size);
    Tell(address, ip, port);
}

void GuestStream::get_local_ip_and_port(std::string& ip, int& port) const {
    sockaddr_in address = {};
    socklen_t size = sizeof(address);
    getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &size);
    Tell(address, ip, port);
}

} // namespace kalvo
