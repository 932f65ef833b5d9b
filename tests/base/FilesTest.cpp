#include "base/AtomicFile.h"
#include "base/DataFolder.h"
#include "base/FileName.h"
#include "base/SetAside.h"

#include "support/TestFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

namespace kalvo {

namespace {

class FixedClock final : public Clock {
public:
    QDateTime Now() const override { return QDateTime(QDate(2026, 3, 7), QTime(4, 5, 6)); }
    qint64 Milliseconds() const override { return 0; }
};

} // namespace

TEST(AtomicFile, ReplacesWholeAndLeavesNothingBeside) {
    const test::TestFolder folder;
    const QString path = folder.Write(QStringLiteral("a"), "old and longer");
    ASSERT_TRUE(QFile::link(path, folder.Path(QStringLiteral("link"))));
    EXPECT_TRUE(WriteAtomically(folder.Path(QStringLiteral("link")), "new"));
    EXPECT_EQ(folder.Read(QStringLiteral("a")), QByteArray("new"));
    EXPECT_TRUE(QFileInfo(folder.Path(QStringLiteral("link"))).isSymLink());
    EXPECT_FALSE(WriteAtomically(folder.Path(QStringLiteral("fehlt/a")), "x"));
    EXPECT_FALSE(WriteAtomically(folder.Path(), "x")) << "a folder";
    EXPECT_EQ(QDir(folder.Path()).entryList(QDir::Files).size(), 2);
}

TEST(DataFolder, JoinsGivenNames) {
    const DataFolder data(QStringLiteral("/d/Kalvo"));
    EXPECT_EQ(data.Path(QStringLiteral("\\Musikarchiv\\default.mav")),
              QStringLiteral("/d/Kalvo/Musikarchiv/default.mav"));
    EXPECT_EQ(data.Path(QStringLiteral("\\sample\\x.wav")), QStringLiteral("/d/Kalvo/Sample/x.wav"));
    EXPECT_EQ(data.Path(QStringLiteral("\\Sample\\")), QStringLiteral("/d/Kalvo/Sample/"));
    EXPECT_EQ(data.Path(QStringLiteral("\\sample.dll")), QStringLiteral("/d/Kalvo/sample.dll"));
    EXPECT_EQ(data.Path(QStringLiteral("kalvo.ini")), QStringLiteral("/d/Kalvo/kalvo.ini"));
    EXPECT_EQ(data.Path({}), QStringLiteral("/d/Kalvo"));
}

TEST(DataFolder, CreatesItsFoldersAgainAndAgain) {
    const test::TestFolder folder;
    const DataFolder data(folder.Path(QStringLiteral("neu/Kalvo")));
    EXPECT_TRUE(data.CreateAll());
    EXPECT_TRUE(data.CreateAll());
    EXPECT_EQ(QDir(data.Root()).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), 7);
    folder.Write(QStringLiteral("file"), "x");
    EXPECT_FALSE(DataFolder(folder.Path(QStringLiteral("file"))).CreateAll());
}

TEST(FileName, SplitsAtEitherSeparator) {
    EXPECT_EQ(FileName::Last(QStringLiteral("D:\\x/y\\a.mp3")), QStringLiteral("a.mp3"));
    EXPECT_EQ(FileName::Folder(QStringLiteral("D:\\x/y\\a.mp3")), QStringLiteral("D:\\x/y\\"));
    EXPECT_EQ(FileName::Last(QStringLiteral("a")), QStringLiteral("a"));
    EXPECT_TRUE(FileName::Folder(QStringLiteral("a")).isEmpty());
    EXPECT_TRUE(FileName::IsMusic(QStringLiteral("/x/A.Mp3")));
    EXPECT_FALSE(FileName::IsMusic(QStringLiteral("/x/a.mp3.txt")));
    EXPECT_EQ(FileName::WithoutMusicExtension(QStringLiteral("a.b.OGG")), QStringLiteral("a.b"));
    EXPECT_EQ(FileName::WithoutMusicExtension(QStringLiteral("a.wav")), QStringLiteral("a.wav"));
}

TEST(SetAside, KeepsEveryDamagedFile) {
    const test::TestFolder folder;
    const FixedClock clock;
    const QStringList companions = {QStringLiteral("-wal"), QStringLiteral("-shm")};
    const QString path = folder.Write(QStringLiteral("default.mav"), "1");
    folder.Write(QStringLiteral("default.mav-wal"), "w");
    EXPECT_EQ(SetAside(path, clock, companions), path + QStringLiteral(".defekt-20260307-040506"));
    EXPECT_EQ(folder.Read(QStringLiteral("default.mav.defekt-20260307-040506-wal")), QByteArray("w"));
    EXPECT_FALSE(QFile::exists(path) || QFile::exists(path + QStringLiteral("-wal")));
    folder.Write(QStringLiteral("default.mav"), "2");
    EXPECT_EQ(SetAside(path, clock, companions), path + QStringLiteral(".defekt-20260307-040506-2"));
    EXPECT_EQ(folder.Read(QStringLiteral("default.mav.defekt-20260307-040506")), QByteArray("1"));
    EXPECT_TRUE(SetAside(path, clock, companions).isEmpty()) << "nothing there any more";
}

} // namespace kalvo
