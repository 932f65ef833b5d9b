// A second run of this program saves without end and is killed in the midst of it: no file may be damaged then.

#include "playlists/ChartsFile.h"
#include "playlists/EveningLog.h"
#include "playlists/PlaylistFile.h"
#include "playlists/PlaylistSupport.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QThread>
#include <gtest/gtest.h>

#include <random>

namespace kalvo::test {
namespace {

const char* const folderVariable = "KALVO_KILL_FOLDER";
constexpr int listSize = 300;

QString InFolder(const QString& name) {
    return qEnvironmentVariable(folderVariable) + u'/' + name;
}

PlaylistFile::Lists Lists(char name) {
    return {EntriesOf(QByteArray(listSize, name)), EntriesOf(QByteArray(listSize / 2, name))};
}

/** Runs only as the second program. */
TEST(SaveKillTest, DISABLED_Saver) {
    ASSERT_TRUE(qEnvironmentVariableIsSet(folderVariable));
    const SystemClock clock;
    PlaylistFile lists(InFolder(u"a.wil"_s), clock);
    ChartsFile charts(InFolder(u"Charts"_s), clock);
    EveningLog evening(InFolder(u"Verlauf"_s));
    PlayedTitle title;
    title.start = QDateTime(QDate(2026, 11, 21), QTime(20, 0));
    for (int round = 0;; ++round) {
        ASSERT_EQ(lists.Save(Lists(round % 2 == 0 ? 'a' : 'b')).outcome, PlaylistFile::Outcome::Done);
        title.path = u"/m/%1.mp3"_s.arg(round);
        title.start = title.start.addSecs(1);
        ASSERT_TRUE(charts.Count(PlaySource::Player1, title.path, u"t"_s, {}, title.start));
        ASSERT_TRUE(charts.Count(PlaySource::Player2, title.path, u"t"_s, {}, title.start));
        ASSERT_TRUE(evening.Write(title));
    }
}

TEST(SaveKillTest, LeavesWholeFiles) {
    const TestFolder folder;
    const SystemClock clock;
    std::mt19937 dice(5);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QString::fromLatin1(folderVariable), folder.Path());
    const QString listPath = folder.Path(u"a.wil"_s);
    for (int round = 0; round < 8; ++round) {
        QProcess saver;
        saver.setProcessEnvironment(environment);
        saver.setStandardOutputFile(QProcess::nullDevice());
        saver.start(QCoreApplication::applicationFilePath(),
                    {u"--gtest_filter=SaveKillTest.DISABLED_Saver"_s, u"--gtest_also_run_disabled_tests"_s});
        ASSERT_TRUE(saver.waitForStarted());
        const QFile log(folder.Path(u"Verlauf/2026-11-21.csv"_s));
        const qint64 before = log.size();
        ASSERT_TRUE(WaitUntil([&] { return log.size() > before; }));
        QThread::usleep(dice() % 20000); // anywhere within a round
        saver.kill();
        ASSERT_TRUE(saver.waitForFinished());

        PlaylistFile::Lists lists;
        ASSERT_EQ(PlaylistFile(listPath, clock).Load(lists).outcome, PlaylistFile::Outcome::Done);
        ASSERT_EQ(lists[0].size(), listSize);
        ASSERT_EQ(lists[1].size(), listSize / 2);
        for (const PlaylistEntry& entry : lists[0] + lists[1])
            ASSERT_EQ(entry.title, lists[0].front().title) << "one save or the other";
        ASSERT_EQ(QFile(folder.Path(u"Charts"_s)).size() % 392, 0);
        for (const ChartEntry& entry : ChartsFile(folder.Path(u"Charts"_s), clock).Entries()) {
            ASSERT_EQ(entry.total, entry.player1 + entry.player2);
            ASSERT_EQ(entry.title, u"t"_s);
        }
        const EveningLog evening(folder.Path(u"Verlauf"_s));
        ASSERT_FALSE(evening.Read(QDate(2026, 11, 21)).isEmpty());
    }
}

} // namespace
} // namespace kalvo::test
