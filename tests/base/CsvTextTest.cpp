#include "base/CsvText.h"

#include <gtest/gtest.h>

namespace kalvo {

using namespace Qt::StringLiterals;

TEST(CsvText, FieldsComeBack) {
    const QStringList cases[] = {
        {QString()}, {u"a"_s, QString(), u"b"_s}, {u"a;b"_s, u"\""_s, u"\";\"\""_s}, {u"x\"y"_s, u" ä "_s, u"\"\""_s}};
    for (const QStringList& fields : cases)
        EXPECT_EQ(CsvText::Fields(CsvText::Line(fields)), fields) << CsvText::Line(fields).toStdString();
    EXPECT_EQ(CsvText::Line({u"a\r\nb"_s}), u"a  b"_s);
    EXPECT_EQ(CsvText::Fields(u"\"offen;a"_s), QStringList(u"offen;a"_s));
}

TEST(CsvText, ADocumentIsUtf8WithItsMark) {
    EXPECT_EQ(CsvText::Document({{u"ä"_s, u"b"_s}, {u"c"_s}}), QByteArray("\xEF\xBB\xBF\xC3\xA4;b\r\nc\r\n"));
}

} // namespace kalvo
