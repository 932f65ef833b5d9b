#include "live/GuestSite.h"

#include "live/GuestSupport.h"

#include <gtest/gtest.h>

namespace kalvo::test {
namespace {

class GuestSiteTest : public testing::Test {
protected:
    GuestSiteTest() { site.SetCatalog(SomeTitles()); }

    GuestRequest Request(const QByteArray& path, const QHash<QByteArray, QString>& fields = {}) const {
        GuestRequest request;
        request.path = path;
        request.fields = fields;
        request.address = "10.0.0.2";
        request.host = "10.0.0.1:8090";
        request.accepted = "de";
        request.cookies = cookies;
        return request;
    }
    GuestResponse Get(const QByteArray& path, const QHash<QByteArray, QString>& fields = {}) {
        return site.Answer(Request(path, fields));
    }
    static QByteArray Header(const GuestResponse& response, const QByteArray& name, const QByteArray& holding = {}) {
        for (const auto& [one, value] : response.headers) {
            if (one == name && value.contains(holding))
                return value;
        }
        return {};
    }
    /** Opens the page and keeps its cookie and its token, as a browser does. */
    void Visit() {
        const GuestResponse page = Get("/");
        cookies["gast"] = Header(page, "Set-Cookie", "gast=").mid(5, 32);
        const QByteArray before = "name=\"marke\" type=\"hidden\" value=\"";
        token = QString::fromUtf8(page.body.mid(page.body.indexOf(before) + before.size(), 32));
    }
    GuestRequest WishFor(const QString& title, const QString& name = QStringLiteral("Anna")) const {
        GuestRequest request = Request("/wunsch", {{"titel", title}, {"name", name}, {"marke", token}});
        request.post = true;
        request.origin = "http://10.0.0.1:8090";
        return request;
    }
    /** What the page that follows is to tell. */
    QByteArray Outcome(const GuestRequest& request) {
        const QByteArray location = Header(site.Answer(request), "Location");
        return location.mid(location.lastIndexOf('=') + 1);
    }

    GuestClock clock;
    std::vector<GuestWish> wishes;
    GuestSite site{
        clock, [this](const GuestWish& wish) { wishes.push_back(wish); }, {{1000, 1}, {3, 60'000}, {5, 60'000}, 4}};
    QHash<QByteArray, QByteArray> cookies;
    QString token;
};

TEST_F(GuestSiteTest, ShowsTitlesAsTextWhateverTheyAreCalled) {
    const QByteArray titles = Get("/treffer", {{"q", QStringLiteral("böse")}}).body;
    EXPECT_TRUE(titles.contains("&lt;script&gt;alert(&#39;x&#39;)&lt;/script&gt;")) << titles.constData();
    EXPECT_TRUE(titles.contains("&quot;Böse&quot; &amp; Söhne · 0:59"));
    EXPECT_FALSE(titles.contains("<script"));
    const QByteArray page = Get("/", {{"q", QStringLiteral("\"><script>'")}}).body;
    EXPECT_TRUE(page.contains("value=\"&quot;&gt;&lt;script&gt;&#39;\""));
    EXPECT_EQ(page.count("<script"), 1) << "our own";
}

TEST_F(GuestSiteTest, SaysHowMuchWasFound) {
    EXPECT_TRUE(Get("/treffer").body.contains("Gib einen Interpreten"));
    EXPECT_TRUE(Get("/treffer", {{"q", QStringLiteral("regen")}}).body.contains("2 Titel gefunden"));
    EXPECT_TRUE(Get("/treffer", {{"q", QStringLiteral("xyz")}}).body.contains("Nichts gefunden"));
    GuestSite loading(clock, [](const GuestWish&) {});
    EXPECT_TRUE(loading.Answer(Request("/treffer", {{"q", QStringLiteral("regen")}})).body.contains("geladen"));
    site.DropCatalog();
    EXPECT_TRUE(Get("/treffer", {{"q", QStringLiteral("regen")}}).body.contains("geladen"));
}

TEST_F(GuestSiteTest, SpeaksGermanAndEnglish) {
    const auto language = [this](const QByteArray& accepted, const QByteArray& chosen) {
        GuestRequest request = Request("/");
        request.accepted = accepted;
        request.cookies["sprache"] = chosen;
        const QByteArray body = site.Answer(request).body;
        EXPECT_FALSE(body.contains("{{"));
        return body.mid(body.indexOf("lang=\"") + 6, 2);
    };
    EXPECT_EQ(language("de-AT,de;q=0.9,en;q=0.8", ""), "de");
    EXPECT_EQ(language("en-GB,de;q=0.5", ""), "en");
    EXPECT_EQ(language("fr-FR, fr;q=0.9", ""), "en");
    EXPECT_EQ(language("", ""), "de");
    EXPECT_EQ(language("de", "en"), "en");
    EXPECT_EQ(language("de", "xx\"><b>"), "de");
    const GuestResponse switched = Get("/", {{"sprache", QStringLiteral("en")}});
    EXPECT_TRUE(switched.body.contains("Wish for music"));
    EXPECT_TRUE(Header(switched, "Set-Cookie", "sprache=").startsWith("sprache=en;"));
}

TEST_F(GuestSiteTest, TakesAWishAndShowsItsPlace) {
    Visit();
    EXPECT_EQ(Outcome(WishFor(QStringLiteral("7"), QStringLiteral("  Anna\n\u202Eevil ") + QString(90, u'x'))),
              "notiert");
    ASSERT_EQ(wishes.size(), 1U);
    EXPECT_EQ(wishes[0].nr, 7);
    EXPECT_EQ(wishes[0].artist, QStringLiteral("Herbert Grünwald"));
    EXPECT_EQ(wishes[0].name, QStringLiteral("Anna evil ") + QString(30, u'x'));
    EXPECT_TRUE(Get("/stand").body.contains("wird notiert"));
    const std::vector<std::pair<WishPlace, const char*>> places{{{WishStage::Waits, 12}, "Platz 12"},
                                                                {{WishStage::Queued, 0}, "kommt bald"},
                                                                {{WishStage::OnAir, 0}, "läuft jetzt"},
                                                                {{WishStage::Played, 0}, "wurde gespielt"},
                                                                {{WishStage::Gone, 0}, "nicht mehr"}};
    for (const auto& [place, text] : places) {
        GuestBoard board{true, QStringLiteral("<Regen>"), {}, 1, {{wishes[0].ticket, place}}};
        site.SetBoard(std::make_shared<const GuestBoard>(board));
        const QByteArray state = Get("/stand").body;
        EXPECT_TRUE(state.contains(text)) << state.constData();
        EXPECT_TRUE(state.contains("&lt;Regen&gt;"));
        const bool over = place.stage == WishStage::Played || place.stage == WishStage::Gone;
        EXPECT_EQ(Get("/treffer", {{"q", QStringLiteral("männer")}}).body.contains("<button"), over);
    }
    cookies.clear();
    EXPECT_FALSE(Get("/stand").body.contains("Männer")) << "another guest";
}

TEST_F(GuestSiteTest, TakesWishesOnlyFromItsOwnPage) {
    Visit();
    const GuestRequest good = WishFor(QStringLiteral("7"));
    std::vector<GuestRequest> forged(6, good);
    forged[0].cookies.clear();
    forged[1].fields.remove("marke");
    forged[2].fields["marke"] = QString(32, u'0');
    forged[3].origin = "http://evil.example";
    forged[4].origin = "null";
    forged[5].cookies["gast"] = QByteArray(32, 'a');
    for (const GuestRequest& request : forged)
        EXPECT_EQ(Outcome(request), "neu");
    GuestRequest byAddress = good;
    byAddress.post = false;
    EXPECT_EQ(site.Answer(byAddress).status, 405);
    EXPECT_TRUE(wishes.empty());
    GuestRequest plain = good;
    plain.origin.clear();
    EXPECT_EQ(Outcome(plain), "notiert") << "old browsers tell no origin";
}

TEST_F(GuestSiteTest, RefusesWhatIsNoTitleAndWhatIsTooMuch) {
    Visit();
    for (const char* title : {"", "../../etc/passwd", "7;DROP", "1e1"})
        EXPECT_EQ(Outcome(WishFor(QString::fromLatin1(title))), "fehlt") << title;
    for (const char* title : {"0", "-1", "4", "9223372036854775807"})
        EXPECT_EQ(Outcome(WishFor(QString::fromLatin1(title))), "unbekannt") << title;
    EXPECT_EQ(Outcome(WishFor(QStringLiteral("7"))), "notiert");
    EXPECT_EQ(Outcome(WishFor(QStringLiteral("7"))), "schon");
    EXPECT_EQ(Outcome(WishFor(QStringLiteral("3"))), "notiert");
    EXPECT_EQ(Outcome(WishFor(QStringLiteral("5"))), "notiert");
    EXPECT_EQ(Outcome(WishFor(QStringLiteral("9"))), "zuviele");
    clock.milliseconds += 60'000;
    EXPECT_EQ(Outcome(WishFor(QStringLiteral("9"))), "notiert");
    cookies.clear(); // who throws his cookie away is still at the same address
    Visit();
    EXPECT_EQ(Outcome(WishFor(QStringLiteral("7"))), "notiert");
    EXPECT_EQ(Outcome(WishFor(QStringLiteral("3"))), "notiert");
    EXPECT_EQ(Outcome(WishFor(QStringLiteral("5"))), "zuviele");
    clock.milliseconds += 600'000;
    site.SetBoard(std::make_shared<const GuestBoard>(GuestBoard{false, {}, {}, 4, {}}));
    EXPECT_EQ(Outcome(WishFor(QStringLiteral("9"))), "voll");
    EXPECT_EQ(wishes.size(), 6U);
}

TEST_F(GuestSiteTest, GivesOutNothingButItsPages) {
    for (const char* path : {"/../../etc/passwd", "//etc/passwd", "/gast.html", "/guest/gast.html", "/%2e%2e/",
                             ":/kalvo", "/default.mav", "", "/wunsch/"})
        EXPECT_EQ(Get(path).status, 404) << path;
    for (const char* path : {"/", "/treffer", "/stand", "/gast.css", "/gast.js", "/gast.svg"}) {
        const GuestResponse response = Get(path);
        EXPECT_EQ(response.status, 200) << path;
        EXPECT_FALSE(response.body.isEmpty()) << path;
        const QByteArray policy = Header(response, "Content-Security-Policy");
        EXPECT_TRUE(policy.startsWith("default-src 'none';")) << path;
        EXPECT_FALSE(policy.contains("unsafe")) << path;
        EXPECT_EQ(Header(response, "X-Content-Type-Options"), "nosniff") << path;
    }
    const QByteArray page = Get("/").body + Get("/gast.css").body + Get("/gast.js").body;
    EXPECT_FALSE(page.contains("http://")) << "nothing from elsewhere";
    EXPECT_FALSE(page.contains("https://"));
    EXPECT_FALSE(page.contains("style=\""));
    EXPECT_FALSE(page.contains("onclick"));
}

TEST_F(GuestSiteTest, AnAddressThatAsksTooMuchHasToWait) {
    GuestSite strict(clock, [](const GuestWish&) {}, {{5, 1000}, {}, {}, 1});
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(strict.Answer(Request("/stand")).status, 200);
    EXPECT_EQ(strict.Answer(Request("/stand")).status, 429);
    GuestRequest other = Request("/stand");
    other.address = "10.0.0.3";
    EXPECT_EQ(strict.Answer(other).status, 200);
    clock.milliseconds += 1000;
    EXPECT_EQ(strict.Answer(Request("/stand")).status, 200);
}

} // namespace
} // namespace kalvo::test
