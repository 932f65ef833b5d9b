#pragma once

#include "base/Clock.h"
#include "live/GuestCatalog.h"

#include <QByteArray>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <memory>

namespace kalvo::test {

using namespace Qt::StringLiterals;

/** Stands still until it is moved; may be asked by any thread. */
class GuestClock final : public Clock {
public:
    QDateTime Now() const override { return QDateTime(QDate(2026, 3, 7), QTime(20, 15, 30)); }
    qint64 Milliseconds() const override { return milliseconds; }

    std::atomic<qint64> milliseconds = 1000;
};

inline std::shared_ptr<const GuestCatalog> SomeTitles() {
    auto catalog = std::make_shared<GuestCatalog>();
    catalog->Append(7, "Männer", "Herbert Grünwald", "3:45");
    catalog->Append(3, "Straße im Regen", "Älgfors", "4:02");
    catalog->Append(9, "<script>alert('x')</script>", "\"Böse\" & Söhne", "0:59");
    catalog->Append(5, "Regen", "Zitterpartie", "2:30");
    catalog->Settle();
    return catalog;
}

/** The token in the form of a page. */
inline QByteArray TokenIn(const QByteArray& page) {
    const QByteArray before = "name=\"marke\" type=\"hidden\" value=\"";
    return page.mid(page.indexOf(before) + before.size(), 32);
}

/** A browser without manners: sends what it is told to, reads until the other end closes or ten seconds are over. */
class RawGuest {
public:
    explicit RawGuest(int port) : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        const timeval patience{10, 0};
        setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof(patience));
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        connected_ = connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
    }
    ~RawGuest() { close(socket_); }
    RawGuest(const RawGuest&) = delete;
    RawGuest& operator=(const RawGuest&) = delete;

    bool IsConnected() const { return connected_; }
    /** Whether all of it went out. */
    bool Send(const QByteArray& bytes) const {
        return send(socket_, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL) == bytes.size();
    }
    /** Whether the other end closes; received: what comes before that. */
    bool IsSentAway(QByteArray* received = nullptr) const {
        std::array<char, 4096> block;
        ssize_t count = 0;
        while ((count = recv(socket_, block.data(), block.size(), 0)) > 0) {
            if (received)
                received->append(block.data(), count);
        }
        return count == 0 || errno == ECONNRESET;
    }

    /** The whole answer to one request. */
    static QByteArray Ask(int port, const QByteArray& request) {
        const RawGuest guest(port);
        guest.Send(request);
        QByteArray answer;
        guest.IsSentAway(&answer);
        return answer;
    }
    static QByteArray Get(int port, const QByteArray& target, const QByteArray& headers = {}) {
        return Ask(port, "GET " + target + " HTTP/1.1\r\nHost: h\r\n" + headers + "\r\n");
    }
    static int Status(const QByteArray& answer) { return answer.mid(9, 3).toInt(); }

private:
    int socket_;
    bool connected_ = false;
};

} // namespace kalvo::test
