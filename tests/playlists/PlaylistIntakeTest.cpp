#include "playlists/PlaylistIntake.h"

#include "base/Settings.h"
#include "playlists/AnsweredQuestions.h"
#include "playlists/PlaylistSupport.h"
#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"

#include <QFile>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace kalvo {

using test::EntriesOf;
using test::Shown;

class PlaylistIntakeTest : public ::testing::Test {
protected:
    PlaylistIntakeTest() { intake.SetPatience(std::chrono::minutes(1)); }
    void AddFiles(const QStringList& paths, int row = -1) {
        intake.AddFiles(1, paths, row, [](const GatheredFiles&) {});
    }
    /** A playlist that nobody can read to its end before it is written: opening it waits for the writer. */
    QString Hanging() {
        const QString path = folder.Path(QStringLiteral("haengt.m3u"));
        EXPECT_EQ(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        return path;
    }
    static void Answer(const QString& path, const QByteArray& content) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        file.write(content);
    }

    test::TestFolder folder;
    SystemRandom random;
    Playlist first{1, random}, second{2, random};
    test::AnsweredQuestions questions;
    PlaylistActions lists{first, second, questions};
    Settings settings{folder.Path(QStringLiteral("kalvo.ini"))};
    PlaylistIntake intake{lists, settings};
};

TEST_F(PlaylistIntakeTest, AsksTheDiskForTitles) {
    TitleRecord there, gone;
    there.Titel = QStringLiteral("a");
    there.Pfad = folder.Write(QStringLiteral("a"), "x");
    gone.Pfad = folder.Path(QStringLiteral("weg"));
    intake.AddTitles(2, {gone, there});
    EXPECT_EQ(Shown(second), "a");
    EXPECT_EQ(questions.said, QStringList{QStringLiteral("Datei:\n%1\nist nicht mehr vorhanden!").arg(gone.Pfad)});
    intake.Distribute({gone, there});
    EXPECT_EQ(Shown(first), "a");
    EXPECT_EQ(questions.said.size(), 1) << "skipped silently";
}

TEST_F(PlaylistIntakeTest, TakesFilesAndFoldersInTheirOrder) {
    for (const char* name : {"z/B - b.mp3", "z/a.OGG", "z/deep/c.mp3", "z/cover.jpg", "d.mp3"})
        folder.Write(QString::fromUtf8(name), "x");
    first.Append(EntriesOf("x"));
    AddFiles({folder.Path(QStringLiteral("d.mp3")), folder.Path(QStringLiteral("z")),
              folder.Path(QStringLiteral("z/cover.jpg"))},
             0);
    EXPECT_EQ(Shown(first), "dabcx");
    EXPECT_EQ(first.At(2).artist + first.At(2).duration, QStringLiteral("B0"));
    AddFiles({folder.Path(QStringLiteral("z/deep"))});
    EXPECT_EQ(Shown(first), "dabcxc") << "without a row at the end";
}

TEST_F(PlaylistIntakeTest, TagsNameTheTitlesWhereThatIsWanted) {
    test::SoundSpec spec;
    spec.seconds = 2;
    spec.title = QStringLiteral("Titel");
    spec.artist = QStringLiteral("Wer");
    const QString path = test::MakeSound(folder.Path(), QStringLiteral("A - b.mp3"), spec);
    AddFiles({path});
    settings.PutSwitch(QStringLiteral("Mixer"), QStringLiteral("ID3WL"), true);
    AddFiles({folder.Write(QStringLiteral("l.m3u"), "#EXTINF:7,x - y\nA - b.mp3\n")});
    lists.AddFromPlayer(1, QStringLiteral("p"), {}, QStringLiteral("09:00"), path);
    EXPECT_EQ(Shown(first), "bTitelp") << "what a player shows is taken as it is";
    EXPECT_EQ(first.At(0).artist + first.At(0).duration, QStringLiteral("A00:02"));
    EXPECT_EQ(first.At(1).artist + first.At(1).duration, QStringLiteral("Wer00:02"));
}

TEST_F(PlaylistIntakeTest, TheDeskGoesOnWhileADiskHangs) {
    intake.SetPatience(std::chrono::milliseconds(1));
    const QString slow = Hanging();
    first.Append(EntriesOf("abc"));
    int progressed = 0;
    bool finished = false;
    QObject::connect(&intake, &PlaylistIntake::Progress, [&progressed] { ++progressed; });
    QObject::connect(&intake, &PlaylistIntake::Finished, [&finished] { finished = true; });
    AddFiles({slow}, 2);
    EXPECT_EQ(Shown(first), "abc");
    EXPECT_TRUE(test::WaitUntil([&progressed] { return progressed > 1; }));
    first.Remove({0});
    Answer(slow, "/m/s.mp3\n");
    EXPECT_TRUE(test::WaitUntil([&finished] { return finished; }));
    EXPECT_EQ(Shown(first), "bsc") << "before the entry that was meant";
    finished = false;
    AddFiles({slow});
    intake.Cancel();
    EXPECT_TRUE(test::WaitUntil([&finished] { return finished; }));
    Answer(slow, "/m/s.mp3\n");
    EXPECT_EQ(Shown(first), "bsc");
}

} // namespace kalvo
