#include "archive/ArchiveSession.h"
#include "archive/Trash.h"
#include "archive/ui/ArchiveDesk.h"
#include "support/WaitUntil.h"

#include <QFile>

namespace kalvo::test {
namespace {

class ArchiveDeleteTest : public ::testing::Test, protected ArchiveDesk {
protected:
    ArchiveDeleteTest() {
        Add(10);
        archive.Refresh();
    }

    void Add(int count) {
        const Archive::Session session(archive);
        for (int i = 0; i < count; ++i) {
            TitleRecord record;
            record.Titel = u"t%1"_s.arg(archive.Count(), 6, 10, QChar(u'0'));
            record.Pfad = archive.Count() == 0 ? folder.Path(u"song.mp3"_s) : u"/m/%1.mp3"_s.arg(record.Titel);
            record.Extra2 = u"07.03.2026"_s;
            ASSERT_TRUE(archive.AddTitle(record));
        }
    }

    /** Numbers shown after a refresh; each row is read, page by page. */
    std::vector<qint64> Shown() {
        archive.Refresh();
        std::vector<qint64> numbers;
        for (int row = 0; row < archive.RowCount(); ++row) {
            EXPECT_EQ(archive.RowAt(row).Nr, archive.IdAt(row)) << row;
            EXPECT_EQ(archive.RowOf(archive.IdAt(row)), row);
            numbers.push_back(archive.IdAt(row));
        }
        EXPECT_EQ(archive.IdAt(archive.RowCount()), 0);
        return numbers;
    }

    qint64 RowsInFile() {
        ArchiveDatabase other(clock);
        QString message;
        return other.Open(archive.Path(), message) ? other.Count() : -1;
    }
};

TEST_F(ArchiveDeleteTest, DeletionsComeBackOneByOneTheLatestFirst) {
    const std::vector<qint64> all = Shown();
    const TitleRecord before = archive.RowAt(2);
    EXPECT_TRUE(archive.DeleteTitles({}) && archive.DeleteTitles({4711})) << "nothing, and nothing to undo";
    ASSERT_TRUE(archive.DeleteTitles({all[2], all[3], all[9]}) && archive.DeleteTitles({all[0]}));
    EXPECT_EQ(archive.Count(), 6);
    EXPECT_EQ(Shown(), (std::vector<qint64>{all[1], all[4], all[5], all[6], all[7], all[8]}));
    EXPECT_FALSE(archive.HoldsPath(before.Pfad));
    ASSERT_TRUE(archive.Undo() && archive.Undo());
    EXPECT_EQ(Shown(), all);
    EXPECT_EQ(archive.RowAt(2).Extra2, before.Extra2);
    EXPECT_TRUE(archive.HoldsPath(before.Pfad));
    EXPECT_FALSE(archive.Undo());
    ASSERT_TRUE(archive.Redo());
    EXPECT_EQ(archive.Count(), 7) << "the one taken back last";
    ASSERT_TRUE(archive.Redo());
    EXPECT_EQ(archive.Count(), 6);
    EXPECT_FALSE(archive.Redo());
    ASSERT_TRUE(archive.Undo());
    ASSERT_TRUE(archive.DeleteTitles({all[5]}));
    EXPECT_FALSE(archive.Redo()) << "something else was deleted since";
}

TEST_F(ArchiveDeleteTest, DeletingEverythingComesBackBesideWhatWasAddedSince) {
    const std::vector<qint64> all = Shown();
    qint64 deleted = 0;
    QObject::connect(&archive, &Archive::Deleted, [&](qint64 titles) { deleted = titles; });
    ASSERT_TRUE(archive.DeleteAll() && archive.DeleteAll());
    EXPECT_EQ(Shown().size(), 0U);
    EXPECT_EQ(RowsInFile(), 0);
    Add(2);
    ASSERT_TRUE(archive.Undo());
    EXPECT_EQ(deleted, 10);
    EXPECT_EQ(Shown().size(), 12U);
    EXPECT_EQ(RowsInFile(), 12);
    for (const qint64 nr : all)
        EXPECT_GE(archive.RowOf(nr), 0) << nr;
}

TEST_F(ArchiveDeleteTest, ManyTitlesComeBackThroughANewIndex) {
    Add(12000);
    const std::vector<qint64> all = Shown();
    ASSERT_TRUE(archive.DeleteTitles({all.begin() + 5, all.end()}));
    EXPECT_EQ(Shown().size(), 5U);
    ASSERT_TRUE(archive.Undo());
    EXPECT_EQ(archive.Count(), 12010);
    ASSERT_TRUE(archive.WaitForIndex());
    EXPECT_EQ(Shown(), all);
}

TEST_F(ArchiveDeleteTest, ADeletionDuringAnImportKeepsWhatWasImported) {
    const std::vector<qint64> all = Shown();
    {
        const Archive::Session session(archive);
        TitleRecord record;
        record.Titel = u"tneu"_s;
        ASSERT_TRUE(archive.AddTitle(record));
        ASSERT_TRUE(archive.DeleteTitles({all[0], record.Nr}));
        ASSERT_TRUE(archive.Undo());
    }
    EXPECT_EQ(Shown().size(), 11U);
    EXPECT_EQ(RowsInFile(), 11);
}

TEST_F(ArchiveDeleteTest, ALockedArchiveLosesNothing) {
    const std::vector<qint64> all = Shown();
    SqliteDatabase other;
    ASSERT_EQ(other.Open(archive.Path(), SqliteDatabase::Mode::ReadWrite), SqliteDatabase::Outcome::Opened);
    {
        const SqliteDatabase::Transaction writing(other);
        ASSERT_TRUE(writing.IsOpen());
        EXPECT_EQ(archive.DeleteTitles({all[0]}).reason, u"Das Musikarchiv wird von einem anderen Programm benutzt."_s);
    }
    EXPECT_FALSE(archive.Undo());
    EXPECT_EQ(Shown(), all);
    EXPECT_TRUE(archive.DeleteTitles({all[0]}));
}

TEST_F(ArchiveDeleteTest, AFileOfADeletedTitleComesBackFromTheBin) {
    qputenv("XDG_DATA_HOME", folder.Path(u"share"_s).toUtf8());
    const QString path = folder.Write(u"song.mp3"_s, "sound");
    const auto item = Trash::Move(path);
    if (!item)
        GTEST_SKIP() << "there is no bin here";
    EXPECT_FALSE(QFile::exists(path));
    const qint64 nr = Shown().front();
    ASSERT_TRUE(archive.DeleteTitles({nr}, {*item}));
    EXPECT_EQ(archive.Undo().reason, QString());
    EXPECT_EQ(folder.Read(u"song.mp3"_s), "sound");
    EXPECT_FALSE(Trash::Restore(*item));
    EXPECT_FALSE(archive.Redo()) << "its file takes its time";
    ASSERT_TRUE(WaitUntil([this] { return !archive.Bin().IsRunning(); }));
    EXPECT_EQ(archive.Count(), 9);
    EXPECT_FALSE(QFile::exists(path));
    ASSERT_TRUE(archive.Undo());
    EXPECT_TRUE(QFile::exists(path));
    EXPECT_FALSE(Trash::Move(path + u".missing"_s));
}

TEST_F(ArchiveDeleteTest, AMoveToTheBinThatIsCutShortLeavesEachTitleWithItsFile) {
    qputenv("XDG_DATA_HOME", folder.Path(u"share"_s).toUtf8());
    const std::vector<qint64> all = Shown();
    QStringList paths;
    for (const qint64 number : all) {
        TitleRecord title = archive.RowAt(archive.RowOf(number));
        title.Pfad = folder.Write(title.Titel, "sound");
        ASSERT_TRUE(archive.UpdateRecord(title));
        paths.append(title.Pfad);
    }
    bool isMoving = false;
    QObject::connect(&archive.Bin(), &BinMove::Progress, [&] { isMoving = true; });
    ASSERT_TRUE(archive.Bin().Start({all.begin(), all.end()}));
    EXPECT_FALSE(archive.Bin().Start({all.front()})) << "one after the other";
    ASSERT_TRUE(WaitUntil([&] { return isMoving; }));
    archive.Bin().Finish();
    for (const QString& path : std::as_const(paths))
        EXPECT_EQ(archive.HoldsPath(path), QFile::exists(path)) << path.toStdString();
    while (archive.Undo())
        ;
    EXPECT_EQ(Shown(), all);
    EXPECT_TRUE(std::all_of(paths.cbegin(), paths.cend(), [](const QString& path) { return QFile::exists(path); }));
}

} // namespace
} // namespace kalvo::test
