#include "base/FixedRecords.h"

#include "support/TestFolder.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace kalvo {

using namespace Qt::StringLiterals;

namespace {

constexpr int kNumber = RecordLayout::kNumber;

Record RecordOf(int number, const QString& text) {
    return {static_cast<qint16>(number), text};
}

} // namespace

class FixedRecordsTest : public ::testing::Test {
protected:
    QByteArray Bytes() const { return folder.Read(u"WZ"_s); }
    QStringList Tails() const { return QDir(folder.Path()).entryList({u"WZ.rest-*"_s}); }

    test::TestFolder folder;
    SystemClock clock;
    FixedRecords records{folder.Path(u"WZ"_s), {10, {kNumber, 6}}, clock};
};

TEST_F(FixedRecordsTest, WritesTheGivenBytes) {
    EXPECT_EQ(records.Count(), 0);
    ASSERT_TRUE(records.Append(RecordOf(-2, u"Über"_s)));
    EXPECT_EQ(Bytes(), QByteArray("\xFE\xFF\xDC"
                                  "ber  \0\0",
                                  10));
    ASSERT_TRUE(records.Append(RecordOf(258, u"Čert"_s)));
    EXPECT_EQ(Bytes().mid(10), QByteArray("\x02\x01\xC4\x8C"
                                          "ert \0\0",
                                          10));
    EXPECT_EQ(records.Read(2), RecordOf(258, u"Čert"_s));
    EXPECT_FALSE(records.Read(0) || records.Read(3));
}

TEST_F(FixedRecordsTest, ReadsWhatOthersPad) {
    folder.Write(u"WZ"_s, QByteArray("\0\0 a b  \0\0"
                                     "\0\0\0\0\0\0\0\0\0\0"
                                     "\xFF\x7F"
                                     "ab\0cd\0xx",
                                     30));
    const std::vector<Record> read = records.ReadAll();
    ASSERT_EQ(read.size(), 3U);
    EXPECT_EQ(read[0], RecordOf(0, u"a b"_s));
    EXPECT_EQ(read[1], RecordOf(0, QString()));
    EXPECT_EQ(read[2], RecordOf(32767, u"ab cd"_s));
}

TEST_F(FixedRecordsTest, CutsTextsBetweenCharactersAndTakesWrongValuesAsEmpty) {
    ASSERT_TRUE(records.Append(RecordOf(1, u" länger als sechs"_s)));
    ASSERT_TRUE(records.Append(RecordOf(1, u"1234Čx"_s)));
    ASSERT_TRUE(records.Append(RecordOf(1, u"12345Čx"_s)));
    ASSERT_TRUE(records.Append({u"text"_s, qint16{7}}));
    ASSERT_TRUE(records.Append({}));
    EXPECT_EQ(records.Read(1), RecordOf(1, u"länger"_s));
    EXPECT_EQ(records.Read(2), RecordOf(1, u"1234Č"_s));
    EXPECT_EQ(records.Read(3), RecordOf(1, u"12345"_s));
    EXPECT_EQ(records.Read(4), RecordOf(0, QString()));
    EXPECT_EQ(records.Read(5), RecordOf(0, QString()));
}

TEST_F(FixedRecordsTest, ChangesOneRecordInPlace) {
    for (const char16_t* text : {u"eins", u"zwei", u"drei"})
        ASSERT_TRUE(records.Append(RecordOf(0, QString::fromUtf16(text))));
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

} // namespace kalvo
