#include "base/ValueFile.h"

#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace kalvo {

class ValueFileTest : public ::testing::Test {
protected:
    QStringList ReadBack(const QByteArray& bytes) {
        return ValueFile::Read(folder.Write(QStringLiteral("kalvo.dll"), bytes));
    }
    test::TestFolder folder;
};

TEST_F(ValueFileTest, WritesOneLineInTheGivenForm) {
    const QString path = folder.Path(QStringLiteral("kalvo.dll"));
    ASSERT_TRUE(ValueFile::Write(path, {10, -20, QStringLiteral("/home/jörg/Musik")}));
    EXPECT_EQ(folder.Read(QStringLiteral("kalvo.dll")), QByteArray("10,-20,\"/home/j\xF6rg/Musik\"\r\n"));
    ASSERT_TRUE(ValueFile::Write(path, {QStringLiteral("200")}));
    EXPECT_EQ(folder.Read(QStringLiteral("kalvo.dll")), QByteArray("\"200\"\r\n"));
    EXPECT_FALSE(ValueFile::Write(folder.Path(QStringLiteral("fehlt/x")), {1}));
}

TEST_F(ValueFileTest, TextsComeBack) {
    const QStringList texts = {
        QStringLiteral("a,b"),     QStringLiteral("say \"x\", y"), QStringLiteral("\""),   QString(),
        QStringLiteral("a\",\"b"), QStringLiteral("Čert "),        QStringLiteral("end\"")};
    QList<ValueFile::Value> values;
    for (const QString& text : texts)
        values.append(text);
    const QString path = folder.Path(QStringLiteral("t.dll"));
    ASSERT_TRUE(ValueFile::Write(path, values));
    EXPECT_EQ(ValueFile::Read(path), texts);
}

TEST_F(ValueFileTest, ReadsBrokenLines) {
    const struct {
        const char* bytes;
        QStringList values;
    } cases[] = {{"", {}},
                 {"1, 2 ,\"x\" ,", {QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("x"), QString()}},
                 {"\"offen, 3\n4", {QStringLiteral("offen, 3"), QStringLiteral("4")}},
                 {"\"7\" Zoll\",2", {QStringLiteral("7\" Zoll"), QStringLiteral("2")}},
                 {"1\r\n\r\n2\r\n", {QStringLiteral("1"), QStringLiteral("2")}},
                 {"\xEF\xBB\xBF"
                  "7,8",
                  {QStringLiteral("7"), QStringLiteral("8")}},
                 {"\"", {QString()}}};
    for (const auto& [bytes, values] : cases)
        EXPECT_EQ(ReadBack(bytes), values) << bytes;
    EXPECT_TRUE(ValueFile::Read(folder.Path(QStringLiteral("fehlt"))).isEmpty());
    EXPECT_TRUE(ReadBack(QByteArray("1,2,\0,4", 8)).isEmpty()) << "damaged";
}

} // namespace kalvo
