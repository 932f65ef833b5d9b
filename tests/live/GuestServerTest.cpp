#include "live/GuestServer.h"

#include "live/GuestConnections.h"
#include "live/GuestNetwork.h"
#include "live/GuestSupport.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

#include <new>
#include <thread>

namespace kalvo::test {

using namespace std::chrono_literals;

struct GuestServerTest : testing::Test {
    GuestServerTest() {
        server.Site().SetCatalog(SomeTitles());
        QObject::connect(&server, &GuestServer::Wished, [this](const GuestWish& wish) { wishes.push_back(wish); });
        EXPECT_TRUE(server.Start(0));
    }
    /** A guest whose earlier connections are still being closed is turned away: he asks again. */
    QByteArray Answer(const QByteArray& request) {
        QByteArray answer;
        WaitUntil([&] { return !(answer = RawGuest::Ask(server.Port(), request)).isEmpty(); });
        return answer;
    }
    bool Serves() { return RawGuest::Status(Answer("GET /stand HTTP/1.1\r\nHost: h\r\n\r\n")) == 200; }
    /** So many who begin a request and do not end it. */
    std::vector<std::unique_ptr<RawGuest>> Begin(int guests, const QByteArray& request) {
        std::vector<std::unique_ptr<RawGuest>> slow;
        while (guests-- > 0) {
            slow.push_back(std::make_unique<RawGuest>(server.Port()));
            slow.back()->Send(request);
        }
        return slow;
    }

    GuestClock clock;
    std::vector<GuestWish> wishes;
    const GuestHttpLimits fast{{6, 4, 8}, 400ms};
    GuestServer server{clock, nullptr, {{1'000'000, 1}, {3, 1000}, {3, 1000}, 100}, fast};
};

TEST_F(GuestServerTest, ABrowserSearchesWishesAndSeesItsWish) {
    const QByteArray page = RawGuest::Get(server.Port(), "/?q=m%C3%A4nner", "Accept-Language: en\r\n");
    EXPECT_EQ(RawGuest::Status(page), 200);
    EXPECT_TRUE(page.contains("Herbert Grünwald"));
    EXPECT_TRUE(page.contains("Content-Security-Policy: default-src 'none'"));
    const QByteArray cookie = "Cookie: a=b; gast=" + page.mid(page.indexOf("Set-Cookie: gast=") + 17, 32) + "\r\n";
    const QByteArray form = "titel=7&name=J%C3%BCrgen+%3Cb%3E&marke=" + TokenIn(page);
    const QByteArray size = "Content-Length: " + QByteArray::number(form.size()) + "\r\n\r\n";
    const auto wish = [&](const QByteArray& headers) {
        const QByteArray origin = "POST /wunsch HTTP/1.1\r\nHost: h\r\nOrigin: http://h\r\n";
        const QByteArray type = "Content-Type: application/x-www-form-urlencoded\r\n";
        return RawGuest::Ask(server.Port(), origin + headers + cookie + type + size + form);
    };
    EXPECT_TRUE(wish({}).contains("Location: /?q=&m=notiert"));
    EXPECT_TRUE(wish("X-Kalvo: 1\r\n").contains("schon gewünscht"));
    ASSERT_TRUE(WaitUntil([this] { return !wishes.empty(); }));
    EXPECT_EQ(wishes[0].nr, 7);
    EXPECT_EQ(wishes[0].name, u"Jürgen <b>"_s);
    EXPECT_TRUE(RawGuest::Get(server.Port(), "/stand", cookie).contains("Männer"));
    EXPECT_EQ(wishes.size(), 1U);
}

TEST_F(GuestServerTest, RefusesWhatIsNoRequestOfItsPages) {
    const QByteArray host = " HTTP/1.1\r\nHost: h\r\n";
    const std::vector<std::pair<QByteArray, int>> cases{
        {"GET /../../../etc/passwd" + host + "\r\n", 404},
        {"GET /..%2f..%2fetc/passwd" + host + "\r\n", 404},
        {"GET /%00" + host + "\r\n", 404},
        {"DELETE /" + host + "\r\n", 405},
        {"POST /" + host + "Content-Length: 0\r\n\r\n", 405},
        {"POST /wunsch" + host + "Content-Length: 4097\r\n\r\n", 413},
        {"POST /wunsch" + host + "Content-Length: 99999999999999999999\r\n\r\n", 413},
        {"POST /wunsch" + host + "Content-Length: -1\r\n\r\n", 400},
        {"POST /wunsch" + host + "Content-Length: 1\r\nContent-Length: 9\r\n\r\na", 400},
        {"POST /wunsch" + host + "Transfer-Encoding: chunked\r\n\r\nfffffff\r\n", 400},
        {"POST /wunsch" + host + "Content-Encoding: gzip\r\nContent-Length: 2\r\n\r\nab", 400},
        {"GET /" + host + "rAnge: bytes=" + QByteArray("0-1,").repeated(1900) + "\r\n\r\n", 400},
        {"GET /" + host + "Content-Length: 3\r\n\r\nabc", 400},
        {"GET /" + host + "X: " + QByteArray(9000, 'x') + "\r\n\r\n", 431},
        {QByteArray(200'000, 'A'), 431},
    };
    for (const auto& [request, status] : cases) {
        const QByteArray answer = Answer(request);
        EXPECT_EQ(RawGuest::Status(answer), status) << request.left(80).constData();
        EXPECT_FALSE(answer.contains("root:"));
    }
    for (const QByteArray& nonsense : {QByteArray("\r\n\r\n"), QByteArray("GET\r\n\r\n"), QByteArray(64, '\0')})
        RawGuest::Ask(server.Port(), nonsense + "\r\n\r\n");
    EXPECT_TRUE(Serves());
    EXPECT_TRUE(wishes.empty());
}

TEST_F(GuestServerTest, ASlowGuestIsSentAwayAndNobodyWaitsForHim) {
    const auto slow = Begin(3, "GET / HTTP/1.1\r\n"); // as many as one address may, but one
    for (const auto& guest : slow)
        ASSERT_TRUE(guest->Send("Host: h\r\n"));
    EXPECT_TRUE(Serves());
    std::atomic<bool> over = false;
    std::thread dripping([&] {
        while (!over && slow[0]->Send("a"))
            std::this_thread::sleep_for(5ms);
    });
    for (const auto& guest : slow) {
        QByteArray received;
        EXPECT_TRUE(guest->IsSentAway(&received));
        EXPECT_EQ(received, QByteArray());
    }
    over = true;
    dripping.join();
    EXPECT_TRUE(Begin(1, "POST /wunsch HTTP/1.1\r\nHost: h\r\nContent-Length: 100\r\n\r\nti")[0]->IsSentAway());
    EXPECT_TRUE(Serves());
}

TEST_F(GuestServerTest, AFloodOfOneAddressIsTurnedAwayWithoutAWish) {
    for (const auto& guest : Begin(100, "GET "))
        EXPECT_TRUE(guest->IsSentAway()) << "at once or when his time is over";
    EXPECT_TRUE(WaitUntil([this] { return Serves(); }));
    std::atomic<int> answered = 0;
    std::vector<std::thread> flood;
    for (int i = 0; i < 3; ++i) {
        flood.emplace_back([&, port = server.Port()] {
            for (int k = 0; k < 666; ++k)
                answered += RawGuest::Status(RawGuest::Get(port, "/treffer?q=regen")) == 200 ? 1 : 0;
        });
    }
    for (std::thread& thread : flood)
        thread.join();
    EXPECT_GT(answered, 0) << "what is over the limits gets no answer";
    EXPECT_TRUE(Serves());
    QCoreApplication::processEvents();
    EXPECT_TRUE(wishes.empty());
}

TEST_F(GuestServerTest, GoesOffAtOnceAndOnAgain) {
    const int port = server.Port();
    const auto waiting = Begin(1, "GET / HTTP/1.1\r\n");
    server.Stop();
    EXPECT_FALSE(server.IsOn());
    EXPECT_FALSE(RawGuest(port).IsConnected());
    EXPECT_TRUE(server.Start(port));
    EXPECT_TRUE(Serves());
}

TEST(GuestNetworkTest, OnlyLocalNetworksAreLocal) {
    for (const std::uint32_t address : {0x7F000001U, 0x0A010203U, 0xAC100001U, 0xAC1FFFFFU, 0xC0A8B217U, 0xA9FE0001U})
        EXPECT_TRUE(GuestNetwork::IsLocal(address)) << std::hex << address;
    for (const std::uint32_t address : {0xAC200001U, 0xAC0FFFFFU, 0xC0A90001U, 0x08080808U, 0x0B000001U, 0U})
        EXPECT_FALSE(GuestNetwork::IsLocal(address)) << std::hex << address;
}

TEST(GuestConnectionsTest, ARequestThatThrowsEndsAlone) {
    std::atomic<int> served{0};
    const auto serve = [&served](int) {
        if (++served == 1)
            throw std::bad_alloc();
    };
    GuestConnections connections(serve, {1, 4, 8});
    const int port = connections.Start(0);
    for (int guest = 1; guest <= 2; ++guest) {
        EXPECT_TRUE(RawGuest(port).IsSentAway());
        EXPECT_EQ(served, guest);
    }
}

} // namespace kalvo::test
