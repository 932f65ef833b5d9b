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

namespace kalvo {

namespace {

const char* const folderVariable = "KALVO_KILL_FOLDER";
constexpr int listSize = 300;

QString InFolder(const QString& name) {
    return qEnvironmentVariable(folderVariable) + u'/' + name;
}

PlaylistFile::Lists Lists(char name) {
    return {test::EntriesOf(QByteArray(listSize, name)), test::EntriesOf(QByteArray(listSize / 2, name))};
}

} // namespace

/** Runs only as the second program. */
TEST(SaveKillTest, DISABLED_Saver) {
    ASSERT_TRUE(qEnvironmentVariableIsSet(folderVariable));
    const SystemClock clock;
    PlaylistFile lists(InFolder(QStringLiteral("a.wil")), clock);
    ChartsFile charts(InFolder(QStringLiteral("Charts")), clock);
    EveningLog evening(InFolder(QStringLiteral("Verlauf")));
    PlayedTitle title;
    title.start = QDateTime(QDate(2026, 11, 21), QTime(20, 0));
    for (int round = 0;; ++round) {
        ASSERT_EQ(lists.Save(Lists(round % 2 == 0 ? 'a' : 'b')).outcome, PlaylistFile::Outcome::Done);
        title.path = QStringLiteral("/m/%1.mp3").arg(round);
        title.start = title.start.addSecs(1);
        ASSERT_TRUE(charts.Count(PlaySource::Player1, title.path, QStringLiteral("t"), {}, title.start));
        ASSERT_TRUE(charts.Count(PlaySource::Player2, title.path, QStringLiteral("t"), {}, title.start));
        ASSERT_TRUE(evening.Write(title));
    }
}

TEST(SaveKillTest, LeavesWholeFiles) {
    const test::TestFolder folder;
    const SystemClock clock;
    std::mt19937 dice(5);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QString::fromLatin1(folderVariable), folder.Path());
    const QString listPath = folder.Path(QStringLiteral("a.wil"));
    for (int round = 0; round < 8; ++round) {
        QProcess saver;
        saver.setProcessEnvironment(environment);
        saver.setStandardOutputFile(QProcess::nullDevice());
        saver.start(QCoreApplication::applicationFilePath(),
                    {QStringLiteral("--gtest_filter=SaveKillTest.DISABLED_Saver"),
                     QStringLiteral("--gtest_also_run_disabled_tests")});
        ASSERT_TRUE(saver.waitForStarted());
        const QFile log(folder.Path(QStringLiteral("Verlauf/2026-11-21.csv")));
        const qint64 before = log.size();
        ASSERT_TRUE(test::WaitUntil([&] { return log.size() > before; }));
        QThread::usleep(dice() % 20000); // anywhere within a round
        saver.kill();
        ASSERT_TRUE(saver.waitForFinished());

        PlaylistFile::Lists lists;
        ASSERT_EQ(PlaylistFile(listPath, clock).Load(lists).outcome, PlaylistFile::Outcome::Done);
        ASSERT_EQ(lists[0].size(), listSize);
        ASSERT_EQ(lists[1].size(), listSize / 2);
        for (const PlaylistEntry& entry : lists[0] + lists[1])
            ASSERT_EQ(entry.title, lists[0].front().title) << "one save or the other";
        ASSERT_EQ(QFile(folder.Path(QStringLiteral("Charts"))).size() % 392, 0);
        for (const ChartEntry& entry : ChartsFile(folder.Path(QStringLiteral("Charts")), clock).Entries()) {
            ASSERT_EQ(entry.total, entry.player1 + entry.player2);
            ASSERT_EQ(entry.title, QStringLiteral("t"));
        }
        const EveningLog evening(folder.Path(QStringLiteral("Verlauf")));
        ASSERT_FALSE(evening.Read(QDate(2026, 11, 21)).isEmpty());
    }
}

} // namespace kalvo
