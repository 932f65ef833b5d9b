#include "archive/WatchedFolders.h"

#include "archive/TitleImport.h"
#include "base/Settings.h"
#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

struct WatchedFoldersTest : ::testing::Test {
    WatchedFoldersTest() {
        EXPECT_TRUE(data.CreateAll());
        EXPECT_TRUE(archive.Open(data));
        EXPECT_TRUE(archive.WaitForIndex());
        QDir().mkpath(music);
    }
    QString Sound(const QString& name, double frequency) {
        test::SoundSpec spec;
        spec.frequency = frequency;
        return test::MakeSound(music, name, spec);
    }
    bool Offers(const WatchedFolders& watched, const QStringList& files) {
        return test::WaitUntil([&] { return watched.NewFiles() == files; });
    }

    test::TestFolder folder;
    DataFolder data{folder.Path(QStringLiteral("Kalvo"))};
    Settings settings{folder.Path(QStringLiteral("kalvo.ini"))};
    QString music = folder.Path(QStringLiteral("Musik"));
    QString store = folder.Path(QStringLiteral("Klang.dat"));
    SystemClock clock;
    Archive archive{clock};
};

TEST_F(WatchedFoldersTest, FoldersAreKeptAndNewFilesOffered) {
    const QString first = Sound(QStringLiteral("a.mp3"), 440);
    WatchedFolders watched(archive, settings, store);
    EXPECT_FALSE(watched.Add(QStringLiteral("Musik")));
    ASSERT_TRUE(watched.Add(music));
    EXPECT_FALSE(watched.Add(music));
    ASSERT_TRUE(Offers(watched, {first}));
    const QString second = Sound(QStringLiteral("neu/b.mp3"), 500);
    EXPECT_TRUE(Offers(watched, {first, second})) << "told by the file system, subfolders included";
    TitleImport(archive).Run({first});
    EXPECT_TRUE(Offers(watched, {second}));
    EXPECT_EQ(WatchedFolders(archive, settings, store).Folders(), QStringList{music});
    watched.Remove(music);
    EXPECT_TRUE(Offers(watched, {}));
}

TEST_F(WatchedFoldersTest, AMovedFileKeepsItsRecord) {
    const QString from = Sound(QStringLiteral("a.mp3"), 440);
    const QString other = Sound(QStringLiteral("b.mp3"), 600);
    TitleImport(archive).Run({from, other});
    TitleRecord record = *archive.FindByPath(from);
    record.Bewertung = QStringLiteral("sehr gut");
    ASSERT_TRUE(archive.UpdateRecord(record));
    {
        WatchedFolders watched(archive, settings, store);
        ASSERT_TRUE(watched.Add(music));
        ASSERT_TRUE(test::WaitUntil([&] { return KnownSounds::Read(store).Count() == 2; }));
    }
    const QString to = music + QStringLiteral("/anderswo/neuer Name.mp3");
    QDir().mkpath(music + QStringLiteral("/anderswo"));
    ASSERT_TRUE(QFile::rename(from, to));
    const QString copy = music + QStringLiteral("/Kopie.mp3");
    ASSERT_TRUE(QFile::copy(other, copy));
    WatchedFolders watched(archive, settings, store);
    QStringList moved;
    QObject::connect(&watched, &WatchedFolders::TitleMoved, &watched, [&](const QString& old, const QString& now) {
        moved += {old, now};
    });
    watched.Look();
    ASSERT_TRUE(Offers(watched, {copy})) << "a copy is a new file";
    EXPECT_EQ(moved, (QStringList{from, to}));
    EXPECT_FALSE(archive.FindByPath(from).has_value());
    ASSERT_TRUE(archive.FindByPath(to).has_value());
    EXPECT_EQ(archive.FindByPath(to)->Bewertung, QStringLiteral("sehr gut"));
    EXPECT_EQ(archive.FindByPath(to)->Nr, record.Nr);
}

} // namespace
} // namespace kalvo
