#include "playlists/PlaylistIntake.h"

#include "base/Settings.h"
#include "playlists/PlaylistFileActions.h"
#include "playlists/PlaylistSupport.h"
#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"

#include <QFile>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace kalvo::test {

struct PlaylistIntakeTest : ::testing::Test, ListDesk {
    PlaylistIntakeTest() { intake.SetPatience(std::chrono::minutes(1)); }
    void AddFiles(const QStringList& paths, int row = -1) {
        intake.AddFiles(1, paths, row, [](const GatheredFiles&) {});
    }
    static void Answer(const QString& path) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        file.write("/m/s.mp3\n");
    }
    std::string FromTags(int row) const { return (first.At(row).artist + first.At(row).duration).toStdString(); }

    TestFolder folder;
    Settings settings{folder.Path(u"kalvo.ini"_s)};
    PlaylistIntake intake{actions, settings};
};

TEST_F(PlaylistIntakeTest, AsksTheDiskForTitles) {
    TitleRecord there, gone;
    there.Titel = u"a"_s;
    there.Pfad = folder.Write(u"a"_s, "x");
    gone.Pfad = folder.Path(u"weg"_s);
    intake.AddTitles(2, {gone, there});
    EXPECT_EQ(Shown(second), "a");
    EXPECT_EQ(questions.said, QStringList{u"Datei:\n%1\nist nicht mehr vorhanden!"_s.arg(gone.Pfad)});
    intake.Distribute({gone, there});
    EXPECT_EQ(Shown(first), "a");
    EXPECT_EQ(questions.said.size(), 1) << "skipped silently";
}

TEST_F(PlaylistIntakeTest, TakesFilesAndFoldersInTheirOrder) {
    for (const auto& name : {u"z/B - b.mp3"_s, u"z/a.OGG"_s, u"z/deep/c.mp3"_s, u"z/cover.jpg"_s, u"d.mp3"_s})
        folder.Write(name, "x");
    first.Append(EntriesOf("x"));
    AddFiles({folder.Path(u"d.mp3"_s), folder.Path(u"z"_s), folder.Path(u"z/cover.jpg"_s)}, 0);
    EXPECT_EQ(Shown(first), "dabcx");
    EXPECT_EQ(FromTags(2), "B0");
    AddFiles({folder.Path(u"z/deep"_s)});
    EXPECT_EQ(Shown(first), "dabcxc") << "without a row at the end";
}

TEST_F(PlaylistIntakeTest, TagsNameTheTitlesWhereThatIsWanted) {
    SoundSpec spec;
    spec.seconds = 2;
    spec.title = u"Titel"_s;
    spec.artist = u"Wer"_s;
    const QString path = MakeSound(folder.Path(), u"A - b.mp3"_s, spec);
    AddFiles({path});
    settings.PutSwitch(u"Mixer"_s, u"ID3WL"_s, true);
    AddFiles({folder.Write(u"l.m3u"_s, "#EXTINF:7,x - y\nA - b.mp3\n")});
    actions.AddFromPlayer(1, u"p"_s, {}, u"09:00"_s, path);
    EXPECT_EQ(Shown(first), "bTitelp") << "what a player shows is taken as it is";
    EXPECT_EQ(FromTags(0), "A00:02");
    EXPECT_EQ(FromTags(1), "Wer00:02");
}

/** A pipe is a playlist that nobody can read to its end before it is written. */
TEST_F(PlaylistIntakeTest, TheDeskGoesOnWhileADiskHangs) {
    intake.SetPatience(std::chrono::milliseconds(1));
    const QString slow = folder.Path(u"haengt.m3u"_s);
    ASSERT_EQ(mkfifo(QFile::encodeName(slow).constData(), 0600), 0);
    first.Append(EntriesOf("abc"));
    int progressed = 0;
    bool finished = false;
    QObject::connect(&intake, &PlaylistIntake::Progress, [&progressed] { ++progressed; });
    QObject::connect(&intake, &PlaylistIntake::Finished, [&finished] { finished = true; });
    AddFiles({slow}, 2);
    EXPECT_EQ(Shown(first), "abc");
    EXPECT_TRUE(WaitUntil([&progressed] { return progressed > 1; }));
    first.Remove({0});
    Answer(slow);
    EXPECT_TRUE(WaitUntil([&finished] { return finished; }));
    EXPECT_EQ(Shown(first), "bsc") << "before the entry that was meant";
    finished = false;
    AddFiles({slow});
    intake.Cancel();
    EXPECT_TRUE(WaitUntil([&finished] { return finished; }));
    Answer(slow);
    EXPECT_EQ(Shown(first), "bsc");
}

struct PlaylistFileActionsTest : PlaylistIntakeTest {
    void Store(const char* one, const char* two) {
        ASSERT_EQ(PlaylistFile(party, clock).Save({EntriesOf(one), EntriesOf(two)}).message, QString());
    }

    SystemClock clock;
    RecentFiles recent{folder.Path(u"zuletzt.dll"_s)};
    PlaylistFileActions files{actions, intake, recent, clock};
    QString party = folder.Path(u"Party.wil"_s);
};

TEST_F(PlaylistFileActionsTest, OpeningAsksOnlyWhenSomethingIsThere) {
    Store("ab", "x");
    files.Open(party);
    EXPECT_TRUE(questions.said.isEmpty());
    EXPECT_EQ(Both(), "ab|x");
    EXPECT_EQ(actions.Undo().Name(), u"Party"_s);
    questions.answers = {u"Ja"_s, u"Nein"_s};
    files.Open(party);
    EXPECT_EQ(Both(), "abab|xx");
    EXPECT_EQ(questions.said.front(),
              u"Anhängen|Die Titel der zu öffnenden Wiedergabeliste:\nParty\nkönnen an die vorhandene "
              "Wiedergabeliste angehängt werden.\nMöchten Sie die Titel anhängen?"_s);
    files.Open(party);
    EXPECT_EQ(Both(), "ab|x");
    stack.undo();
    EXPECT_EQ(Both(), "abab|xx");
    stack.setIndex(0);
    EXPECT_EQ(Both(), "|");
    EXPECT_EQ(actions.Undo().Name(), u"Standard"_s);
}

TEST_F(PlaylistFileActionsTest, SavingAppendsBehindWhatTheFileHolds) {
    Store("ab", "x");
    first.Append(EntriesOf("cd"));
    first.SetCurrent(0);
    questions.answers = {u"Ja"_s, u"Nein"_s};
    files.Save(party);
    EXPECT_EQ(Stored(party), "abcd|x");
    EXPECT_EQ(Both(), "ab!.cd|x") << "the red entry stays red";
    EXPECT_EQ(questions.said.front(), u"Anhängen|Die Titel dieser Wiedergabeliste können an die zu speichernde "
                                      "Wiedergabeliste:\nParty\nangehängt werden.\nMöchten Sie die Titel anhängen?"_s);
    actions.RemoveRows(1, {0, 1});
    files.Save(party);
    EXPECT_EQ(Stored(party), "cd|x");
    files.Save(folder.Path(u"Neu.wil"_s));
    EXPECT_EQ(questions.said.size(), 2) << "a new file asks nothing";
    EXPECT_EQ(actions.Undo().Name(), u"Neu"_s);
}

TEST_F(PlaylistFileActionsTest, BadFilesChangeNothing) {
    first.Append(EntriesOf("a"));
    folder.Write(u"Party.wil"_s, "kein Datenbestand, nur Text");
    recent.Add(party);
    files.Open(party);
    files.Open(folder.Path(u"fehlt.wil"_s));
    files.Import(1, folder.Write(u"leer.m3u"_s, "http://x/a.mp3\n"));
    files.Import(1, folder.Path(u"bild.jpg"_s));
    EXPECT_EQ(Both(), "a|");
    ASSERT_EQ(questions.said.size(), 4);
    EXPECT_EQ(questions.said.at(2), u"Keine gültige m3u Datei!"_s);
    EXPECT_TRUE(recent.Paths().isEmpty());
    EXPECT_EQ(stack.count(), 0);
    EXPECT_EQ(folder.Read(u"Party.wil"_s), QByteArray("kein Datenbestand, nur Text"));
}

TEST_F(PlaylistFileActionsTest, TakesWhateverIsDropped) {
    Store("w", "v");
    const QString m3u = folder.Write(u"l.m3u8"_s, "sub\\c.mp3\n");
    folder.Write(u"m/b.mp3"_s, "x");
    folder.Write(u"m/b.txt"_s, "x");
    const QString other = folder.Write(u"o.pls"_s, "[playlist]\nFile1=d.ogg\n");
    files.Take(2, {folder.Path(u"m"_s), party, m3u, other}, 0);
    EXPECT_EQ(Both(), "w|bcdv") << "in their order";
    EXPECT_EQ(second.At(1).path, folder.Path(u"sub/c.mp3"_s));
    EXPECT_EQ(recent.Paths(), (QStringList{other, m3u, party}));
    EXPECT_EQ(RecentFiles(folder.Path(u"zuletzt.dll"_s)).Paths(), recent.Paths()) << "kept in a file";
}

TEST_F(PlaylistFileActionsTest, ExportsTheActiveList) {
    second.Append(EntriesOf("a"));
    actions.SetActiveList(2);
    const QString path = folder.Write(u"aus.m3u"_s, "alt");
    files.Export(path, [](const QString&) { return std::nullopt; });
    EXPECT_EQ(folder.Read(u"aus.m3u"_s), QByteArray("alt")) << "cancelled";
    const auto length = [](const QString&) { return 5.0; };
    files.Export(path, length);
    EXPECT_EQ(folder.Read(u"aus.m3u"_s), QByteArray("#EXTM3U\r\n#EXTINF:5,A-a - a\r\n/music/a\r\n"));
    files.Export(folder.Path(u"fehlt/aus.m3u"_s), length);
    EXPECT_EQ(questions.said.size(), 1);
}

} // namespace kalvo::test
