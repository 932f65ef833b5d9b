#include "archive/GridSort.h"

#include <gtest/gtest.h>

namespace kalvo {

namespace {

GridFilter Search(const QString& text) {
    return {text, false, {}, {ArchiveField::Titel, ArchiveField::Interpret}};
}

TEST(GridSortTest, ThirdClickIsAscendingAgain) {
    GridSort sort;
    const QString up = QStringLiteral("Select * From Daten Order By Titel, Interpret, Titel");
    const QString down = QStringLiteral("Select * From Daten Order By Titel DESC, Interpret, Titel");
    EXPECT_EQ(sort.HeaderClick(ArchiveField::Titel, Search({})), up);
    EXPECT_EQ(sort.Caption(ArchiveField::Titel), QStringLiteral("Titel >"));
    EXPECT_EQ(sort.HeaderClick(ArchiveField::Titel, Search({})), down);
    EXPECT_EQ(sort.Caption(ArchiveField::Titel), QStringLiteral("Titel <"));
    EXPECT_EQ(sort.HeaderClick(ArchiveField::Titel, Search({})), up);
}

TEST(GridSortTest, AnotherColumnStartsAscendingAndTakesTheMark) {
    GridSort sort;
    sort.HeaderClick(ArchiveField::Extra1, Search({}));
    sort.HeaderClick(ArchiveField::Extra1, Search({}));
    EXPECT_EQ(sort.Caption(ArchiveField::Extra1), QStringLiteral("Kommentar <"));
    sort.HeaderClick(ArchiveField::Extra2, Search({}));
    EXPECT_EQ(sort.Caption(ArchiveField::Extra1), QStringLiteral("Kommentar"));
    EXPECT_EQ(sort.Caption(ArchiveField::Extra2), QStringLiteral("Zuletzt Gespielt >"));
}

TEST(GridSortTest, AlbumGoesOnByTrackWithoutAFilterOnly) {
    GridSort sort;
    EXPECT_EQ(sort.HeaderClick(ArchiveField::Album, Search(QStringLiteral("a"))),
              QStringLiteral("Select * From Daten Order By Album, Album, Extra3"));
    EXPECT_EQ(sort.HeaderClick(ArchiveField::Album, Search(QStringLiteral("ab"))),
              QStringLiteral("SELECT * FROM Daten  Where  Titel Like '*ab*' or  Interpret Like '*ab*'"
                             "Order By Album DESC, Interpret, Titel"));
}

TEST(GridSortTest, TrackAndLastPlayedAreNotSortedWhileAFilterIsActive) {
    GridSort sort;
    sort.HeaderClick(ArchiveField::Titel, Search({}));
    for (const ArchiveField field : {ArchiveField::Extra2, ArchiveField::Extra3}) {
        EXPECT_TRUE(sort.HeaderClick(field, Search(QStringLiteral("ab"))).isEmpty());
        EXPECT_EQ(sort.Caption(field), FieldCaption(field));
        EXPECT_EQ(sort.Caption(ArchiveField::Titel), QStringLiteral("Titel >"));
        EXPECT_FALSE(GridSort().HeaderClick(field, Search(QStringLiteral("a"))).isEmpty());
    }
}

TEST(GridSortTest, TheOpenTreeSearchesForItsValueInsteadOfTheBox) {
    GridFilter filter = Search(QStringLiteral("abba"));
    filter.treeShown = true;
    filter.treeValue = QStringLiteral("Rock 'n' Roll");
    EXPECT_EQ(GridSort().HeaderClick(ArchiveField::Extra1, filter),
              QStringLiteral("SELECT * FROM Daten  Where  Titel Like '*Rock *n* Roll*' or  Interpret Like "
                             "'*Rock *n* Roll*'Order By Extra1, Interpret, Titel"));
}

} // namespace

} // namespace kalvo
