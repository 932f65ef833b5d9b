#include "base/CsvText.h"

#include <gtest/gtest.h>

namespace kalvo {

TEST(CsvText, FieldsComeBack) {
    const QStringList cases[] = {{QString()},
                                 {QStringLiteral("a"), QString(), QStringLiteral("b")},
                                 {QStringLiteral("a;b"), QStringLiteral("\""), QStringLiteral("\";\"\"")},
                                 {QStringLiteral("x\"y"), QStringLiteral(" ä "), QStringLiteral("\"\"")}};
    for (const QStringList& fields : cases)
        EXPECT_EQ(CsvText::Fields(CsvText::Line(fields)), fields) << CsvText::Line(fields).toStdString();
    EXPECT_EQ(CsvText::Line({QStringLiteral("a\r\nb")}), QStringLiteral("a  b"));
    EXPECT_EQ(CsvText::Fields(QStringLiteral("\"offen;a")), QStringList(QStringLiteral("offen;a")));
}

TEST(CsvText, ADocumentIsUtf8WithItsMark) {
    EXPECT_EQ(CsvText::Document({{QStringLiteral("ä"), QStringLiteral("b")}, {QStringLiteral("c")}}),
              QByteArray("\xEF\xBB\xBF\xC3\xA4;b\r\nc\r\n"));
}

} // namespace kalvo
