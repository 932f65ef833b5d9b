#include "live/WishList.h"
#include "archive/TestClock.h"
#include "support/TestFolder.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

class WishListTest : public ::testing::Test {
protected:
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
    QStringList Kept() const { return QDir(folder.Path()).entryList({u"WZ.*"_s}); }

    TestFolder folder;
    TestClock clock;
    WishList list{folder.Path(u"WZ"_s), clock};
};

TEST_F(WishListTest, ARecordHasItsFieldsAtTheirBytes) {
    list.Add({u"/musik/Müller.mp3"_s, WishDisplay(u"Mara Lind"_s, u"Über Nacht"_s), u"  Jörg  "_s,
              WishTime(QDateTime(QDate(2026, 3, 3), QTime(9, 5)))});
    const auto field = [](const char* bytes, int width) { return QByteArray(bytes).leftJustified(width, ' '); };
    const QByteArray expected = QByteArray(2, '\0') + field("/musik/M\xFCller.mp3", 100) +
                                field("Mara Lind - \xDC"
                                      "ber Nacht",
                                      100) +
                                field("J\xF6rg", 60) + field("03.03.2026 09:05", 20);
    EXPECT_EQ(expected.size(), 282);
    EXPECT_EQ(folder.Read(u"WZ"_s), expected);
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

TEST_F(WishListTest, OddBytesAtTheEndAreKeptBesideTheFile) {
    list.Add(Make(u"eins"_s));
    folder.Write(u"WZ"_s, folder.Read(u"WZ"_s) + "halb");
    EXPECT_EQ(Stored(), QStringList({u"eins"_s}));
    list.Add(Make(u"zwei"_s));
    EXPECT_EQ(Stored(), QStringList({u"eins"_s, u"zwei"_s}));
    ASSERT_EQ(Kept().size(), 1);
    EXPECT_EQ(folder.Read(Kept().at(0)), "halb");
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
    EXPECT_EQ(NamesOfWish(u"Mara Lind - Regen - live"_s).artist, u"Mara Lind"_s);
    EXPECT_EQ(NamesOfWish(u"Mara Lind - Regen - live"_s).title, u"Regen - live"_s);
    EXPECT_EQ(NamesOfWish(u"Regen"_s).title, u"Regen"_s);
    EXPECT_EQ(NamesOfWish(u"- Regen"_s).title, u"Regen"_s);
    EXPECT_EQ(ShownWish({u"/musik/Regen.mp3"_s, u"-"_s, {}, {}}), u"Regen"_s) << "no tags at all";
}

} // namespace
} // namespace kalvo::test
