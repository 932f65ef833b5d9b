#include "base/AnsiText.h"
#include "base/CsvText.h"
#include "base/PlainText.h"
#include "base/PlayTime.h"

#include <cmath>
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

TEST(PlayTime, Formats) {
    const std::pair<double, const char*> cases[] = {{0, "00:00"},   {59.49, "00:59"},   {59.5, "01:00"},
                                                    {61, "01:01"},  {6000, "100:00"},   {-3, "00:00"},
                                                    {NAN, "00:00"}, {INFINITY, "00:00"}};
    for (const auto& [seconds, text] : cases)
        EXPECT_EQ(PlayTime::Format(seconds).toStdString(), text);
}

TEST(PlayTime, Parses) {
    for (const auto& [text, seconds] :
         {std::pair("03:41", 221), std::pair("3:41", 221), std::pair("100:00", 6000), std::pair("00:00", 0)})
        EXPECT_EQ(PlayTime::Parse(QString::fromLatin1(text)), seconds) << text;
    for (const char* none :
         {"0", "", ":30", "1:3", "1:60", "-1:30", "1:2:03", "+1:03", "99999999999:00", "40000000:00"})
        EXPECT_EQ(PlayTime::Parse(QString::fromLatin1(none)), -1) << none;
}

} // namespace kalvo
