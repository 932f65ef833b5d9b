#include "archive/WatchedFolders.h"

#include "archive/TitleImport.h"
#include "archive/ui/ArchiveDesk.h"
#include "support/SoundMaker.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <QFile>

namespace kalvo::test {
namespace {

class WatchedFoldersTest : public ::testing::Test, protected ArchiveDesk {
protected:
    WatchedFoldersTest() { QDir().mkpath(music); }
    QString Sound(const QString& name, double frequency) { return MakeSound(music, name, {.frequency = frequency}); }
    static bool Offers(const WatchedFolders& watched, const QStringList& files) {
        return WaitUntil([&] { return watched.NewFiles() == files; });
    }

    QString music = folder.Path(u"Musik"_s);
    QString store = folder.Path(u"Klang.dat"_s);
};

TEST_F(WatchedFoldersTest, FoldersAreKeptAndNewFilesOffered) {
    const QString first = Sound(u"a.mp3"_s, 440);
    WatchedFolders watched(archive, settings, store);
    EXPECT_FALSE(watched.Add(u"Musik"_s));
    ASSERT_TRUE(watched.Add(music));
    EXPECT_FALSE(watched.Add(music));
    ASSERT_TRUE(Offers(watched, {first}));
    const QString second = Sound(u"neu/b.mp3"_s, 500);
    EXPECT_TRUE(Offers(watched, {first, second})) << "told by the file system, subfolders included";
    TitleImport(archive).Run({first});
    EXPECT_TRUE(Offers(watched, {second}));
    EXPECT_EQ(WatchedFolders(archive, settings, store).Folders(), QStringList{music});
    watched.Remove(music);
    EXPECT_TRUE(Offers(watched, {}));
}

TEST_F(WatchedFoldersTest, AMovedFileKeepsItsRecord) {
    const QString from = Sound(u"a.mp3"_s, 440);
    const QString other = Sound(u"b.mp3"_s, 600);
    TitleImport(archive).Run({from, other});
    TitleRecord record = *archive.FindByPath(from);
    record.Bewertung = u"sehr gut"_s;
    ASSERT_TRUE(archive.UpdateRecord(record));
    {
        WatchedFolders watched(archive, settings, store);
        ASSERT_TRUE(watched.Add(music));
        ASSERT_TRUE(WaitUntil([&] { return KnownSounds::Read(store).Count() == 2; }));
    }
    const QString to = music + u"/anderswo/neuer Name.mp3"_s;
    QDir().mkpath(music + u"/anderswo"_s);
    ASSERT_TRUE(QFile::rename(from, to));
    const QString copy = music + u"/Kopie.mp3"_s;
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
    const TitleRecord found = archive.FindByPath(to).value_or(TitleRecord());
    EXPECT_EQ(found.Bewertung, u"sehr gut"_s);
    EXPECT_EQ(found.Nr, record.Nr);
}

TEST_F(WatchedFoldersTest, WhatWasTakenOutOrDeclinedIsNotOfferedAgain) {
    const QString kept = Sound(u"a.mp3"_s, 440);
    const QString out = Sound(u"b.mp3"_s, 500);
    const QString declined = Sound(u"c.mp3"_s, 600);
    const QString fresh = Sound(u"d.mp3"_s, 700);
    TitleImport(archive).Run({kept, out});
    {
        WatchedFolders watched(archive, settings, store);
        ASSERT_TRUE(watched.Add(music));
        ASSERT_TRUE(Offers(watched, {declined, fresh}));
        watched.Decline({declined});
        EXPECT_TRUE(Offers(watched, {fresh}));
        ASSERT_TRUE(WaitUntil([&] { return KnownSounds::Read(store).Count() == 3; }));
        ASSERT_TRUE(archive.DeleteTitles({archive.FindByPath(out)->Nr}));
    }
    WatchedFolders watched(archive, settings, store);
    watched.Look();
    EXPECT_TRUE(Offers(watched, {fresh})) << "after another start too";
    ASSERT_TRUE(archive.DeleteAll());
    EXPECT_TRUE(Offers(watched, {kept, out, declined, fresh})) << "an empty archive is filled anew";
}

TEST_F(WatchedFoldersTest, ADriveThatIsPluggedInLaterIsFound) {
    const QString stick = folder.Path(u"Laufwerke/Stick"_s);
    settings.PutNumber(u"Beobachten"_s, u"Anzahl"_s, 1);
    settings.PutSetting(u"Beobachten"_s, u"Ordner1"_s, stick);
    WatchedFolders watched(archive, settings, store);
    int looks = 0;
    QObject::connect(&watched, &WatchedFolders::NewFilesFound, &watched, [&looks] { ++looks; });
    watched.Look();
    const QString file = MakeSound(folder.Path(u"anderswo"_s), u"a.mp3"_s);
    QDir().mkpath(folder.Path(u"Laufwerke"_s));
    ASSERT_TRUE(WaitUntil([&] {
        QDir().rename(folder.Path(u"anderswo"_s), stick);
        return watched.NewFiles() == QStringList{stick + u"/a.mp3"_s};
    }));
    EXPECT_EQ(looks, 1);
}

} // namespace
} // namespace kalvo::test
