#include "live/WishList.h"
#include "archive/TestClock.h"
#include "live/ArchiveTitles.h"
#include "live/WishState.h"
#include "playlists/PlaylistSupport.h"
#include "support/TestFolder.h"

#include <QDir>
#include <gtest/gtest.h>

namespace kalvo::test {

struct WishListTest : ::testing::Test {
    Wish Make(const QString& name, const QString& guest = u"Anna"_s) const {
        return {u"/musik/"_s + name + u".mp3"_s, WishDisplay(u"Mara Lind"_s, name), guest, {}};
    }
    /** Titles of the wishes of a list that reads the file anew. */
    QStringList Stored() const {
        WishList again(folder.Path(u"WZ"_s), clock);
        again.Load();
        QStringList titles;
        for (const Wish& wish : again.Wishes())
            titles.append(NamesOfWish(wish.display).title);
        return titles;
    }

    TestFolder folder;
    TestClock clock;
    WishList list{folder.Path(u"WZ"_s), clock};
};

TEST_F(WishListTest, ARecordHasItsFieldsAtTheirBytes) {
    list.Add({u"/musik/Müller.mp3"_s, WishDisplay(u"Mara Lind"_s, u"Über Nacht"_s), u"  Jörg  "_s,
              WishTime(QDateTime(QDate(2026, 3, 3), QTime(9, 5)))});
    const auto field = [](const QString& text, int width) { return text.toLatin1().leftJustified(width, ' '); };
    EXPECT_EQ(folder.Read(u"WZ"_s), QByteArray(2, '\0') + field(u"/musik/Müller.mp3"_s, 100) +
                                        field(u"Mara Lind - Über Nacht"_s, 100) + field(u"Jörg"_s, 60) +
                                        field(u"03.03.2026 09:05"_s, 20));
}

TEST_F(WishListTest, EveryChangeIsInTheFileAtOnce) {
    const quint64 first = list.Add(Make(u"eins"_s));
    list.Add(Make(u"zwei"_s));
    list.Add(Make(u"drei"_s));
    EXPECT_EQ(Stored(), QStringList({u"eins"_s, u"zwei"_s, u"drei"_s}));
    EXPECT_EQ(list.Wishes().constLast().time, u"07.03.2026 20:15"_s);
    const QList<WishList::Removed> removed = list.Remove({first, 99});
    EXPECT_EQ(Stored(), QStringList({u"zwei"_s, u"drei"_s}));
    EXPECT_EQ(list.RowOf(first), -1);
    list.PutBack(removed);
    EXPECT_EQ(Stored(), QStringList({u"eins"_s, u"zwei"_s, u"drei"_s}));
    EXPECT_EQ(list.RowOf(first), 0);

    list.Clear();
    EXPECT_TRUE(QFile::exists(folder.Path(u"WZ"_s)));
    EXPECT_EQ(folder.Read(u"WZ"_s).size(), 0);
    EXPECT_EQ(list.Add({}), 0U);
}

TEST_F(WishListTest, WhatDoesNotFitIsCut) {
    list.Add(Make(QString(200, u'x'), QString(70, u'y')));
    const QByteArray bytes = folder.Read(u"WZ"_s);
    EXPECT_EQ(bytes.mid(202, 80), QByteArray(60, 'y') + QByteArray("07.03.2026 20:15    "));
    WishList again(folder.Path(u"WZ"_s), clock);
    again.Load();
    EXPECT_EQ(again.Wishes().at(0).path, WishFile::StoredPath(list.Wishes().at(0).path));
    EXPECT_EQ(again.Wishes().at(0).display, WishFile::StoredDisplay(list.Wishes().at(0).display));
}

TEST_F(WishListTest, ADamagedFileIsTold) {
    const auto isDamaged = [this](const QByteArray& bytes) {
        return WishFile(folder.Write(u"WZ"_s, bytes), clock).IsDamaged();
    };
    EXPECT_FALSE(isDamaged({}));
    EXPECT_TRUE(isDamaged(QByteArray(564, '\0')));
    EXPECT_TRUE(isDamaged(QByteArray(282, 'z')));
    list.Add(Make(u"eins"_s));
    EXPECT_FALSE(WishFile(folder.Path(u"WZ"_s), clock).IsDamaged());
}

TEST_F(WishListTest, AWishThatCannotBeWrittenStaysAndIsWrittenLater) {
    QDir(folder.Path()).mkdir(u"WZ"_s); // nothing can be written to this name
    QStringList told;
    QObject::connect(&list, &WishList::WriteFailed, &list, [&told](const QString& reason) { told.append(reason); });
    list.Add(Make(u"eins"_s));
    EXPECT_EQ(told.size(), 1);
    EXPECT_EQ(list.Wishes().size(), 1);
    QDir(folder.Path()).rmdir(u"WZ"_s);
    list.Add(Make(u"zwei"_s));
    EXPECT_EQ(Stored(), QStringList({u"eins"_s, u"zwei"_s}));
}

TEST(WishNamesTest, TheFirstSeparatorDivides) {
    const auto [artist, title] = NamesOfWish(u"Mara Lind - Regen - live"_s);
    EXPECT_EQ(artist, u"Mara Lind"_s);
    EXPECT_EQ(title, u"Regen - live"_s);
    for (const QString& display : {u"Regen"_s, u"- Regen"_s})
        EXPECT_EQ(NamesOfWish(display).title, u"Regen"_s) << display.toStdString();
    EXPECT_EQ(ShownWish({u"/musik/Regen.mp3"_s, u"-"_s, {}, {}}), u"Regen"_s) << "no tags at all";
}

struct ArchiveTitlesTest : ::testing::Test {
    ArchiveTitlesTest() {
        const DataFolder data(folder.Path());
        data.CreateAll();
        archive.Open(data);
        archive.WaitForIndex();
        for (const QString& name : names) {
            TitleRecord record;
            record.Interpret = u"Jörg's Band"_s;
            record.Zeit = u"03:20"_s;
            record.Pfad = name + u".mp3"_s;
            record.Titel = name.last(4);
            EXPECT_TRUE(archive.AddTitle(record));
        }
    }
    /** As it comes back from the file. */
    static Wish FromFile(const QString& path, const QString& display) {
        return {WishFile::StoredPath(path), WishFile::StoredDisplay(display), u"Anna"_s, {}};
    }

    TestFolder folder;
    TestClock clock;
    Archive archive{clock};
    const QString longFolder = u"/musik/L'Été/"_s + QString(120, u'ü');
    const QStringList names{u"/musik/Kurz"_s, longFolder + u"/Eins"_s, longFolder + u"/Zwei"_s};
};

TEST_F(ArchiveTitlesTest, AWishIsFoundAgainThoughItsPathWasCut) {
    for (const QString& name : names) {
        const Wish wish = FromFile(name + u".mp3"_s, u"Jörg's Band - "_s + name.last(4));
        EXPECT_EQ(ArchiveTitles(archive).TitleOf(wish).Pfad, name + u".mp3"_s);
        EXPECT_EQ(ArchiveTitles(archive).TitleOf(wish).Zeit, u"03:20"_s) << name.toStdString();
    }
    const TitleRecord unknown = ArchiveTitles(archive).TitleOf(FromFile(u"/fort/x.mp3"_s, u"Mara Lind - Regen"_s));
    EXPECT_EQ(unknown.Pfad, u"/fort/x.mp3"_s);
    EXPECT_EQ(unknown.Interpret, u"Mara Lind"_s);
    EXPECT_EQ(unknown.Titel, u"Regen"_s);
}

TEST_F(ArchiveTitlesTest, TheStateOfAWishFollowsTheLists) {
    TwoLists lists;
    const auto state = [&lists](const Wish& wish) { return WishState(lists.first, lists.second).Of(wish); };
    const Wish cut = FromFile(longFolder + u"/Eins.mp3"_s, u"Jörg's Band - Eins"_s);
    const Wish plain{u"/music/b"_s, {}, {}, {}};
    EXPECT_EQ(state(plain), QString());
    lists.first.Append(EntriesOf("ab"));
    lists.second.Append({{u"Eins"_s, {}, {}, {}, {}, longFolder + u"/Eins.mp3"_s}});
    EXPECT_EQ(state(plain), u"in Liste 1"_s);
    EXPECT_EQ(state(cut), u"in Liste 2"_s);
    lists.first.SetCurrent(1);
    EXPECT_EQ(state(plain), u"auf Player 1"_s);
    lists.second.Append(EntriesOf("b"));
    EXPECT_EQ(state(plain), u"auf Player 1"_s);
    lists.second.Remove({1});
    lists.first.SetCurrent(0);
    EXPECT_EQ(state(plain), u"gespielt"_s);
}

} // namespace kalvo::test
