#include "base/PlainText.h"

#include <gtest/gtest.h>

namespace kalvo {

TEST(PlainText, KnowsTextFromGarbage) {
    for (const QByteArray& text : {QByteArray(), QByteArray("[A]\r\nb=\xE4\t\f\x1A"), QByteArray("\xEF\xBB\xBFü\x7F")})
        EXPECT_TRUE(PlainText::IsText(text)) << text.constData();
    for (const char byte : {'\0', '\x01', '\x08', '\x0B', '\x1B', '\x1F'})
        EXPECT_FALSE(PlainText::IsText(QByteArray("[A]\nb=") + byte + "c\n")) << int(byte);
}

TEST(PlainText, WithoutControlsIsTextOnOneLine) {
    QString all;
    for (char16_t code = 0; code < 0x100; ++code)
        all.append(QChar(code));
    const QString clean = PlainText::WithoutControls(all);
    EXPECT_TRUE(PlainText::IsText(clean.toUtf8()));
    EXPECT_FALSE(clean.contains(u'\n') || clean.contains(u'\r'));
    EXPECT_EQ(clean.mid(0x20), all.mid(0x20));
    EXPECT_EQ(clean.size(), all.size());
    EXPECT_EQ(clean[u'\t'], u'\t');
}

} // namespace kalvo
