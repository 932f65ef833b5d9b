#include "live/GuestSite.h"

#include "live/GuestSupport.h"

#include <gtest/gtest.h>

namespace kalvo::test {
namespace {

struct GuestSiteTest : testing::Test {
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
    QByteArray Found(const QString& text) { return Get("/treffer", {{"q", text}}).body; }
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
        token = QString::fromUtf8(TokenIn(page.body));
    }
    GuestRequest WishFor(const char* title, const QString& name = u"Anna"_s) const {
        const QString number = QString::fromLatin1(title);
        GuestRequest request = Request("/wunsch", {{"titel", number}, {"name", name}, {"marke", token}});
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
    const GuestRates rates{{1000, 1}, {3, 60'000}, {5, 60'000}, 4};
    GuestSite site{clock, [this](const GuestWish& wish) { wishes.push_back(wish); }, rates};
    QHash<QByteArray, QByteArray> cookies;
    QString token;
};

TEST_F(GuestSiteTest, ShowsTitlesAsTextWhateverTheyAreCalled) {
    const QByteArray titles = Found(u"böse"_s);
    EXPECT_TRUE(titles.contains("&lt;script&gt;alert(&#39;x&#39;)&lt;/script&gt;")) << titles.constData();
    EXPECT_TRUE(titles.contains("&quot;Böse&quot; &amp; Söhne · 0:59"));
    EXPECT_FALSE(titles.contains("<script"));
    const QByteArray page = Get("/", {{"q", u"\"><script>'"_s}}).body;
    EXPECT_TRUE(page.contains("value=\"&quot;&gt;&lt;script&gt;&#39;\""));
    EXPECT_EQ(page.count("<script"), 1) << "our own";
}

TEST_F(GuestSiteTest, SaysHowMuchWasFound) {
    EXPECT_TRUE(Found(u"regen"_s).contains("2 Titel gefunden"));
    EXPECT_TRUE(Found(u"xyz"_s).contains("Nichts gefunden"));
    site.DropCatalog();
    EXPECT_TRUE(Found(u"regen"_s).contains("geladen"));
}

TEST_F(GuestSiteTest, SpeaksGermanAndEnglish) {
    const std::array<const char*, 3> cases[] = {{"de-AT,de;q=0.9,en;q=0.8", "", "de"},
                                                {"en-GB,de;q=0.5", "", "en"},
                                                {"fr-FR, fr;q=0.9", "", "en"},
                                                {"", "", "de"},
                                                {"de", "en", "en"},
                                                {"de", "xx\"><b>", "de"}};
    for (const auto& [accepted, chosen, language] : cases) {
        GuestRequest request = Request("/");
        request.accepted = accepted;
        request.cookies["sprache"] = chosen;
        const QByteArray body = site.Answer(request).body;
        EXPECT_FALSE(body.contains("{{"));
        EXPECT_EQ(body.mid(body.indexOf("lang=\"") + 6, 2), language) << accepted << ' ' << chosen;
    }
    const GuestResponse switched = Get("/", {{"sprache", u"en"_s}});
    EXPECT_TRUE(switched.body.contains("Wish for music"));
    EXPECT_TRUE(Header(switched, "Set-Cookie", "sprache=").startsWith("sprache=en;"));
}

TEST_F(GuestSiteTest, TakesAWishAndShowsItsPlace) {
    Visit();
    EXPECT_EQ(Outcome(WishFor("7", u"  Anna\n\u202Eevil "_s + QString(90, u'x'))), "notiert");
    ASSERT_EQ(wishes.size(), 1U);
    EXPECT_EQ(wishes[0].nr, 7);
    EXPECT_EQ(wishes[0].artist + wishes[0].title, u"Herbert GrünwaldMänner"_s);
    EXPECT_EQ(wishes[0].name, u"Anna evil "_s + QString(30, u'x'));
    EXPECT_TRUE(Get("/stand").body.contains("wird notiert"));
    const std::vector<std::pair<WishPlace, const char*>> places{{{WishStage::Waits, 12}, "Platz 12"},
                                                                {{WishStage::Queued, 0}, "kommt bald"},
                                                                {{WishStage::OnAir, 0}, "läuft jetzt"},
                                                                {{WishStage::Played, 0}, "wurde gespielt"},
                                                                {{WishStage::Gone, 0}, "nicht mehr"}};
    for (const auto& [place, text] : places) {
        GuestBoard board{true, u"<Regen>"_s, {}, 1, {{wishes[0].ticket, place}}};
        site.SetBoard(std::make_shared<const GuestBoard>(board));
        const QByteArray state = Get("/stand").body;
        EXPECT_TRUE(state.contains(text)) << state.constData();
        EXPECT_TRUE(state.contains("&lt;Regen&gt;"));
        const bool over = place.stage == WishStage::Played || place.stage == WishStage::Gone;
        EXPECT_EQ(Found(u"männer"_s).contains("<button"), over);
    }
    cookies.clear();
    EXPECT_FALSE(Get("/stand").body.contains("Männer")) << "another guest";
}

TEST_F(GuestSiteTest, TakesWishesOnlyFromItsOwnPage) {
    Visit();
    const GuestRequest good = WishFor("7");
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
    const auto wish = [this](const std::vector<std::pair<const char*, const char*>>& outcomes) {
        for (const auto& [title, outcome] : outcomes)
            EXPECT_EQ(Outcome(WishFor(title)), outcome) << title;
    };
    Visit();
    wish({{"", "fehlt"}, {"../../etc/passwd", "fehlt"}, {"7;DROP", "fehlt"}, {"1e1", "fehlt"}});
    for (const char* unknown : {"0", "-1", "4", "10", "9223372036854775807"})
        wish({{unknown, "unbekannt"}});
    wish({{"7", "notiert"}, {"7", "schon"}, {"3", "notiert"}, {"5", "notiert"}, {"9", "zuviele"}});
    clock.milliseconds += 60'000;
    wish({{"9", "notiert"}});
    cookies.clear(); // who throws his cookie away is still at the same address
    Visit();
    wish({{"7", "notiert"}, {"3", "notiert"}, {"5", "zuviele"}});
    clock.milliseconds += 600'000;
    site.SetBoard(std::make_shared<const GuestBoard>(GuestBoard{false, {}, {}, 4, {}}));
    wish({{"9", "voll"}});
    EXPECT_EQ(wishes.size(), 6U);
    site.DropCatalog();
    wish({{"9", "unbekannt"}});
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
    for (const char* elsewhere : {"http://", "https://", "style=\"", "onclick"})
        EXPECT_FALSE(page.contains(elsewhere)) << elsewhere;
}

TEST_F(GuestSiteTest, AnAddressThatAsksTooMuchHasToWait) {
    GuestSite strict(clock, [](const GuestWish&) {}, {{5, 1000}, {}, {}, 1});
    GuestRequest request = Request("/stand");
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(strict.Answer(request).status, 200);
    EXPECT_EQ(strict.Answer(request).status, 429);
    request.address = "10.0.0.3";
    EXPECT_EQ(strict.Answer(request).status, 200) << "another one";
}

TEST(GuestLimiterTest, AllowsABurstThenOneAfterEachInterval) {
    GuestClock clock;
    GuestLimiter limiter(clock, {3, 1000});
    const auto allowed = [&limiter](const QByteArray& key) {
        int count = 0;
        for (int tries = 0; tries < 10; ++tries)
            count += limiter.Allow(key) ? 1 : 0;
        return count;
    };
    EXPECT_EQ(allowed("a"), 3);
    EXPECT_FALSE(limiter.MayAllow("a"));
    EXPECT_EQ(allowed("b"), 3);
    clock.milliseconds += 999;
    EXPECT_EQ(allowed("a"), 0);
    clock.milliseconds += 1;
    EXPECT_TRUE(limiter.MayAllow("a"));
    EXPECT_EQ(allowed("a"), 1);
    clock.milliseconds += 60'000;
    EXPECT_EQ(allowed("a"), 3) << "what was not used is not saved up";
}

TEST(GuestLimiterTest, ForgetsOnlyThoseWhoHaveWaited) {
    GuestClock clock;
    GuestLimiter limiter(clock, {1, 1000});
    for (int i = 0; i < 4096; ++i)
        ASSERT_TRUE(limiter.Allow(QByteArray::number(i)));
    EXPECT_FALSE(limiter.Allow("new") || limiter.Allow("0"));
    clock.milliseconds += 1000;
    EXPECT_TRUE(limiter.Allow("new") && limiter.Allow("0"));
}

std::vector<qint64> Numbers(const GuestCatalog::Found& found) {
    std::vector<qint64> numbers;
    for (const GuestTitle& title : found.titles)
        numbers.push_back(title.nr);
    return numbers;
}

TEST(GuestCatalogTest, FindsWordsInArtistAndTitleWithoutCaseAndAccents) {
    const std::pair<const char*, std::vector<qint64>> cases[] = {
        {"männer", {7}},
        {"MANNER", {7}},
        {"grün män", {7}},
        {"strasse älgfors", {3}},
        {"  regen ", {5, 3}}, // what begins with the word comes first
        {"regen zitter", {5}},
        {"regen männer", {}},
        {"", {}},
        {"%", {}},
        {"\x01", {}},
        {"a b c d e f g h nirgends", {}}};
    for (const auto& [text, numbers] : cases)
        EXPECT_EQ(Numbers(SomeTitles()->Search(QString::fromUtf8(text), 10)), numbers) << text;
}

TEST(GuestCatalogTest, GivesNoMoreThanWantedButCountsAll) {
    GuestCatalog catalog;
    for (int i = 100; i > 0; --i)
        catalog.Append(i, "Lied " + std::to_string(100 + i), "Wer", "1:00");
    catalog.Settle();
    const GuestCatalog::Found found = catalog.Search(u"lied"_s, 3);
    EXPECT_EQ(found.count, 100U);
    EXPECT_EQ(Numbers(found), (std::vector<qint64>{1, 2, 3}));
}

} // namespace
} // namespace kalvo::test
