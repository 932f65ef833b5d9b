#include "playlists/PlaylistFileActions.h"

#include "base/Settings.h"
#include "playlists/AnsweredQuestions.h"
#include "playlists/PlaylistFile.h"
#include "playlists/PlaylistSupport.h"
#include "support/TestFolder.h"

#include <QFile>
#include <gtest/gtest.h>

namespace kalvo {

using test::EntriesOf;
using test::Shown;

class PlaylistFileActionsTest : public ::testing::Test {
protected:
    PlaylistFileActionsTest() { intake.SetPatience(std::chrono::minutes(1)); }
    void Stored(const QString& path, const char* one, const char* two) {
        ASSERT_EQ(PlaylistFile(path, clock).Save({EntriesOf(one), EntriesOf(two)}).outcome,
                  PlaylistFile::Outcome::Done);
    }
    std::string Both() const { return Shown(first) + "|" + Shown(second); }

    test::TestFolder folder;
    SystemClock clock;
    SystemRandom random;
    Playlist first{1, random}, second{2, random};
    test::AnsweredQuestions questions;
    PlaylistActions lists{first, second, questions};
    RecentFiles recent{folder.Path(QStringLiteral("zuletzt.dll"))};
    Settings settings{folder.Path(QStringLiteral("kalvo.ini"))};
    PlaylistIntake intake{lists, settings};
    PlaylistFileActions files{lists, intake, recent, clock};
    QString party = folder.Path(QStringLiteral("Party.wil"));
};

TEST_F(PlaylistFileActionsTest, OpeningAsksOnlyWhenSomethingIsThere) {
    Stored(party, "ab", "x");
    files.Open(party);
    EXPECT_TRUE(questions.said.isEmpty());
    EXPECT_EQ(Both(), "ab|x");
    EXPECT_EQ(lists.Undo().Name(), QStringLiteral("Party"));
    questions.answers = {QStringLiteral("Ja"), QStringLiteral("Nein")};
    files.Open(party);
    EXPECT_EQ(Both(), "abab|xx");
    EXPECT_EQ(questions.said.front(),
              QStringLiteral("Anhängen|Die Titel der zu öffnenden Wiedergabeliste:\nParty\nkönnen an die vorhandene "
                             "Wiedergabeliste angehängt werden.\nMöchten Sie die Titel anhängen?"));
    files.Open(party);
    EXPECT_EQ(Both(), "ab|x");
    lists.Undo().Stack().undo();
    EXPECT_EQ(Both(), "abab|xx");
    lists.Undo().Stack().setIndex(0);
    EXPECT_EQ(Both(), "|");
    EXPECT_EQ(lists.Undo().Name(), QStringLiteral("Standard"));
}

TEST_F(PlaylistFileActionsTest, SavingAppendsBehindWhatTheFileHolds) {
    Stored(party, "ab", "x");
    first.Append(EntriesOf("cd"));
    first.SetCurrent(0);
    questions.answers = {QStringLiteral("Ja"), QStringLiteral("Nein")};
    files.Save(party);
    EXPECT_EQ(test::Stored(party), "abcd|x");
    EXPECT_EQ(Both(), "ab!.cd|x") << "the red entry stays red";
    EXPECT_EQ(questions.said.front(),
              QStringLiteral("Anhängen|Die Titel dieser Wiedergabeliste können an die zu speichernde "
                             "Wiedergabeliste:\nParty\nangehängt werden.\nMöchten Sie die Titel anhängen?"));
    lists.RemoveRows(1, {0, 1});
    files.Save(party);
    EXPECT_EQ(test::Stored(party), "cd|x");
    files.Save(folder.Path(QStringLiteral("Neu.wil")));
    EXPECT_EQ(questions.said.size(), 2) << "a new file asks nothing";
    EXPECT_EQ(lists.Undo().Name(), QStringLiteral("Neu"));
}

TEST_F(PlaylistFileActionsTest, BadFilesChangeNothing) {
    first.Append(EntriesOf("a"));
    folder.Write(QStringLiteral("Party.wil"), "kein Datenbestand, nur Text");
    recent.Add(party);
    files.Open(party);
    files.Open(folder.Path(QStringLiteral("fehlt.wil")));
    const QString m3u = folder.Write(QStringLiteral("leer.m3u"), "http://x/a.mp3\n");
    files.Import(1, m3u);
    files.Import(1, folder.Path(QStringLiteral("bild.jpg")));
    EXPECT_EQ(Both(), "a|");
    ASSERT_EQ(questions.said.size(), 4);
    EXPECT_EQ(questions.said.at(2), QStringLiteral("Keine gültige m3u Datei!"));
    EXPECT_TRUE(recent.Paths().isEmpty());
    EXPECT_EQ(lists.Undo().Stack().count(), 0);
    EXPECT_EQ(folder.Read(QStringLiteral("Party.wil")), QByteArray("kein Datenbestand, nur Text"));
}

TEST_F(PlaylistFileActionsTest, TakesWhateverIsDropped) {
    Stored(party, "w", "v");
    const QString m3u = folder.Write(QStringLiteral("l.m3u8"), "sub\\c.mp3\n");
    folder.Write(QStringLiteral("m/b.mp3"), "x");
    folder.Write(QStringLiteral("m/b.txt"), "x");
    const QString other = folder.Write(QStringLiteral("o.pls"), "[playlist]\nFile1=d.ogg\n");
    files.Take(2, {folder.Path(QStringLiteral("m")), party, m3u, other}, 0);
    EXPECT_EQ(Both(), "w|bcdv") << "in their order";
    EXPECT_EQ(second.At(1).path, folder.Path(QStringLiteral("sub/c.mp3")));
    EXPECT_EQ(recent.Paths(), (QStringList{other, m3u, party}));
    EXPECT_EQ(RecentFiles(folder.Path(QStringLiteral("zuletzt.dll"))).Paths(), recent.Paths()) << "kept in a file";
}

TEST_F(PlaylistFileActionsTest, ExportsTheActiveList) {
    second.Append(EntriesOf("a"));
    lists.SetActiveList(2);
    const QString path = folder.Write(QStringLiteral("aus.m3u"), "alt");
    files.Export(path, [](const QString&) { return std::nullopt; });
    EXPECT_EQ(folder.Read(QStringLiteral("aus.m3u")), QByteArray("alt")) << "cancelled";
    files.Export(path, [](const QString&) { return 5.0; });
    EXPECT_EQ(folder.Read(QStringLiteral("aus.m3u")), QByteArray("#EXTM3U\r\n#EXTINF:5,A-a - a\r\n/music/a\r\n"));
    files.Export(folder.Path(QStringLiteral("fehlt/aus.m3u")), [](const QString&) { return 5.0; });
    EXPECT_EQ(questions.said.size(), 1);
}

} // namespace kalvo
