#include "playlists/ChartsFile.h"

#include "playlists/ChartsRanking.h"
#include "support/TestFolder.h"

#include <QDir>
#include <gtest/gtest.h>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

const QDateTime evening(QDate(2026, 11, 21), QTime(23, 5, 59));

/** A record by hand: every field at its place. */
QByteArray RecordBytes(const char* date, const char* path, const char* title, const char* artist,
                       const char* numbersInHex, const char* sortable) {
    QByteArray bytes = QByteArray::fromHex("0000");
    bytes += QByteArray(date).leftJustified(30, ' ') + QByteArray(path).leftJustified(200, ' ');
    bytes += QByteArray(title).leftJustified(50, ' ') + QByteArray(artist).leftJustified(50, ' ');
    bytes += QByteArray::fromHex(numbersInHex) + QByteArray(sortable).leftJustified(50, ' ');
    return bytes + QByteArray::fromHex("0000");
}

struct ChartsFileTest : ::testing::Test {
    bool Count(PlaySource source, const QString& path, const QString& title = u"Titel"_s) {
        return charts.Count(source, path, title, u"Wer"_s, evening);
    }
    QByteArray Bytes() const { return folder.Read(u"Charts"_s); }
    void Put(const QByteArray& bytes) { folder.Write(u"Charts"_s, bytes); }

    TestFolder folder;
    SystemClock clock;
    ChartsFile charts{folder.Path(u"Charts"_s), clock};
};

TEST_F(ChartsFileTest, AFirstPlayMakesItsRecord) {
    ASSERT_TRUE(Count(PlaySource::Player2, u"/m/Männer.mp3"_s, u"Männer"_s));
    EXPECT_EQ(Bytes(), RecordBytes("21.11.2026, 23:05 Uhr", "/m/M\xE4nner.mp3", "M\xE4nner", "Wer", "0100000000000100",
                                   "2026.11.21, 23:05"));
}

TEST_F(ChartsFileTest, AnotherPlayChangesItInPlace) {
    const auto record = [](const char* date, const char* numbersInHex, const char* sortable) {
        QByteArray bytes = RecordBytes(date, "/m/a.mp3", "Alt", "Frueher", numbersInHex, sortable);
        bytes[0] = 7;
        bytes[390] = 9;
        return bytes;
    };
    const QByteArray other = RecordBytes("", "/m/b.mp3", "B", "", "0000000000000000", "");
    Put(other + record("01.01.2020, 10:00 Uhr", "0500020001000200", "2020.01.01, 10:00") + other);
    ASSERT_TRUE(Count(PlaySource::Player1, u"/m/a.mp3"_s, u"Neu"_s));
    EXPECT_EQ(Bytes(), other + record("21.11.2026, 23:05 Uhr", "0600020002000200", "2026.11.21, 23:05") + other)
        << "what is not ours stays, the first equal path counts";
    ASSERT_TRUE(Count(PlaySource::Archive, u"/m/b.mp3"_s));
    EXPECT_EQ(Bytes().mid(332, 8), QByteArray::fromHex("0100010000000000"));
    EXPECT_EQ(Bytes().mid(784), other) << "its double is left alone";
}

TEST_F(ChartsFileTest, AMovedFileKeepsItsPlays) {
    ASSERT_TRUE(Count(PlaySource::Player1, u"/m/a.mp3"_s) && Count(PlaySource::Player2, u"/m/b.mp3"_s));
    ASSERT_TRUE(charts.Move(u"/m/a.mp3"_s, u"/neu/a.mp3"_s, u"Titel"_s));
    ASSERT_TRUE(Count(PlaySource::Player1, u"/neu/a.mp3"_s));
    EXPECT_EQ(charts.Entries().at(0).path, u"/neu/a.mp3"_s);
    EXPECT_EQ(charts.Entries().at(0).total, 2);
    ASSERT_TRUE(charts.Move(u"/m/b.mp3"_s, u"/neu/a.mp3"_s, u"Titel"_s));
    ASSERT_EQ(charts.Entries().size(), 1) << "both were the same title";
    EXPECT_EQ(charts.Entries().at(0).total, 3);
    EXPECT_TRUE(charts.Move(u"/m/never.mp3"_s, u"/m/c.mp3"_s, {}));
    EXPECT_EQ(charts.Size(), 1);
}

TEST_F(ChartsFileTest, PathsAreComparedTrimmed) {
    ASSERT_TRUE(Count(PlaySource::Player1, u"/m/a.mp3"_s) && Count(PlaySource::Player2, u"/m/a.mp3  "_s));
    ASSERT_EQ(charts.Entries().size(), 1);
    EXPECT_EQ(charts.Entries().front().total, 2);
    ASSERT_TRUE(Count(PlaySource::Player2, u"/m/A.mp3"_s));
    EXPECT_EQ(charts.Entries().size(), 2);
    Put(RecordBytes("", "/m/z.mp3", "Z", "", "0000000000000000", "").replace(' ', '\0'));
    ASSERT_TRUE(Count(PlaySource::Player1, u"/m/z.mp3"_s));
    EXPECT_EQ(charts.Size(), 1) << "zero bytes pad as blanks do";
}

TEST_F(ChartsFileTest, ALongPathIsFoundByWhatFits) {
    const QString one = u"/m/"_s + QString(300, u'x') + u"1.mp3"_s;
    const QString two = u"/m/"_s + QString(300, u'x') + u"2.mp3"_s;
    ASSERT_TRUE(Count(PlaySource::Player1, one, u"Eins"_s));
    ASSERT_TRUE(Count(PlaySource::Player1, two, u"Zwei"_s));
    ASSERT_TRUE(Count(PlaySource::Player1, one, u"Eins"_s));
    ASSERT_EQ(charts.Entries().size(), 2);
    const ChartEntry entry = charts.Entries().front();
    EXPECT_EQ(entry.total, 2);
    EXPECT_TRUE(ChartsFile::MayBeCut(entry));
    EXPECT_TRUE(ChartsFile::IsRecordOf(entry, one, u"Eins"_s));
    EXPECT_FALSE(ChartsFile::IsRecordOf(entry, two, u"Zwei"_s));
    EXPECT_EQ(charts.FindEntry(two, u"Zwei"_s)->number, 2);
    EXPECT_FALSE(charts.FindEntry(u"/m/nie.mp3"_s, {}));
}

TEST_F(ChartsFileTest, CountsEndAt32767WithoutHarm) {
    Put(RecordBytes("", "/m/a.mp3", "T", "W", "ff7f0000ff7f0000", ""));
    ASSERT_TRUE(Count(PlaySource::Player1, u"/m/a.mp3"_s) && Count(PlaySource::Player2, u"/m/a.mp3"_s));
    const ChartEntry entry = charts.Entries().front();
    EXPECT_EQ(entry.player1, 32767);
    EXPECT_EQ(entry.player2, 1);
    EXPECT_EQ(entry.total, 32767);
    EXPECT_EQ(entry.lastPlayed, u"21.11.2026, 23:05 Uhr"_s);
}

TEST_F(ChartsFileTest, AnOddTailIsKeptBeside) {
    Put(RecordBytes("", "/m/a.mp3", "T", "W", "0100000001000000", "") + "halber Satz");
    ASSERT_TRUE(Count(PlaySource::Player1, u"/m/a.mp3"_s));
    EXPECT_TRUE(Bytes().endsWith("halber Satz")) << "in place nothing is in the way";
    ASSERT_TRUE(Count(PlaySource::Player1, u"/m/b.mp3"_s));
    EXPECT_EQ(Bytes().size(), 2 * 392);
    const QStringList files = QDir(folder.Path()).entryList(QDir::Files);
    ASSERT_EQ(files.size(), 2);
    EXPECT_EQ(folder.Read(files.at(1)), QByteArray("halber Satz"));
}

TEST_F(ChartsFileTest, SeesWhatOthersChangeAndTellsFailures) {
    ASSERT_TRUE(Count(PlaySource::Player1, u"/m/a.mp3"_s));
    ASSERT_TRUE(ChartsFile(folder.Path(u"Charts"_s), clock).Remove({1}));
    ASSERT_TRUE(Count(PlaySource::Player1, u"/m/b.mp3"_s) && Count(PlaySource::Player1, u"/m/a.mp3"_s));
    EXPECT_EQ(charts.Entries().front().path, u"/m/b.mp3"_s);
    ASSERT_TRUE(charts.Remove({1}));
    EXPECT_EQ(charts.Size(), 1);
    ASSERT_TRUE(charts.Clear());
    EXPECT_TRUE(charts.Entries().isEmpty());
    ChartsFile nowhere(folder.Path(u"fehlt/Charts"_s), clock);
    EXPECT_FALSE(nowhere.Count(PlaySource::Player1, u"/m/a.mp3"_s, {}, {}, evening));
}

TEST(ChartsRanking, RanksByTotalThenLastPlayThenTitle) {
    const auto entry = [](int number, int total, const QString& sortable, const QString& title) {
        return ChartEntry{number, {}, {}, title, {}, total, 0, 0, 0, sortable};
    };
    const QString early = u"2026.01.01, 10:00"_s;
    const QString later = u"2026.01.02, 10:00"_s;
    const QString last = u"2026.01.03, 10:00"_s;
    ChartsRanking ranking({entry(1, 2, early, u"b"_s), entry(2, 3, {}, u"z"_s), entry(3, 2, later, u"c"_s),
                           entry(4, 2, early, u"A"_s), entry(5, 1, {}, u"x"_s)},
                          4);
    const auto order = [&ranking] {
        std::string numbers;
        for (qsizetype place = 0; place < ranking.Shown(); ++place)
            numbers += std::to_string(ranking.At(place).number);
        return numbers;
    };
    EXPECT_EQ(order(), "2341");
    EXPECT_EQ(ranking.Caption(), u"Kalvo - Charts  << Titelanzahl: 5 >>  << Titelbegrenzung: 4 >>"_s);
    EXPECT_EQ(ranking.Csv().split('\n').at(1), QByteArray("1;;z;0;0;0;3;\r"));
    EXPECT_EQ(ranking.Take(entry(5, 2, last, u"x"_s)).from, 4);
    EXPECT_EQ(ranking.Take(entry(6, 1, last, u"y"_s)).to, 5);
    EXPECT_EQ(order(), "2534");
    EXPECT_EQ(ChartsRanking({entry(1, 1, {}, {}), entry(2, 1, {}, {})}, 0).Shown(), 2);
}

} // namespace
} // namespace kalvo::test
