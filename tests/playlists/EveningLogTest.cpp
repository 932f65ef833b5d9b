#include "playlists/EveningLog.h"

#include "support/TestFolder.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace kalvo {

class EveningLogTest : public ::testing::Test {
protected:
    static QDateTime At(int day, int hour, int minute) { return {QDate(2026, 11, day), QTime(hour, minute)}; }
    static PlayedTitle Title(const QDateTime& start, const char* title, int played = -1) {
        PlayedTitle one;
        one.start = start;
        one.origin = PlayOrigin::Wish;
        one.player = 2;
        one.artist = QStringLiteral("A; \"B\"");
        one.title = QString::fromUtf8(title);
        one.length = 245;
        one.played = played;
        one.path = QStringLiteral("/m/") + one.title;
        return one;
    }
    /** "titleseconds" of each title of the evening. */
    std::string Shown(int day) const {
        QString text;
        for (const PlayedTitle& title : log.Read(QDate(2026, 11, day)))
            text += title.title + QString::number(title.played) + u' ';
        return text.toStdString();
    }

    test::TestFolder folder;
    EveningLog log{folder.Path(QStringLiteral("Verlauf"))};
    QString file = QStringLiteral("Verlauf/2026-11-21.csv");
};

TEST_F(EveningLogTest, TitlesComeBackWhole) {
    PlayedTitle written = Title(At(21, 23, 15), "Männer\nund");
    ASSERT_TRUE(log.Write(written));
    written.title.replace(u'\n', u' ');
    written.path.replace(u'\n', u' ');
    EXPECT_EQ(log.Read(QDate(2026, 11, 21)), QList{written});
}

TEST_F(EveningLogTest, TheNightBelongsToItsEvening) {
    for (const auto& start : {At(22, 5, 59), At(21, 6, 0), At(22, 6, 0), At(21, 23, 59)})
        ASSERT_TRUE(log.Write(Title(start, start.toString(QStringLiteral("HHmm,")).toUtf8().constData())));
    EXPECT_EQ(Shown(21), "0600,-1 2359,-1 0559,-1 ");
    EXPECT_EQ(Shown(22), "0600,-1 ");
    EXPECT_EQ(log.Evenings(), (QList<QDate>{QDate(2026, 11, 22), QDate(2026, 11, 21)}));
    EXPECT_TRUE(log.Read(QDate(2020, 1, 1)).isEmpty());
}

TEST_F(EveningLogTest, ALaterLineOfTheSamePlayCounts) {
    ASSERT_TRUE(log.Write(Title(At(21, 20, 0), "a")));
    ASSERT_TRUE(log.Write(Title(At(21, 20, 4), "b")));
    ASSERT_TRUE(log.Write(Title(At(21, 20, 0), "a", 240)));
    EXPECT_EQ(Shown(21), "a240 b-1 ");
    const QByteArray before = folder.Read(file);
    ASSERT_TRUE(log.Write(Title(At(21, 20, 4), "b", 3)));
    EXPECT_TRUE(folder.Read(file).startsWith(before)) << "only ever appended";
}

TEST_F(EveningLogTest, EveryCutLeavesAReadableLog) {
    ASSERT_TRUE(log.Write(Title(At(21, 20, 0), "a", 1)));
    const qsizetype kept = folder.Read(file).size();
    ASSERT_TRUE(log.Write(Title(At(21, 20, 4), "b", 2)));
    const QByteArray whole = folder.Read(file);
    for (qsizetype size = kept; size < whole.size() - 1; ++size) {
        folder.Write(file, whole.left(size));
        EXPECT_EQ(Shown(21), "a1 ") << size;
        ASSERT_TRUE(log.Write(Title(At(21, 20, 9), "c", 3)));
        EXPECT_EQ(Shown(21), "a1 c3 ") << size;
    }
}

TEST_F(EveningLogTest, GoesOutAsTableAndText) {
    PlayedTitle jingle;
    jingle.start = At(21, 20, 0);
    jingle.origin = PlayOrigin::Jingle;
    jingle.title = QStringLiteral("Kennung");
    const QList<PlayedTitle> titles{jingle, Title(At(21, 20, 1), "b", 61)};
    const QList<QByteArray> rows = EveningLog::Csv(titles).split('\n');
    EXPECT_EQ(rows.at(1), QByteArray("21.11.2026 20:00:00;Jingle;;;Kennung;;;\r"));
    EXPECT_EQ(rows.at(2), QByteArray("21.11.2026 20:01:00;Wunsch;2;\"A; \"\"B\"\"\";b;04:05;01:01;/m/b\r"));
    EXPECT_EQ(EveningLog::Text(QDate(2026, 11, 21), titles),
              QByteArray("Gespielte Titel am 21.11.2026\r\n\r\n20:00:00  Jingle     Kennung\r\n"
                         "20:01:00  Wunsch     A; \"B\" - b (01:01)\r\n"));
}

TEST_F(EveningLogTest, TellsWhatItCannotWrite) {
    folder.Write(QStringLiteral("Verlauf"), "keine Mappe");
    EXPECT_FALSE(log.Write(Title(At(21, 20, 0), "a")));
    EXPECT_TRUE(log.Evenings().isEmpty());
}

} // namespace kalvo
