#include "archive/LastPlayed.h"

#include "archive/ui/ArchiveDesk.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace kalvo {

TEST(LastPlayed, SortsStampsByTheirAge) {
    const LastPlayedCounts counts = CountLastPlayed({{QStringLiteral("2026.11.21, 23:15"), 1},
                                                     {QStringLiteral("22.11.2026 00:10:00"), 2},
                                                     {QStringLiteral("2026.11.20, 00:00"), 4},
                                                     {QStringLiteral("15.11.2026 12:00:00"), 8},
                                                     {QStringLiteral("2026.11.14, 12:00"), 16},
                                                     {QStringLiteral("2026.10.22, 12:00"), 32},
                                                     {QStringLiteral("gestern"), 64},
                                                     {QString(), 128}},
                                                    QDate(2026, 11, 21));
    EXPECT_EQ(counts.today, 3);
    EXPECT_EQ(counts.week, 12);
    EXPECT_EQ(counts.month, 16);
    EXPECT_EQ(counts.earlier, 96);
    EXPECT_EQ(counts.never, 128);
    EXPECT_EQ(counts.Total(), 255);
    EXPECT_EQ(LastPlayedStamp(QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5))), QStringLiteral("2026.01.02, 03:04"));
}

TEST(LastPlayed, TheArchiveCountsAndClearsThem) {
    test::ArchiveDesk desk;
    Archive& archive = desk.archive;
    for (const char* stamp : {"2026.11.21, 23:15", "", "2026.11.21, 23:15", "x"}) {
        TitleRecord title;
        title.Titel = QStringLiteral("T");
        title.Pfad = QStringLiteral("/m/%1.mp3").arg(archive.Count());
        title.Extra2 = QString::fromLatin1(stamp);
        ASSERT_TRUE(archive.AddTitle(title));
    }
    archive.Refresh();
    StampCounts stamps = archive.CountStamps();
    std::sort(stamps.begin(), stamps.end());
    EXPECT_EQ(stamps,
              (StampCounts{{QString(), 1}, {QStringLiteral("2026.11.21, 23:15"), 2}, {QStringLiteral("x"), 1}}));
    ASSERT_TRUE(archive.ClearStamps());
    EXPECT_EQ(archive.CountStamps(), (StampCounts{{QString(), 4}}));
    EXPECT_TRUE(archive.SetRecordSource(QStringLiteral("Select * From Daten Where Extra2 Like '*2026*'")));
    EXPECT_EQ(archive.RowCount(), 0) << "searches know it too";
}

} // namespace kalvo
