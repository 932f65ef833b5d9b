#pragma once

#include <httplib.h>

#include <chrono>
#include <string>
#include <string_view>

namespace kalvo {

/**
 * A guest's connection as the HTTP parser reads it, with limits that the parser itself does not know: the head of the
 * request is read as a whole before the parser sees it, all of it within one deadline, however slowly the bytes come.
 * One thread. The socket belongs to the caller.
 */
class GuestStream : public httplib::Stream {
public:
    using Clock = std::chrono::steady_clock;

    enum class Head { Complete, TooLarge, Late, Closed };

    static constexpr std::size_t kLargestHead = 8192;
    static constexpr std::size_t kLargestBody = 4096;

    /** socket: connected, IPv4. */
    GuestStream(int socket, Clock::time_point deadline);

    /** Once, before the parser. */
    Head ReadHead();
    /** Whether the head has such a line; name: in lower case. */
    bool HeadHas(std::string_view name) const;
    /** Ends the answer and waits shortly for the guest's end: closed with bytes unread, he would not get the answer. */
    void Finish();

    bool is_readable() const override;
    bool is_writable() const override { return true; }
    /** -1 at the deadline, and when the body is larger than any of ours. */
    ssize_t read(char* to, size_t size) override;
    using Stream::write;
    ssize_t write(const char* from, size_t size) override;
    void get_remote_ip_and_port(std::string& ip, int& port) const override;
    void get_local_ip_and_port(std::string& ip, int& port) const override;
    socket_t socket() const override { return socket_; }

private:
    bool Wait(short events) const;
    ssize_t Receive(char* to, size_t size) const;

    int socket_;
    Clock::time_point deadline_;
    std::string ahead_;       ///< the head, and what came with it
    std::size_t taken_ = 0;   ///< of ahead_
    std::size_t headEnd_ = 0; ///< in ahead_
    std::size_t body_ = 0;    ///< bytes given to the parser behind the head
};

} // namespace kalvo
