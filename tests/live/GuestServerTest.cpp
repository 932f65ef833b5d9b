#include "live/GuestServer.h"

#include "live/GuestConnections.h"
#include "live/GuestNetwork.h"
#include "live/GuestSupport.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

#include <atomic>
#include <new>
#include <thread>

namespace kalvo::test {
namespace {

using namespace std::chrono_literals;

GuestHttpLimits Fast() {
    return {{6, 4, 8}, 400ms};
}

class GuestServerTest : public testing::Test {
protected:
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

    GuestClock clock;
    std::vector<GuestWish> wishes;
    GuestServer server{clock, nullptr, {{1'000'000, 1}, {3, 1000}, {3, 1000}, 100}, Fast()};
};

TEST_F(GuestServerTest, ABrowserSearchesWishesAndSeesItsWish) {
    const QByteArray page = RawGuest::Get(server.Port(), "/?q=m%C3%A4nner", "Accept-Language: en\r\n");
    EXPECT_EQ(RawGuest::Status(page), 200);
    EXPECT_TRUE(page.contains("Herbert Grünwald"));
    EXPECT_TRUE(page.contains("Content-Security-Policy: default-src 'none'"));
    const QByteArray cookie = "Cookie: a=b; gast=" + page.mid(page.indexOf("Set-Cookie: gast=") + 17, 32) + "\r\n";
    const QByteArray before = "name=\"marke\" type=\"hidden\" value=\"";
    const QByteArray token = page.mid(page.indexOf(before) + before.size(), 32);
    const QByteArray form = "titel=7&name=J%C3%BCrgen+%3Cb%3E&marke=" + token;
    const auto wish = [&](const QByteArray& headers) {
        return RawGuest::Ask(server.Port(), "POST /wunsch HTTP/1.1\r\nHost: h\r\nOrigin: http://h\r\n" + headers +
                                                cookie +
                                                "Content-Type: application/x-www-form-urlencoded\r\nContent-Length: " +
                                                QByteArray::number(form.size()) + "\r\n\r\n" + form);
    };
    EXPECT_TRUE(wish({}).contains("Location: /?q=&m=notiert"));
    EXPECT_TRUE(wish("X-Kalvo: 1\r\n").contains("schon gewünscht"));
    ASSERT_TRUE(WaitUntil([this] { return !wishes.empty(); }));
    EXPECT_EQ(wishes[0].nr, 7);
    EXPECT_EQ(wishes[0].name, QStringLiteral("Jürgen <b>"));
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
        {"PUT /wunsch" + host + "Content-Length: 4\r\n\r\nabcd", 405},
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
    std::vector<std::unique_ptr<RawGuest>> slow;
    for (int i = 0; i < 3; ++i) { // as many as one address may, but one
        slow.push_back(std::make_unique<RawGuest>(server.Port()));
        ASSERT_TRUE(slow.back()->Send("GET / HTTP/1.1\r\nHost: h\r\n"));
    }
    EXPECT_TRUE(Serves());
    std::atomic<bool> over = false;
    std::thread dripping([&] {
        while (!over && slow[0]->Send("a"))
            std::this_thread::sleep_for(5ms);
    });
    for (const auto& guest : slow) {
        bool ended = false;
        EXPECT_EQ(guest->Receive(&ended), QByteArray());
        EXPECT_TRUE(ended);
    }
    over = true;
    dripping.join();
    const RawGuest body(server.Port());
    body.Send("POST /wunsch HTTP/1.1\r\nHost: h\r\nContent-Length: 100\r\n\r\nti");
    bool ended = false;
    body.Receive(&ended);
    EXPECT_TRUE(ended);
    EXPECT_TRUE(Serves());
}

TEST_F(GuestServerTest, ManyConnectionsOfOneAddressAreTurnedAway) {
    std::vector<std::unique_ptr<RawGuest>> held;
    int refused = 0;
    for (int i = 0; i < 100; ++i) {
        held.push_back(std::make_unique<RawGuest>(server.Port()));
        held.back()->Send("GET ");
    }
    for (const auto& guest : held) {
        bool ended = false;
        guest->Receive(&ended);
        refused += ended ? 1 : 0;
    }
    EXPECT_EQ(refused, 100) << "all are sent away, at once or when their time is over";
    held.clear();
    EXPECT_TRUE(WaitUntil([this] { return Serves(); }));
}

TEST_F(GuestServerTest, AFloodIsAnsweredWithoutAWish) {
    constexpr int requests = 2000;
    std::atomic<int> answered = 0;
    std::vector<std::thread> flood;
    for (int i = 0; i < 3; ++i) {
        flood.emplace_back([&, port = server.Port()] {
            for (int k = 0; k < requests / 3; ++k)
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

TEST_F(GuestServerTest, GoesOffAtOnceAndTellsAPortThatIsTaken) {
    const int port = server.Port();
    GuestServer second(clock);
    EXPECT_FALSE(second.Start(port));
    EXPECT_TRUE(second.Failure().contains(QStringLiteral("anderen Programm"))) << second.Failure().toStdString();
    const RawGuest waiting(port);
    waiting.Send("GET / HTTP/1.1\r\n");
    server.Stop();
    EXPECT_FALSE(server.IsOn());
    EXPECT_FALSE(RawGuest(port).IsConnected());
    EXPECT_TRUE(server.Start(port));
    EXPECT_TRUE(Serves());
}

TEST(GuestNetworkTest, OnlyLocalNetworksAreLocal) {
    const std::vector<std::pair<std::uint32_t, bool>> cases{
        {0x7F000001, true},  {0x0A010203, true},  {0xAC100001, true},  {0xAC1FFFFF, true},
        {0xC0A8B217, true},  {0xA9FE0001, true},  {0xAC200001, false}, {0xAC0FFFFF, false},
        {0xC0A90001, false}, {0x08080808, false}, {0x0B000001, false}, {0, false}};
    for (const auto& [address, local] : cases)
        EXPECT_EQ(GuestNetwork::IsLocal(address), local) << std::hex << address;
}

TEST(GuestConnectionsTest, ARequestThatThrowsEndsAlone) {
    std::atomic<int> served{0};
    GuestConnections connections(
        [&served](int) {
            if (++served == 1)
                throw std::bad_alloc();
        },
        {1, 4, 8});
    const int port = connections.Start(0);
    for (int guest = 1; guest <= 2; ++guest) {
        bool ended = false;
        const RawGuest asking(port);
        asking.Receive(&ended);
        EXPECT_TRUE(ended);
        EXPECT_EQ(served, guest);
    }
}

} // namespace
} // namespace kalvo::test
