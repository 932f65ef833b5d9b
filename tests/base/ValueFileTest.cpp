#include "base/ValueFile.h"

#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace kalvo {

using namespace Qt::StringLiterals;

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

} // namespace kalvo
