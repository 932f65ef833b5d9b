// A child saves without end and is killed in the midst of it: no file may be damaged then.

#include "archive/WriterProcess.h"
#include "playlists/ChartsFile.h"
#include "playlists/EveningLog.h"
#include "playlists/PlaylistSupport.h"
#include "support/TestFolder.h"

#include <QFile>
#include <QThread>
#include <gtest/gtest.h>

#include <random>

namespace kalvo::test {
namespace {

constexpr int listSize = 300;
const QDateTime firstSave(QDate(2026, 11, 21), QTime(20, 0));

/** The files of one folder, opened anew in each process. */
struct SavedFiles {
    explicit SavedFiles(const TestFolder& folder)
        : lists(folder.Path(u"a.wil"_s), clock),
          charts(folder.Path(u"Charts"_s), clock),
          log(folder.Path(u"Verlauf"_s)) {}

    bool SaveAll(int round) {
        const char name = round % 2 == 0 ? 'a' : 'b';
        PlayedTitle title;
        title.path = u"/m/%1.mp3"_s.arg(round);
        title.start = firstSave.addSecs(round);
        return lists.Save({EntriesOf(QByteArray(listSize, name)), EntriesOf(QByteArray(listSize / 2, name))}).outcome ==
                   PlaylistFile::Outcome::Done &&
               charts.Count(PlaySource::Player1, title.path, u"t"_s, {}, title.start) &&
               charts.Count(PlaySource::Player2, title.path, u"t"_s, {}, title.start) && log.Write(title);
    }

    SystemClock clock;
    PlaylistFile lists;
    ChartsFile charts;
    EveningLog log;
};

TEST(SaveKillTest, LeavesWholeFiles) {
    const TestFolder folder;
    std::mt19937 dice(5);
    for (int kills = 0; kills < 8; ++kills) {
        {
            WriterProcess saver([&folder](const WriterProcess::Report& report) {
                SavedFiles files(folder);
                for (int round = 0; files.SaveAll(round); ++round)
                    report(round);
            });
            ASSERT_EQ(saver.Next(), 0);
            QThread::usleep(dice() % 20000); // anywhere within a round
        }
        SavedFiles files(folder);
        PlaylistFile::Lists lists;
        ASSERT_EQ(files.lists.Load(lists).outcome, PlaylistFile::Outcome::Done);
        ASSERT_EQ(lists[0].size(), listSize);
        ASSERT_EQ(lists[1].size(), listSize / 2);
        for (const PlaylistEntry& entry : lists[0] + lists[1])
            ASSERT_EQ(entry.title, lists[0].front().title) << "one save or the other";
        ASSERT_EQ(QFile(folder.Path(u"Charts"_s)).size() % 392, 0);
        for (const ChartEntry& entry : files.charts.Entries()) {
            ASSERT_EQ(entry.total, entry.player1 + entry.player2);
            ASSERT_EQ(entry.title, u"t"_s);
        }
        ASSERT_FALSE(files.log.Read(firstSave.date()).isEmpty());
    }
}

} // namespace
} // namespace kalvo::test
