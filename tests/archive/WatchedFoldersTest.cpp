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

TEST_F(WatchedFoldersTest, WhatWasTakenOutOrDeclinedIsNotOfferedAgain) {
    const QString kept = Sound(QStringLiteral("a.mp3"), 440);
    const QString out = Sound(QStringLiteral("b.mp3"), 500);
    const QString declined = Sound(QStringLiteral("c.mp3"), 600);
    const QString fresh = Sound(QStringLiteral("d.mp3"), 700);
    TitleImport(archive).Run({kept, out});
    {
        WatchedFolders watched(archive, settings, store);
        ASSERT_TRUE(watched.Add(music));
        ASSERT_TRUE(Offers(watched, {declined, fresh}));
        watched.Decline({declined});
        EXPECT_TRUE(Offers(watched, {fresh}));
        ASSERT_TRUE(test::WaitUntil([&] { return KnownSounds::Read(store).Count() == 3; }));
        ASSERT_TRUE(archive.DeleteTitles({archive.FindByPath(out)->Nr}));
    }
    WatchedFolders watched(archive, settings, store);
    watched.Look();
    EXPECT_TRUE(Offers(watched, {fresh})) << "after another start too";
    ASSERT_TRUE(archive.DeleteAll());
    EXPECT_TRUE(Offers(watched, {kept, out, declined, fresh})) << "an empty archive is filled anew";
}

TEST_F(WatchedFoldersTest, ADriveThatIsPluggedInLaterIsFound) {
    const QString stick = folder.Path(QStringLiteral("Laufwerke/Stick"));
    settings.PutNumber(QStringLiteral("Beobachten"), QStringLiteral("Anzahl"), 1);
    settings.PutSetting(QStringLiteral("Beobachten"), QStringLiteral("Ordner1"), stick);
    WatchedFolders watched(archive, settings, store);
    int looks = 0;
    QObject::connect(&watched, &WatchedFolders::NewFilesFound, &watched, [&looks] { ++looks; });
    watched.Look();
    const QString file = test::MakeSound(folder.Path(QStringLiteral("anderswo")), QStringLiteral("a.mp3"));
    QDir().mkpath(folder.Path(QStringLiteral("Laufwerke")));
    ASSERT_TRUE(test::WaitUntil([&] {
        QDir().rename(folder.Path(QStringLiteral("anderswo")), stick);
        return watched.NewFiles() == QStringList{stick + QStringLiteral("/a.mp3")};
    }));
    EXPECT_EQ(looks, 1);
}

} // namespace
} // namespace kalvo
