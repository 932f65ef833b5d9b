#include "playlists/PlaylistFile.h"

#include "archive/SqliteDatabase.h"
#include "playlists/PlaylistKeeper.h"
#include "playlists/PlaylistSupport.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace kalvo {

using Outcome = PlaylistFile::Outcome;
using test::EntriesOf;

class PlaylistFileTest : public ::testing::Test {
protected:
    std::string Stored() const { return test::Stored(path); }
    QStringList Files() const { return QDir(folder.Path()).entryList(QDir::Files); }

    test::TestFolder folder;
    SystemClock clock;
    QString path = folder.Path(QStringLiteral("default.mav"));
    PlaylistFile file{path, clock};
};

TEST_F(PlaylistFileTest, EntriesComeBackWhole) {
    const PlaylistEntry odd{QStringLiteral("It's \"ü\" 😀\n"), QString(600, u'x'),     QStringLiteral("100:00"),
                            QStringLiteral("4711"),           QStringLiteral("12.4"), QStringLiteral("/m/%';--.mp3")};
    ASSERT_EQ(file.Save({QList{odd}, EntriesOf("ab")}).outcome, Outcome::Done);
    PlaylistFile::Lists lists;
    ASSERT_EQ(file.Load(lists).outcome, Outcome::Done);
    EXPECT_EQ(lists[0], QList{odd});
    EXPECT_EQ(Files(), QStringList(QStringLiteral("default.mav"))) << "readable from a read-only medium too";
}

TEST_F(PlaylistFileTest, ReplacesOrAppends) {
    ASSERT_EQ(file.Save({EntriesOf("ab"), EntriesOf("x")}).outcome, Outcome::Done);
    ASSERT_EQ(file.Save({EntriesOf("c"), {}}, PlaylistFile::Content::Append).outcome, Outcome::Done);
    EXPECT_EQ(Stored(), "abc|x");
    ASSERT_EQ(file.Save({QList<PlaylistEntry>(), EntriesOf("y")}).outcome, Outcome::Done);
    EXPECT_EQ(Stored(), "|y");
}

TEST_F(PlaylistFileTest, HasTheGivenTables) {
    ASSERT_EQ(file.CreatePlaylistDatabase().outcome, Outcome::Done);
    ASSERT_EQ(file.CreatePlaylistDatabase().outcome, Outcome::Done) << "again is no failure";
    SqliteDatabase database;
    ASSERT_EQ(database.Open(path, SqliteDatabase::Mode::ReadOnly), SqliteDatabase::Outcome::Opened);
    for (const char* table : {"Player1", "Player2"}) {
        SqliteStatement fields =
            database.Prepare(QStringLiteral("SELECT name FROM pragma_table_info('%1')").arg(QLatin1String(table)));
        QStringList names;
        while (fields.Step())
            names.append(fields.Text(0));
        EXPECT_EQ(names.join(u' '), QStringLiteral("Nr Titel Interpret Album Bewertung Stil Zeit Jahr Pfad Extra1 "
                                                   "Extra2 Extra3 Extra4"));
    }
}

TEST_F(PlaylistFileTest, SetsWhatIsNoDatabaseAside) {
    folder.Write(QStringLiteral("default.mav"), QByteArray(5000, 'x'));
    folder.Write(QStringLiteral("default.mav-wal"), "w");
    EXPECT_NE(Stored(), "|");
    EXPECT_EQ(Files().size(), 2) << "reading moves nothing";
    const PlaylistFile::Result saved = file.Save({EntriesOf("a"), {}});
    EXPECT_EQ(saved.outcome, Outcome::SetAside);
    EXPECT_EQ(Stored(), "a|");
    ASSERT_EQ(Files().size(), 3) << Files().join(u' ').toStdString();
    EXPECT_TRUE(saved.message.contains(Files().at(1))) << saved.message.toStdString();
    EXPECT_EQ(folder.Read(Files().at(1)), QByteArray(5000, 'x'));
}

TEST_F(PlaylistFileTest, SavesOverADatabaseThatIsBrokenInside) {
    ASSERT_EQ(file.Save({EntriesOf(QByteArray(20000, 'a')), EntriesOf("b")}).outcome, Outcome::Done);
    QByteArray bytes = folder.Read(QStringLiteral("default.mav"));
    bytes.replace(8192, bytes.size() - 16384, QByteArray(bytes.size() - 16384, '\x7F'));
    folder.Write(QStringLiteral("default.mav"), bytes);
    EXPECT_EQ(file.Save({EntriesOf("a"), {}}).outcome, Outcome::SetAside);
    EXPECT_EQ(Stored(), "a|");
    EXPECT_EQ(Files().size(), 2);
}

TEST_F(PlaylistFileTest, FailuresAreToldAndChangeNothing) {
    EXPECT_EQ(PlaylistFile(folder.Path(), clock).Save({EntriesOf("a"), {}}).outcome, Outcome::Failed);
    EXPECT_EQ(PlaylistFile(folder.Path(QStringLiteral("fehlt/x")), clock).CreatePlaylistDatabase().outcome,
              Outcome::Failed);
    ASSERT_EQ(file.Save({EntriesOf("ab"), {}}).outcome, Outcome::Done);
    SqliteDatabase database;
    ASSERT_EQ(database.Open(path, SqliteDatabase::Mode::ReadWrite), SqliteDatabase::Outcome::Opened);
    ASSERT_TRUE(database.Execute(
        QStringLiteral("CREATE TRIGGER Voll BEFORE INSERT ON Player2 BEGIN SELECT RAISE(FAIL, 'disk is full'); END")));
    database.Close();
    const PlaylistFile::Result result = file.Save({EntriesOf("c"), EntriesOf("d")});
    EXPECT_EQ(result.outcome, Outcome::Failed);
    EXPECT_FALSE(result.message.isEmpty());
    EXPECT_EQ(Stored(), "ab|") << "one transaction for both lists";
    PlaylistFile::Lists none;
    const PlaylistFile empty(folder.Write(QStringLiteral("leer/leer.wil"), {}), clock);
    EXPECT_TRUE(empty.Load(none).message.endsWith(u": die Datei hat einen anderen Aufbau")) << "in German";
    EXPECT_EQ(Files().size(), 1);
}

class PlaylistKeeperTest : public PlaylistFileTest {
protected:
    void Watch(PlaylistKeeper& keeper) {
        QObject::connect(&keeper, &PlaylistKeeper::Told, [this](const QString& text) { told.append(text); });
        keeper.Restore();
    }
    test::ChosenRandom random;
    Playlist first{1, random}, second{2, random};
    QStringList told;
};

TEST_F(PlaylistKeeperTest, SavesByItselfAfterAChange) {
    PlaylistKeeper keeper(first, second, path, clock);
    Watch(keeper);
    EXPECT_TRUE(QFile::exists(path));
    first.Append(EntriesOf("ab"));
    EXPECT_EQ(Stored(), "|") << "not at once";
    EXPECT_TRUE(test::WaitUntil([this] { return Stored() == "ab|"; }));
    second.Append(EntriesOf("c"));
    EXPECT_TRUE(keeper.SaveNow());
    EXPECT_EQ(Stored(), "ab|c");
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_TRUE(keeper.SaveNow());
    EXPECT_EQ(Stored(), "ab|c") << "deleted under the program";
    Playlist restored(1, random), other(2, random);
    PlaylistKeeper again(restored, other, path, clock);
    again.Restore();
    EXPECT_EQ(test::Shown(restored) + test::Shown(other), "abc");
    EXPECT_TRUE(told.isEmpty());
}

TEST_F(PlaylistKeeperTest, NeverWritesOverWhatItCouldNotRead) {
    SqliteDatabase other;
    ASSERT_EQ(other.Open(path, SqliteDatabase::Mode::Create), SqliteDatabase::Outcome::Opened);
    ASSERT_TRUE(other.Execute(QStringLiteral("CREATE TABLE Player1 (Fremd TEXT); INSERT INTO Player1 VALUES ('x')")));
    other.Close();
    PlaylistKeeper keeper(first, second, path, clock);
    Watch(keeper);
    EXPECT_EQ(told.size(), 1);
    first.Append(EntriesOf("a"));
    EXPECT_TRUE(keeper.SaveNow());
    EXPECT_EQ(Stored(), "a|");
    EXPECT_EQ(told.size(), 2);
    EXPECT_EQ(Files().size(), 2) << "the foreign file is still there";
}

TEST_F(PlaylistKeeperTest, TellsAFailureOnceAndKeepsTheLists) {
    path = folder.Path(QStringLiteral("fehlt/default.mav"));
    folder.Write(QStringLiteral("fehlt"), "stands in the way of the folder");
    PlaylistKeeper keeper(first, second, path, clock);
    Watch(keeper);
    first.Append(EntriesOf("a"));
    EXPECT_FALSE(keeper.SaveNow());
    EXPECT_FALSE(keeper.SaveNow());
    EXPECT_FALSE(told.isEmpty());
    ASSERT_TRUE(QFile::remove(folder.Path(QStringLiteral("fehlt"))));
    EXPECT_TRUE(keeper.SaveNow()) << "the folder is made anew";
    EXPECT_EQ(Stored(), "a|");
}

} // namespace kalvo
