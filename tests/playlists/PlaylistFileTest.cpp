#include "playlists/PlaylistFile.h"

#include "archive/SqliteDatabase.h"
#include "playlists/PlaylistKeeper.h"
#include "playlists/PlaylistSupport.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <gtest/gtest.h>

namespace kalvo::test {

using Outcome = PlaylistFile::Outcome;

struct PlaylistFileTest : ::testing::Test {
    Outcome Save(const PlaylistFile::Lists& lists) { return file.Save(lists).outcome; }
    std::string InFile() const { return Stored(path); }
    QStringList Files() const { return QDir(folder.Path()).entryList(QDir::Files); }
    void Execute(SqliteDatabase::Mode mode, const QString& statements) const {
        SqliteDatabase database;
        ASSERT_EQ(database.Open(path, mode), SqliteDatabase::Outcome::Opened);
        ASSERT_TRUE(database.Execute(statements));
    }

    TestFolder folder;
    SystemClock clock;
    QString path = folder.Path(u"default.mav"_s);
    PlaylistFile file{path, clock};
};

TEST_F(PlaylistFileTest, EntriesComeBackWhole) {
    const PlaylistEntry odd{u"It's \"ü\" 😀\n"_s, QString(600, u'x'), u"100:00"_s,
                            u"4711"_s,           u"12.4"_s,          u"/m/%';--.mp3"_s};
    ASSERT_EQ(Save({QList{odd}, EntriesOf("ab")}), Outcome::Done);
    PlaylistFile::Lists lists;
    ASSERT_EQ(file.Load(lists).outcome, Outcome::Done);
    EXPECT_EQ(lists[0], QList{odd});
    EXPECT_EQ(Files(), QStringList(u"default.mav"_s)) << "readable from a read-only medium too";
}

TEST_F(PlaylistFileTest, HasTheGivenTables) {
    ASSERT_EQ(file.CreatePlaylistDatabase().outcome, Outcome::Done);
    ASSERT_EQ(file.CreatePlaylistDatabase().outcome, Outcome::Done) << "again is no failure";
    SqliteDatabase database;
    ASSERT_EQ(database.Open(path, SqliteDatabase::Mode::ReadOnly), SqliteDatabase::Outcome::Opened);
    for (const auto& table : {u"Player1"_s, u"Player2"_s}) {
        SqliteStatement fields =
            database.Prepare(u"SELECT group_concat(name, ' ') FROM pragma_table_info('%1')"_s.arg(table));
        ASSERT_TRUE(fields.Step());
        EXPECT_EQ(fields.Text(0),
                  u"Nr Titel Interpret Album Bewertung Stil Zeit Jahr Pfad Extra1 Extra2 Extra3 Extra4"_s);
    }
}

TEST_F(PlaylistFileTest, SetsWhatIsNoDatabaseAside) {
    folder.Write(u"default.mav"_s, QByteArray(5000, 'x'));
    folder.Write(u"default.mav-wal"_s, "w");
    EXPECT_NE(InFile(), "|");
    EXPECT_EQ(Files().size(), 2) << "reading moves nothing";
    const PlaylistFile::Result saved = file.Save({EntriesOf("a"), {}});
    EXPECT_EQ(saved.outcome, Outcome::SetAside);
    EXPECT_EQ(InFile(), "a|");
    ASSERT_EQ(Files().size(), 3) << Files().join(u' ').toStdString();
    EXPECT_TRUE(saved.message.contains(Files().at(1))) << saved.message.toStdString();
    EXPECT_EQ(folder.Read(Files().at(1)), QByteArray(5000, 'x'));
}

TEST_F(PlaylistFileTest, SavesOverADatabaseThatIsBrokenInside) {
    ASSERT_EQ(Save({EntriesOf(QByteArray(20000, 'a')), EntriesOf("b")}), Outcome::Done);
    QByteArray bytes = folder.Read(u"default.mav"_s);
    bytes.replace(8192, bytes.size() - 16384, QByteArray(bytes.size() - 16384, '\x7F'));
    folder.Write(u"default.mav"_s, bytes);
    EXPECT_EQ(Save({EntriesOf("a"), {}}), Outcome::SetAside);
    EXPECT_EQ(InFile(), "a|");
    EXPECT_EQ(Files().size(), 2);
}

TEST_F(PlaylistFileTest, FailuresAreToldAndChangeNothing) {
    EXPECT_EQ(PlaylistFile(folder.Path(), clock).Save({EntriesOf("a"), {}}).outcome, Outcome::Failed);
    EXPECT_EQ(PlaylistFile(folder.Path(u"fehlt/x"_s), clock).CreatePlaylistDatabase().outcome, Outcome::Failed);
    ASSERT_EQ(Save({EntriesOf("ab"), {}}), Outcome::Done);
    Execute(SqliteDatabase::Mode::ReadWrite,
            u"CREATE TRIGGER Voll BEFORE INSERT ON Player2 BEGIN SELECT RAISE(FAIL, 'disk is full'); END"_s);
    EXPECT_EQ(Save({EntriesOf("c"), EntriesOf("d")}), Outcome::Failed);
    EXPECT_EQ(InFile(), "ab|") << "one transaction for both lists";
    PlaylistFile::Lists none;
    const PlaylistFile empty(folder.Write(u"leer/leer.wil"_s, {}), clock);
    EXPECT_TRUE(empty.Load(none).message.endsWith(u": die Datei hat einen anderen Aufbau")) << "in German";
    EXPECT_EQ(Files().size(), 1);
}

struct PlaylistKeeperTest : PlaylistFileTest, TwoLists {
    void Start() {
        keeper = std::make_unique<PlaylistKeeper>(first, second, path, clock);
        QObject::connect(keeper.get(), &PlaylistKeeper::Told, [this](const QString& text) { told.append(text); });
        keeper->Restore();
    }

    QStringList told;
    std::unique_ptr<PlaylistKeeper> keeper;
};

TEST_F(PlaylistKeeperTest, SavesByItselfAfterAChange) {
    Start();
    EXPECT_TRUE(QFile::exists(path));
    first.Append(EntriesOf("ab"));
    EXPECT_EQ(InFile(), "|") << "not at once";
    EXPECT_TRUE(WaitUntil([this] { return InFile() == "ab|"; }));
    second.Append(EntriesOf("c"));
    EXPECT_TRUE(keeper->SaveNow());
    EXPECT_EQ(InFile(), "ab|c");
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_TRUE(keeper->SaveNow());
    EXPECT_EQ(InFile(), "ab|c") << "deleted under the program";
    TwoLists restored;
    PlaylistKeeper(restored.first, restored.second, path, clock).Restore();
    EXPECT_EQ(restored.Both(), "ab|c");
    EXPECT_TRUE(told.isEmpty());
}

TEST_F(PlaylistKeeperTest, NeverWritesOverWhatItCouldNotRead) {
    Execute(SqliteDatabase::Mode::Create, u"CREATE TABLE Player1 (Fremd TEXT); INSERT INTO Player1 VALUES ('x')"_s);
    Start();
    EXPECT_EQ(told.size(), 1);
    first.Append(EntriesOf("a"));
    EXPECT_TRUE(keeper->SaveNow());
    EXPECT_EQ(InFile(), "a|");
    EXPECT_EQ(told.size(), 2);
    EXPECT_EQ(Files().size(), 2) << "the foreign file is still there";
}

TEST_F(PlaylistKeeperTest, TellsAFailureOnceAndKeepsTheLists) {
    path = folder.Path(u"fehlt/default.mav"_s);
    folder.Write(u"fehlt"_s, "stands in the way of the folder");
    Start();
    first.Append(EntriesOf("a"));
    EXPECT_FALSE(keeper->SaveNow());
    EXPECT_FALSE(keeper->SaveNow());
    EXPECT_FALSE(told.isEmpty());
    ASSERT_TRUE(QFile::remove(folder.Path(u"fehlt"_s)));
    EXPECT_TRUE(keeper->SaveNow()) << "the folder is made anew";
    EXPECT_EQ(InFile(), "a|");
}

} // namespace kalvo::test
