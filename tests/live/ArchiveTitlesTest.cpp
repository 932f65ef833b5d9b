#include "live/ArchiveTitles.h"
#include "archive/TestClock.h"
#include "live/WishState.h"
#include "playlists/PlaylistSupport.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

class ArchiveTitlesTest : public ::testing::Test {
protected:
    ArchiveTitlesTest() {
        const DataFolder data(folder.Path());
        data.CreateAll();
        archive.Open(data);
        archive.WaitForIndex();
        Add(u"/musik/kurz.mp3"_s, u"Kurz"_s);
        Add(longFolder + u"/Eins.mp3"_s, u"Eins"_s);
        Add(longFolder + u"/Zwei.mp3"_s, u"Zwei"_s);
    }
    void Add(const QString& path, const QString& title) {
        TitleRecord record;
        record.Pfad = path;
        record.Titel = title;
        record.Interpret = u"Jörg's Band"_s;
        record.Zeit = u"03:20"_s;
        ASSERT_TRUE(archive.AddTitle(record));
    }
    /** As it comes back from the file. */
    static Wish FromFile(const QString& path, const QString& display) {
        return {WishFile::StoredPath(path), WishFile::StoredDisplay(display), u"Anna"_s, {}};
    }

    TestFolder folder;
    TestClock clock;
    Archive archive{clock};
    const QString longFolder = u"/musik/L'Été/"_s + QString(120, u'ü');
};

TEST_F(ArchiveTitlesTest, AWishIsFoundAgainThoughItsPathWasCut) {
    const ArchiveTitles titles(archive);
    const auto pathOf = [&titles](const Wish& wish) { return titles.TitleOf(wish).Pfad; };
    EXPECT_EQ(pathOf(FromFile(u"/musik/kurz.mp3"_s, u"Jörg's Band - Kurz"_s)), u"/musik/kurz.mp3"_s);
    EXPECT_EQ(pathOf(FromFile(longFolder + u"/Zwei.mp3"_s, u"Jörg's Band - Zwei"_s)), longFolder + u"/Zwei.mp3"_s);
    EXPECT_EQ(titles.TitleOf(FromFile(longFolder + u"/Eins.mp3"_s, u"Jörg's Band - Eins"_s)).Zeit, u"03:20"_s);
}

TEST_F(ArchiveTitlesTest, WhatTheArchiveDoesNotKnowIsMadeFromTheWish) {
    const TitleRecord title = ArchiveTitles(archive).TitleOf(FromFile(u"/fort/x.mp3"_s, u"Mara Lind - Regen"_s));
    EXPECT_EQ(title.Pfad, u"/fort/x.mp3"_s);
    EXPECT_EQ(title.Interpret, u"Mara Lind"_s);
    EXPECT_EQ(title.Titel, u"Regen"_s);
}

TEST_F(ArchiveTitlesTest, TheStateOfAWishFollowsTheLists) {
    SystemRandom random;
    Playlist first(1, random), second(2, random);
    const Wish cut = FromFile(longFolder + u"/Eins.mp3"_s, u"Jörg's Band - Eins"_s);
    const Wish plain{u"/music/b"_s, {}, {}, {}};
    EXPECT_EQ(WishState(first, second).Of(plain), QString());
    first.Append(EntriesOf("ab"));
    second.Append({{u"Eins"_s, {}, {}, {}, {}, longFolder + u"/Eins.mp3"_s}});
    EXPECT_EQ(WishState(first, second).Of(plain), u"in Liste 1"_s);
    EXPECT_EQ(WishState(first, second).Of(cut), u"in Liste 2"_s);
    first.SetCurrent(1);
    EXPECT_EQ(WishState(first, second).Of(plain), u"auf Player 1"_s);
    second.Append(EntriesOf("b"));
    EXPECT_EQ(WishState(first, second).Of(plain), u"auf Player 1"_s);
    second.Remove({1});
    first.SetCurrent(0);
    EXPECT_EQ(WishState(first, second).Of(plain), u"gespielt"_s);
}

} // namespace
} // namespace kalvo::test
