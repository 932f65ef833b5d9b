#include "playlists/ChartsFile.h"

#include "playlists/ChartsRanking.h"
#include "support/TestFolder.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace kalvo {

namespace {

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

} // namespace

class ChartsFileTest : public ::testing::Test {
protected:
    bool Count(PlaySource source, const char* path, const char* title = "Titel") {
        return charts.Count(source, QString::fromUtf8(path), QString::fromUtf8(title), QStringLiteral("Wer"), evening);
    }
    QByteArray Bytes() const { return folder.Read(QStringLiteral("Charts")); }
    void Put(const QByteArray& bytes) { folder.Write(QStringLiteral("Charts"), bytes); }

    test::TestFolder folder;
    SystemClock clock;
    ChartsFile charts{folder.Path(QStringLiteral("Charts")), clock};
};

TEST_F(ChartsFileTest, AFirstPlayMakesItsRecord) {
    ASSERT_TRUE(Count(PlaySource::Player2, "/m/Männer.mp3", "Männer"));
    EXPECT_EQ(Bytes().toHex(' ').toStdString(), RecordBytes("21.11.2026, 23:05 Uhr", "/m/M\xE4nner.mp3", "M\xE4nner",
                                                            "Wer", "0100000000000100", "2026.11.21, 23:05")
                                                    .toHex(' ')
                                                    .toStdString());
}

TEST_F(ChartsFileTest, AnotherPlayChangesItInPlace) {
    QByteArray old =
        RecordBytes("01.01.2020, 10:00 Uhr", "/m/a.mp3", "Alt", "Frueher", "0500020001000200", "2020.01.01, 10:00");
    old[0] = 7;
    old[390] = 9;
    const QByteArray other = RecordBytes("", "/m/b.mp3", "B", "", "0000000000000000", "");
    Put(other + old + other);
    ASSERT_TRUE(Count(PlaySource::Player1, "/m/a.mp3", "Neu"));
    QByteArray wanted =
        RecordBytes("21.11.2026, 23:05 Uhr", "/m/a.mp3", "Alt", "Frueher", "0600020002000200", "2026.11.21, 23:05");
    wanted[0] = 7;
    wanted[390] = 9;
    EXPECT_EQ(Bytes(), other + wanted + other) << "what is not ours stays, the first equal path counts";
    ASSERT_TRUE(Count(PlaySource::Archive, "/m/b.mp3"));
    EXPECT_EQ(Bytes().mid(332, 8), QByteArray::fromHex("0100010000000000"));
    EXPECT_EQ(Bytes().mid(784), other) << "its double is left alone";
}

TEST_F(ChartsFileTest, AMovedFileKeepsItsPlays) {
    ASSERT_TRUE(Count(PlaySource::Player1, "/m/a.mp3") && Count(PlaySource::Player2, "/m/b.mp3"));
    ASSERT_TRUE(charts.Move(QStringLiteral("/m/a.mp3"), QStringLiteral("/neu/a.mp3"), QStringLiteral("Titel")));
    ASSERT_TRUE(Count(PlaySource::Player1, "/neu/a.mp3"));
    EXPECT_EQ(charts.Entries().at(0).path, QStringLiteral("/neu/a.mp3"));
    EXPECT_EQ(charts.Entries().at(0).total, 2);
    ASSERT_TRUE(charts.Move(QStringLiteral("/m/b.mp3"), QStringLiteral("/neu/a.mp3"), QStringLiteral("Titel")));
    ASSERT_EQ(charts.Entries().size(), 1) << "both were the same title";
    EXPECT_EQ(charts.Entries().at(0).total, 3);
    EXPECT_TRUE(charts.Move(QStringLiteral("/m/never.mp3"), QStringLiteral("/m/c.mp3"), QString()));
    EXPECT_EQ(charts.Size(), 1);
}

TEST_F(ChartsFileTest, PathsAreComparedTrimmed) {
    ASSERT_TRUE(Count(PlaySource::Player1, "/m/a.mp3"));
    ASSERT_TRUE(Count(PlaySource::Player2, "/m/a.mp3  "));
    ASSERT_EQ(charts.Entries().size(), 1);
    EXPECT_EQ(charts.Entries().front().total, 2);
    ASSERT_TRUE(Count(PlaySource::Player2, "/m/A.mp3"));
    EXPECT_EQ(charts.Entries().size(), 2);
    QByteArray zeros = RecordBytes("", "/m/z.mp3", "Z", "", "0000000000000000", "");
    zeros.replace(' ', '\0');
    Put(zeros);
    ASSERT_TRUE(Count(PlaySource::Player1, "/m/z.mp3"));
    EXPECT_EQ(charts.Size(), 1) << "zero bytes pad as blanks do";
}

TEST_F(ChartsFileTest, ALongPathIsFoundByWhatFits) {
    const std::string longPath = "/m/" + std::string(300, 'x');
    ASSERT_TRUE(Count(PlaySource::Player1, (longPath + "1.mp3").c_str(), "Eins"));
    ASSERT_TRUE(Count(PlaySource::Player1, (longPath + "2.mp3").c_str(), "Zwei"));
    ASSERT_TRUE(Count(PlaySource::Player1, (longPath + "1.mp3").c_str(), "Eins"));
    ASSERT_EQ(charts.Entries().size(), 2);
    const ChartEntry entry = charts.Entries().front();
    EXPECT_EQ(entry.total, 2);
    EXPECT_TRUE(ChartsFile::MayBeCut(entry));
    EXPECT_TRUE(ChartsFile::IsRecordOf(entry, QString::fromStdString(longPath + "1.mp3"), QStringLiteral("Eins")));
    EXPECT_FALSE(ChartsFile::IsRecordOf(entry, QString::fromStdString(longPath + "2.mp3"), QStringLiteral("Zwei")));
    EXPECT_EQ(charts.FindEntry(QString::fromStdString(longPath + "2.mp3"), QStringLiteral("Zwei"))->number, 2);
    EXPECT_FALSE(charts.FindEntry(QStringLiteral("/m/nie.mp3"), {}));
}

TEST_F(ChartsFileTest, CountsEndAt32767WithoutHarm) {
    Put(RecordBytes("", "/m/a.mp3", "T", "W", "ff7f0000ff7f0000", ""));
    ASSERT_TRUE(Count(PlaySource::Player1, "/m/a.mp3"));
    ASSERT_TRUE(Count(PlaySource::Player2, "/m/a.mp3"));
    const ChartEntry entry = charts.Entries().front();
    EXPECT_EQ(entry.player1, 32767);
    EXPECT_EQ(entry.player2, 1);
    EXPECT_EQ(entry.total, 32767);
    EXPECT_EQ(entry.lastPlayed, QStringLiteral("21.11.2026, 23:05 Uhr"));
}

TEST_F(ChartsFileTest, AnOddTailIsKeptBeside) {
    const QByteArray record = RecordBytes("", "/m/a.mp3", "T", "W", "0100000001000000", "");
    Put(record + "halber Satz");
    ASSERT_TRUE(Count(PlaySource::Player1, "/m/a.mp3"));
    EXPECT_TRUE(Bytes().endsWith("halber Satz")) << "in place nothing is in the way";
    ASSERT_TRUE(Count(PlaySource::Player1, "/m/b.mp3"));
    EXPECT_EQ(Bytes().size(), 2 * 392);
    const QStringList files = QDir(folder.Path()).entryList(QDir::Files);
    ASSERT_EQ(files.size(), 2);
    EXPECT_EQ(folder.Read(files.at(1)), QByteArray("halber Satz"));
}

TEST_F(ChartsFileTest, SeesWhatOthersChangeAndTellsFailures) {
    ASSERT_TRUE(Count(PlaySource::Player1, "/m/a.mp3"));
    ASSERT_TRUE(ChartsFile(folder.Path(QStringLiteral("Charts")), clock).Remove({1}));
    ASSERT_TRUE(Count(PlaySource::Player1, "/m/b.mp3"));
    ASSERT_TRUE(Count(PlaySource::Player1, "/m/a.mp3"));
    EXPECT_EQ(charts.Entries().front().path, QStringLiteral("/m/b.mp3"));
    ASSERT_TRUE(charts.Remove({1}));
    EXPECT_EQ(charts.Size(), 1);
    ASSERT_TRUE(charts.Clear());
    EXPECT_EQ(charts.Size(), 0);
    EXPECT_TRUE(charts.Entries().isEmpty());
    EXPECT_FALSE(ChartsFile(folder.Path(QStringLiteral("fehlt/Charts")), clock)
                     .Count(PlaySource::Player1, QStringLiteral("/m/a.mp3"), {}, {}, evening));
}

TEST(ChartsRanking, RanksByTotalThenLastPlayThenTitle) {
    const auto entry = [](int number, int total, const char* sortable, const char* title) {
        ChartEntry one;
        one.number = number;
        one.total = total;
        one.sortable = QString::fromLatin1(sortable);
        one.title = QString::fromLatin1(title);
        return one;
    };
    ChartsRanking ranking({entry(1, 2, "2026.01.01, 10:00", "b"), entry(2, 3, "", "z"),
                           entry(3, 2, "2026.01.02, 10:00", "c"), entry(4, 2, "2026.01.01, 10:00", "A"),
                           entry(5, 1, "", "x")},
                          4);
    const auto order = [&ranking] {
        std::string numbers;
        for (qsizetype place = 0; place < ranking.Shown(); ++place)
            numbers += std::to_string(ranking.At(place).number);
        return numbers;
    };
    EXPECT_EQ(order(), "2341");
    EXPECT_EQ(ranking.Caption(), QStringLiteral("Kalvo - Charts  << Titelanzahl: 5 >>  << Titelbegrenzung: 4 >>"));
    EXPECT_EQ(ranking.Csv().split('\n').at(1), QByteArray("1;;z;0;0;0;3;\r"));
    EXPECT_EQ(ranking.Take(entry(5, 2, "2026.01.03, 10:00", "x")).from, 4);
    EXPECT_EQ(ranking.Take(entry(6, 1, "2026.01.03, 10:00", "y")).to, 5);
    EXPECT_EQ(order(), "2534");
    EXPECT_EQ(ChartsRanking({entry(1, 1, "", ""), entry(2, 1, "", "")}, 0).Shown(), 2);
}

TEST(ChartsRanking, ReadsItsLimit) {
    const test::TestFolder folder;
    EXPECT_EQ(ReadChartsLimit(folder.Path(QStringLiteral("x"))), 200);
    EXPECT_EQ(ReadChartsLimit(folder.Write(QStringLiteral("x"), "\"50\"\r\n")), 50);
    EXPECT_EQ(ReadChartsLimit(folder.Write(QStringLiteral("x"), "\"viele\"\r\n")), 200);
}

} // namespace kalvo
