#include "base/FixedRecords.h"
#include "base/ValueFile.h"
#include "support/TestFolder.h"

#include <QDir>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

constexpr int kNumber = RecordLayout::kNumber;

Record RecordOf(int number, const QString& text) {
    return {static_cast<qint16>(number), text};
}

struct FixedRecordsTest : ::testing::Test {
    QByteArray Bytes() const { return folder.Read(u"WZ"_s); }
    QStringList Tails() const { return QDir(folder.Path()).entryList({u"WZ.rest-*"_s}); }

    test::TestFolder folder;
    SystemClock clock;
    FixedRecords records{folder.Path(u"WZ"_s), {10, {kNumber, 6}}, clock};
};

TEST_F(FixedRecordsTest, WritesTheGivenBytes) {
    EXPECT_EQ(records.Count(), 0);
    ASSERT_TRUE(records.Append(RecordOf(-2, u"Über"_s)));
    EXPECT_EQ(Bytes(), QByteArray("\376\377\334ber  \0\0", 10));
    ASSERT_TRUE(records.Append(RecordOf(258, u"Čert"_s)));
    EXPECT_EQ(Bytes().mid(10), QByteArray("\2\1\304\214ert \0\0", 10));
    EXPECT_EQ(records.Read(2), RecordOf(258, u"Čert"_s));
    EXPECT_FALSE(records.Read(0) || records.Read(3));
}

TEST_F(FixedRecordsTest, ReadsWhatOthersPad) {
    folder.Write(u"WZ"_s,
                 QByteArray("\0\0 a b  \0\0", 10) + QByteArray(10, '\0') + QByteArray("\377\177ab\0cd\0xx", 10));
    const std::vector<Record> expected{RecordOf(0, u"a b"_s), RecordOf(0, QString()), RecordOf(32767, u"ab cd"_s)};
    EXPECT_EQ(records.ReadAll(), expected);
}

TEST_F(FixedRecordsTest, CutsTextsBetweenCharactersAndTakesWrongValuesAsEmpty) {
    const std::pair<Record, Record> cases[] = {{RecordOf(1, u" länger als sechs"_s), RecordOf(1, u"länger"_s)},
                                               {RecordOf(1, u"1234Čx"_s), RecordOf(1, u"1234Č"_s)},
                                               {RecordOf(1, u"12345Čx"_s), RecordOf(1, u"12345"_s)},
                                               {RecordOf(1, u"Ča😀x"_s), RecordOf(1, u"Ča"_s)},
                                               {{u"text"_s, qint16{7}}, RecordOf(0, QString())},
                                               {{}, RecordOf(0, QString())}};
    for (const auto& [given, kept] : cases) {
        ASSERT_TRUE(records.Append(given));
        EXPECT_EQ(records.Read(records.Count()), kept) << records.Count();
    }
}

TEST_F(FixedRecordsTest, ChangesOneRecordInPlace) {
    for (const QString& text : {u"eins"_s, u"zwei"_s, u"drei"_s})
        ASSERT_TRUE(records.Append(RecordOf(0, text)));
    const QByteArray before = Bytes();
    struct stat was {};
    struct stat is {};
    ::stat(QFile::encodeName(folder.Path(u"WZ"_s)).constData(), &was);
    ASSERT_TRUE(records.Write(2, RecordOf(5, u"neu"_s)));
    ::stat(QFile::encodeName(folder.Path(u"WZ"_s)).constData(), &is);
    EXPECT_EQ(was.st_ino, is.st_ino) << "the same file";
    EXPECT_EQ(Bytes().left(10), before.left(10));
    EXPECT_EQ(Bytes().mid(20), before.mid(20));
    ASSERT_TRUE(records.Write(5, RecordOf(1, u"fünf"_s)));
    EXPECT_EQ(records.Count(), 5);
    EXPECT_EQ(records.Read(4), RecordOf(0, QString())) << "skipped";
    EXPECT_FALSE(records.Write(0, {}));
}

TEST_F(FixedRecordsTest, KeepsOddBytesAtTheEnd) {
    const QByteArray odd = QByteArray("\1\0eins  \0\0", 10) + "halber";
    folder.Write(u"WZ"_s, odd);
    EXPECT_EQ(records.Count(), 1);
    ASSERT_TRUE(records.Write(1, RecordOf(1, u"neu"_s)));
    EXPECT_TRUE(Bytes().endsWith("halber") && Tails().isEmpty()) << "not in the way";
    ASSERT_TRUE(records.Append(RecordOf(2, u"zwei"_s)));
    ASSERT_EQ(Tails().size(), 1);
    EXPECT_EQ(folder.Read(Tails().constFirst()), QByteArray("halber"));
    EXPECT_EQ(Bytes().size(), 20);
    EXPECT_EQ(records.Read(2), RecordOf(2, u"zwei"_s));

    folder.Write(u"WZ"_s, odd);
    ASSERT_TRUE(records.WriteAll({}));
    EXPECT_TRUE(Bytes().isEmpty() && QFile::exists(folder.Path(u"WZ"_s)));
    EXPECT_EQ(Tails().size(), 2);
}

TEST_F(FixedRecordsTest, FailsWithoutHarm) {
    FixedRecords lost(folder.Path(u"fehlt/WZ"_s), {10, {kNumber, 6}}, clock);
    EXPECT_FALSE(lost.Append({}) || lost.WriteAll({}));
    EXPECT_TRUE(lost.ReadAll().empty());
    ASSERT_TRUE(QDir().mkpath(folder.Path(u"WZ"_s)));
    EXPECT_FALSE(records.Append({}) || records.WriteAll({})) << "a folder of that name";
    EXPECT_EQ(records.Count(), 0);
}

struct ValueFileTest : ::testing::Test {
    QStringList ReadBack(const QByteArray& bytes) { return ValueFile::Read(folder.Write(u"kalvo.dll"_s, bytes)); }
    test::TestFolder folder;
};

TEST_F(ValueFileTest, WritesOneLineInTheGivenForm) {
    const QString path = folder.Path(u"kalvo.dll"_s);
    ASSERT_TRUE(ValueFile::Write(path, {10, -20, u"/home/jörg/Musik"_s}));
    EXPECT_EQ(folder.Read(u"kalvo.dll"_s), QByteArray("10,-20,\"/home/j\xF6rg/Musik\"\r\n"));
    ASSERT_TRUE(ValueFile::Write(path, {u"200"_s}));
    EXPECT_EQ(folder.Read(u"kalvo.dll"_s), QByteArray("\"200\"\r\n"));
    EXPECT_FALSE(ValueFile::Write(folder.Path(u"fehlt/x"_s), {1}));
}

TEST_F(ValueFileTest, TextsComeBack) {
    const QStringList texts = {u"a,b"_s, u"say \"x\", y"_s, u"\""_s, QString(), u"a\",\"b"_s, u"Čert "_s, u"end\""_s};
    QList<ValueFile::Value> values;
    for (const QString& text : texts)
        values.append(text);
    const QString path = folder.Path(u"t.dll"_s);
    ASSERT_TRUE(ValueFile::Write(path, values));
    EXPECT_EQ(ValueFile::Read(path), texts);
}

TEST_F(ValueFileTest, ReadsBrokenLines) {
    const std::pair<const char*, QStringList> cases[] = {{"", {}},
                                                         {"1, 2 ,\"x\" ,", {u"1"_s, u"2"_s, u"x"_s, QString()}},
                                                         {"\"offen, 3\n4", {u"offen, 3"_s, u"4"_s}},
                                                         {"\"7\" Zoll\",2", {u"7\" Zoll"_s, u"2"_s}},
                                                         {"1\r\n\r\n2\r\n", {u"1"_s, u"2"_s}},
                                                         {"\357\273\2777,8", {u"7"_s, u"8"_s}},
                                                         {"\"", {QString()}}};
    for (const auto& [bytes, values] : cases)
        EXPECT_EQ(ReadBack(bytes), values) << bytes;
    EXPECT_TRUE(ValueFile::Read(folder.Path(u"fehlt"_s)).isEmpty());
    EXPECT_TRUE(ReadBack(QByteArray("1,2,\0,4", 8)).isEmpty()) << "damaged";
}

} // namespace
} // namespace kalvo
