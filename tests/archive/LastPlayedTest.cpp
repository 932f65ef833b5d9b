#include "archive/LastPlayed.h"

#include "archive/ui/ArchiveDesk.h"

namespace kalvo {

using namespace Qt::StringLiterals;

TEST(LastPlayed, SortsStampsByTheirAge) {
    const LastPlayedCounts counts = CountLastPlayed({{u"2026.11.21, 23:15"_s, 1},
                                                     {u"22.11.2026 00:10:00"_s, 2},
                                                     {u"2026.11.20, 00:00"_s, 4},
                                                     {u"15.11.2026 12:00:00"_s, 8},
                                                     {u"2026.11.14, 12:00"_s, 16},
                                                     {u"2026.10.22, 12:00"_s, 32},
                                                     {u"gestern"_s, 64},
                                                     {QString(), 128}},
                                                    QDate(2026, 11, 21));
    EXPECT_EQ((QList<qint64>{counts.today, counts.week, counts.month, counts.earlier, counts.never, counts.Total()}),
              (QList<qint64>{3, 12, 16, 96, 128, 255}));
    EXPECT_EQ(LastPlayedStamp(QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5))), u"2026.01.02, 03:04"_s);
}

TEST(LastPlayed, TheArchiveCountsAndClearsThem) {
    test::ArchiveDesk desk;
    Archive& archive = desk.archive;
    for (const char* stamp : {"2026.11.21, 23:15", "", "2026.11.21, 23:15", "x"}) {
        TitleRecord title;
        title.Titel = u"T"_s;
        title.Pfad = u"/m/%1.mp3"_s.arg(archive.Count());
        title.Extra2 = QString::fromLatin1(stamp);
        ASSERT_TRUE(archive.AddTitle(title));
    }
    archive.Refresh();
    StampCounts stamps = archive.CountStamps();
    std::sort(stamps.begin(), stamps.end());
    EXPECT_EQ(stamps, (StampCounts{{QString(), 1}, {u"2026.11.21, 23:15"_s, 2}, {u"x"_s, 1}}));
    ASSERT_TRUE(archive.ClearStamps());
    EXPECT_EQ(archive.CountStamps(), (StampCounts{{QString(), 4}}));
    EXPECT_TRUE(archive.SetRecordSource(u"Select * From Daten Where Extra2 Like '*2026*'"_s));
    EXPECT_EQ(archive.RowCount(), 0) << "searches know it too";
}

} // namespace kalvo
