#include "playlists/EveningLog.h"

#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace kalvo::test {

using namespace Qt::StringLiterals;

struct EveningLogTest : ::testing::Test {
    static QDateTime At(int day, int hour, int minute) { return {QDate(2026, 11, day), QTime(hour, minute)}; }
    static PlayedTitle Title(const QDateTime& start, const QString& title, int played = -1) {
        return {start, PlayOrigin::Wish, 2, u"A; \"B\""_s, title, 245, played, u"/m/"_s + title};
    }
    /** On the evening of the 21st, after eight. */
    void Write(int minute, const QString& title, int played = -1) {
        ASSERT_TRUE(log.Write(Title(At(21, 20, minute), title, played)));
    }
    /** "titleseconds" of each title of the evening. */
    std::string Shown(int day = 21) const {
        QString text;
        for (const PlayedTitle& title : log.Read(QDate(2026, 11, day)))
            text += title.title + QString::number(title.played) + u' ';
        return text.toStdString();
    }

    TestFolder folder;
    EveningLog log{folder.Path(u"Verlauf"_s)};
    QString file = u"Verlauf/2026-11-21.csv"_s;
};

TEST_F(EveningLogTest, TitlesComeBackWhole) {
    PlayedTitle written = Title(At(21, 23, 15), u"Männer\nund"_s);
    ASSERT_TRUE(log.Write(written));
    written.title.replace(u'\n', u' ');
    written.path.replace(u'\n', u' ');
    EXPECT_EQ(log.Read(QDate(2026, 11, 21)), QList{written});
}

TEST_F(EveningLogTest, TheNightBelongsToItsEvening) {
    for (const QDateTime& start : {At(22, 5, 59), At(21, 6, 0), At(22, 6, 0), At(21, 23, 59)})
        ASSERT_TRUE(log.Write(Title(start, start.toString(u"HHmm,"_s))));
    EXPECT_EQ(Shown(21), "0600,-1 2359,-1 0559,-1 ");
    EXPECT_EQ(Shown(22), "0600,-1 ");
    EXPECT_EQ(log.Evenings(), (QList<QDate>{QDate(2026, 11, 22), QDate(2026, 11, 21)}));
    EXPECT_TRUE(log.Read(QDate(2020, 1, 1)).isEmpty());
}

TEST_F(EveningLogTest, ALaterLineOfTheSamePlayCounts) {
    Write(0, u"a"_s);
    Write(4, u"b"_s);
    Write(0, u"a"_s, 240);
    EXPECT_EQ(Shown(), "a240 b-1 ");
    const QByteArray before = folder.Read(file);
    Write(4, u"b"_s, 3);
    EXPECT_TRUE(folder.Read(file).startsWith(before)) << "only ever appended";
}

TEST_F(EveningLogTest, EveryCutLeavesAReadableLog) {
    Write(0, u"a"_s, 1);
    const qsizetype kept = folder.Read(file).size();
    Write(4, u"b"_s, 2);
    const QByteArray whole = folder.Read(file);
    for (qsizetype size = kept; size < whole.size() - 1; ++size) {
        folder.Write(file, whole.left(size));
        EXPECT_EQ(Shown(), "a1 ") << size;
        Write(9, u"c"_s, 3);
        EXPECT_EQ(Shown(), "a1 c3 ") << size;
    }
}

TEST_F(EveningLogTest, GoesOutAsTableAndText) {
    const PlayedTitle jingle{At(21, 20, 0), PlayOrigin::Jingle, 0, {}, u"Kennung"_s, 0, -1, {}};
    const QList<PlayedTitle> titles{jingle, Title(At(21, 20, 1), u"b"_s, 61)};
    const QList<QByteArray> rows = EveningLog::Csv(titles).split('\n');
    EXPECT_EQ(rows.at(1), QByteArray("21.11.2026 20:00:00;Jingle;;;Kennung;;;\r"));
    EXPECT_EQ(rows.at(2), QByteArray("21.11.2026 20:01:00;Wunsch;2;\"A; \"\"B\"\"\";b;04:05;01:01;/m/b\r"));
    EXPECT_EQ(EveningLog::Text(QDate(2026, 11, 21), titles),
              QByteArray("Gespielte Titel am 21.11.2026\r\n\r\n20:00:00  Jingle     Kennung\r\n"
                         "20:01:00  Wunsch     A; \"B\" - b (01:01)\r\n"));
}

TEST_F(EveningLogTest, TellsWhatItCannotWrite) {
    folder.Write(u"Verlauf"_s, "keine Mappe");
    EXPECT_FALSE(log.Write(Title(At(21, 20, 0), u"a"_s)));
    EXPECT_TRUE(log.Evenings().isEmpty());
}

} // namespace kalvo::test
