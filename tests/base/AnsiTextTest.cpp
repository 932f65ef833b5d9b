#include "base/AnsiText.h"

#include <gtest/gtest.h>

namespace kalvo {

using namespace Qt::StringLiterals;

TEST(AnsiText, EncodesInTheCodePageWhereItCan) {
    EXPECT_EQ(AnsiText::Encode(u"Männer"_s), QByteArray("M\xE4nner"));
    EXPECT_EQ(AnsiText::Encode(u"5 € – „x“"_s), QByteArray("5 \x80 \x96 \x84x\x93"));
    EXPECT_EQ(AnsiText::Encode(u"Čert"_s), u"Čert"_s.toUtf8());
    EXPECT_EQ(AnsiText::Encode(u"Ã¤"_s), u"Ã¤"_s.toUtf8());
}

TEST(AnsiText, ReadsBothForms) {
    EXPECT_EQ(AnsiText::Decode("M\xE4nner"), u"Männer"_s);
    EXPECT_EQ(AnsiText::Decode("M\xC3\xA4nner"), u"Männer"_s);
    EXPECT_EQ(AnsiText::Decode("\xC3"), u"Ã"_s);
    EXPECT_EQ(AnsiText::Decode("\x80\x81\x9D"), QString::fromUtf16(u"€\u0081\u009D"));
    EXPECT_EQ(AnsiText::Decode({}), QString());
}

TEST(AnsiText, EveryCharacterComesBack) {
    for (char32_t code = 1; code < 0x11000; ++code) {
        if (code >= 0xD800 && code <= 0xDFFF)
            continue;
        const QString one = QString::fromUcs4(&code, 1);
        const QString among = one + u"¤ä"_s + one;
        ASSERT_EQ(AnsiText::Decode(AnsiText::Encode(one)), one) << static_cast<int>(code);
        ASSERT_EQ(AnsiText::Decode(AnsiText::Encode(among)), among) << static_cast<int>(code);
    }
}

TEST(AnsiText, CutsBetweenCharacters) {
    const struct {
        const char16_t* text;
        int width;
        const char16_t* kept;
    } cases[] = {{u"Männer", 3, u"Män"}, {u"Čert", 1, u""}, {u"Čert", 3, u"Če"}, {u"ab", 5, u"ab"},
                 {u"ab", 0, u""},        {u"a😀b", 4, u"a"}, {u"a😀b", 5, u"a😀"}};
    for (const auto& [text, width, kept] : cases) {
        const QByteArray bytes = AnsiText::EncodeCut(QString::fromUtf16(text), width);
        EXPECT_LE(bytes.size(), width);
        EXPECT_EQ(AnsiText::Decode(bytes), QString::fromUtf16(kept));
    }
}

} // namespace kalvo
