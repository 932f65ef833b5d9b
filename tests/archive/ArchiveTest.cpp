#include "archive/Archive.h"

#include "archive/ArchiveStatements.h"
#include "archive/ui/ArchiveDesk.h"
#include "support/WaitUntil.h"

#include <QFile>

namespace kalvo::test {
namespace {

class ArchiveTest : public ::testing::Test, protected ArchiveDesk {
protected:
    void Reopen(const DataFolder& from) {
        ASSERT_TRUE(archive.Open(from));
        ASSERT_TRUE(archive.WaitForIndex());
    }

    QString Shown() const {
        QStringList titles;
        for (int row = 0; row < archive.RowCount(); ++row)
            titles << archive.RowAt(row).Titel;
        return titles.join(u' ');
    }

    static void WriteLayout(const DataFolder& into, const QString& archivePath) {
        LayoutFile layout;
        layout.archivePath = archivePath;
        layout.playlistPath = u"/elsewhere.mav"_s;
        ASSERT_TRUE(layout.Write(into.Path(u"\\mp3tabelle.dll"_s)));
    }

    QString layoutPath = data.Path(u"\\mp3tabelle.dll"_s);
    QString defaultPath = data.Path(u"\\Musikarchiv\\default.mav"_s);
};

TEST_F(ArchiveTest, FirstStartCreatesEverythingWhateverIsConfigured) {
    QStringList messages;
    QObject::connect(&archive, &Archive::Message, [&](const QString& text) { messages << text; });
    for (const QString& name : {u"Neu"_s, u"Konfiguriert"_s}) {
        const DataFolder fresh(folder.Path(name));
        ASSERT_TRUE(fresh.CreateAll());
        if (name == u"Konfiguriert"_s)
            WriteLayout(fresh, folder.Path(u"other/mine.mav"_s));
        Reopen(fresh);
        EXPECT_EQ(archive.Path(), fresh.Path(u"\\Musikarchiv\\default.mav"_s));
        EXPECT_TRUE(QFile::exists(fresh.Path(u"\\mp3tabelle.dll"_s)));
        EXPECT_EQ(archive.Count() + archive.RowCount() + archive.RowAt(0).Nr, 0);
        EXPECT_EQ(messages, QStringList());
    }
}

TEST_F(ArchiveTest, AConfiguredArchiveCountsBesideADefaultOne) {
    const QString elsewhere = folder.Path(u"größe \"x\", 1/mine.mav"_s);
    WriteLayout(data, elsewhere);
    Reopen(data);
    EXPECT_EQ(archive.Path(), elsewhere);
    EXPECT_EQ(archive.Layout().playlistPath, data.Path(u"\\Wiedergabeliste\\default.mav"_s));

    for (const QString& before :
         {folder.Path(u"gone/Kalvo/Musikarchiv/default.mav"_s), u"C:\\DJ\\Kalvo\\Musikarchiv\\default.mav"_s}) {
        WriteLayout(data, before);
        Reopen(data);
        EXPECT_EQ(archive.Path(), defaultPath) << "the data folder was moved here from " << before.toStdString();
        EXPECT_EQ(LayoutFile::Read(layoutPath).archivePath, defaultPath);
    }
}

TEST_F(ArchiveTest, LayoutFileKeepsItsTwelveValues) {
    LayoutFile layout;
    layout.columnWidths = {1500, 900, 0, 1, 2, 3, 4, 7};
    layout.rowHeight = 14.25;
    layout.archivePath = u"/musik/größe \"x\".mav"_s;
    layout.playlistPath = u"/p.mav"_s;
    ASSERT_TRUE(layout.Write(layoutPath));
    EXPECT_TRUE(folder.Read(u"Kalvo/mp3tabelle.dll"_s).startsWith("4,1500,900,0,1,2,3,4,7,"));
    const LayoutFile read = LayoutFile::Read(layoutPath);
    EXPECT_EQ(read.columnWidths, layout.columnWidths);
    EXPECT_EQ(read.rowHeight, layout.rowHeight);
    EXPECT_EQ(read.archivePath, layout.archivePath);
    EXPECT_EQ(read.playlistPath, layout.playlistPath);
    EXPECT_EQ(LayoutFile::Read(data.Path(u"\\missing.dll"_s)).archivePath, QString());
}

TEST_F(ArchiveTest, TakesSourcesAndTitlesWhileTheIndexLoads) {
    Add(u"b"_s, u"alt"_s);
    ASSERT_TRUE(archive.Open(data));
    ASSERT_TRUE(archive.SetRecordSource(ArchiveStatements::Sorted(ArchiveField::Titel, true)));
    Add(u"a"_s, u"neu"_s);
    EXPECT_EQ(archive.RowCount(), 0);
    EXPECT_EQ(archive.Count(), 2);
    bool ready = false;
    QObject::connect(&archive, &Archive::IndexReady, [&] { ready = true; });
    ASSERT_TRUE(WaitUntil([&] { return ready; }));
    EXPECT_EQ(Shown(), u"neu alt"_s);
    EXPECT_EQ(archive.Count(), 2);
}

TEST_F(ArchiveTest, ShowsWhatAnotherProgramWritesWhenItPauses) {
    Add(u"a"_s, u"eins"_s);
    Archive other(clock);
    ASSERT_TRUE(other.Open(data) && other.WaitForIndex());
    other.Refresh();
    ASSERT_TRUE(other.DeleteTitles({other.IdAt(0)}));
    TitleRecord added;
    added.Titel = u"zwei"_s;
    ASSERT_TRUE(other.AddTitle(added));

    archive.Refresh();
    archive.FollowOthers();
    EXPECT_TRUE(archive.IsIndexReady());
    EXPECT_EQ(archive.RowCount(), 1) << "it may still be writing";
    archive.FollowOthers();
    Add(u"c"_s, u"drei"_s); // while the new index loads
    ASSERT_TRUE(WaitUntil([&] { return archive.RowCount() == 2; }));
    EXPECT_EQ(Shown(), u"zwei drei"_s);
    EXPECT_EQ(archive.Count(), 2);

    ASSERT_TRUE(other.DeleteTitles({added.Nr}));
    archive.FollowOthers();
    archive.FollowOthers();
    ASSERT_TRUE(archive.DeleteTitles({archive.IdAt(1)})); // the load begins anew
    ASSERT_TRUE(WaitUntil([&] { return archive.RowCount() == 0; }));
    ASSERT_TRUE(archive.Undo());
    archive.Refresh();
    EXPECT_EQ(Shown(), u"drei"_s);
}

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

TEST_F(ArchiveTest, CountsAndClearsTheStampsOfTheLastPlays) {
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

} // namespace
TEST(ForeignWritesTest, AreReadWhenTheyPauseOrAtLastAfterManyLooks) {
    ForeignWrites writes;
    writes.Read(1);
    EXPECT_FALSE(writes.AreDue(1));
    EXPECT_FALSE(writes.AreDue(2));
    EXPECT_TRUE(writes.AreDue(2));
    writes.Read(2);
    EXPECT_FALSE(writes.AreDue(2));
    int looks = 1;
    while (!writes.AreDue(2 + looks) && looks < 100)
        ++looks;
    EXPECT_EQ(looks, ForeignWrites::kPatience);
}

} // namespace kalvo::test
