#include "base/IniText.h"

#include <gtest/gtest.h>

namespace kalvo {

using namespace Qt::StringLiterals;

namespace {

std::optional<QString> ValueIn(const QByteArray& bytes, const char16_t* section, const char16_t* key) {
    return IniText(bytes).Value(QString::fromUtf16(section), QString::fromUtf16(key));
}

} // namespace

TEST(IniText, FindsKeysWithoutCase) {
    const QByteArray text = "a=0\r\n[ Mixer ]\r\n \xDC"
                            "berblendmodus = No Fading \r\n;b=1\r\n[MIXER]\r\nb=2\r\n";
    EXPECT_EQ(ValueIn(text, u"mixer", u"überblendmodus"), u"No Fading"_s);
    EXPECT_FALSE(ValueIn(text, u"Mixer", u"b")) << "a comment, and the first of two sections counts";
    EXPECT_FALSE(ValueIn(text, u"Mixer", u"a"));
    EXPECT_FALSE(ValueIn({}, u"Mixer", u"a"));
}

TEST(IniText, ReadsKeyAndValueInTheirOwnEncoding) {
    const QByteArray mixed = "[Gr\xC3\xB6\xC3\x9F"
                             "e]\n\xDC"
                             "ber=\xC4\x8C"
                             "ert\nschrift=gro\xDF\n";
    EXPECT_EQ(ValueIn(mixed, u"GRÖßE", u"über"), u"Čert"_s);
    EXPECT_EQ(ValueIn(mixed, u"Größe", u"Schrift"), u"groß"_s);
    EXPECT_EQ(ValueIn("\xEF\xBB\xBF[S]\na=1", u"S", u"a"), u"1"_s);
}

TEST(IniText, ValuesComeBackAsTheyWere) {
    for (const char16_t* value :
         {u"", u"  x ", u"\"x\"", u"'x'", u"\"", u"'", u"a=b;c", u"\"\"x\"\"", u"Čert „ü“", u"[x]"}) {
        IniText text;
        text.SetValue(u"Metadata"_s, u"Stop"_s, QString::fromUtf16(value));
        EXPECT_EQ(ValueIn(text.Bytes(), u"Metadata", u"Stop"), QString::fromUtf16(value)) << text.Bytes().constData();
    }
    EXPECT_EQ(ValueIn("[S]\na='x y '\nb=\"x'\n", u"S", u"a"), u"x y "_s);
    EXPECT_EQ(ValueIn("[S]\na='x y '\nb=\"x'\n", u"S", u"b"), u"\"x'"_s);
}

TEST(IniText, ChangesOnlyWhatIsAsked) {
    const QByteArray before =
        "; mein Kommentar \xFC\r\n\r\n[Fremd]\nfoo = bar \n\n[Mixer]\r\nkein Gleich\r\nA =1\r\n\r\n\r\n[Z]\nq='1'";
    IniText text(before);
    EXPECT_EQ(text.Bytes(), before);
    text.SetValue(u"MIXER"_s, u"a"_s, u"2"_s);
    text.SetValue(u"Mixer"_s, u"neu"_s, u"3"_s);
    text.SetValue(u"z"_s, u"r"_s, u"4"_s);
    text.SetValue(u"Y"_s, u"s"_s, u"5"_s);
    EXPECT_EQ(text.Bytes(), QByteArray("; mein Kommentar \xFC\r\n\r\n[Fremd]\nfoo = bar \n\n[Mixer]\r\nkein Gleich\r\n"
                                       "A =2\r\nneu=3\r\n\r\n\r\n[Z]\nq='1'\r\nr=4\r\n[Y]\r\ns=5\r\n"));
}

TEST(IniText, WrittenByHandInAnyFormReadsAlikeAndLosesNothing) {
    const QByteArray lines[] = {"; Größe: von Hand", "verirrt=1",
                                "[Style]",           " Schriftgrad = groß ",
                                "[Über mich]",       "Alternativ=\"Jürgen & Söhne\"",
                                "Fremd=ÄÖÜ",         "[style]",
                                "Schriftgrad=klein"};
    const auto file = [&lines](bool asUtf8, const QByteArrayList& ends, const QByteArray& mark) {
        QByteArray bytes = mark;
        qsizetype line = 0;
        for (const QByteArray& text : lines)
            bytes += (asUtf8 ? text : QString::fromUtf8(text).toLatin1()) + ends[line++ % ends.size()];
        bytes.chop(ends[(line - 1) % ends.size()].size()); // no line end at the file's end
        return bytes;
    };
    const QByteArray files[] = {file(false, {"\r\n"}, {}), file(true, {"\n"}, {}), file(true, {"\r\n"}, "\xEF\xBB\xBF"),
                                file(false, {"\r\n", "\n", "\r"}, {})};
    for (const QByteArray& before : files) {
        SCOPED_TRACE(before.toPercentEncoding().constData());
        EXPECT_EQ(ValueIn(before, u"STYLE", u"schriftgrad"), u"groß"_s);
        EXPECT_EQ(ValueIn(before, u"ÜBER MICH", u"alternativ"), u"Jürgen & Söhne"_s);
        EXPECT_FALSE(ValueIn(before, u"Style", u"verirrt"));
        IniText text(before);
        text.SetValue(u"Style"_s, u"Schriftgrad"_s, u"größer"_s);
        QByteArray expected = before;
        const bool isUtf8 = before.contains("ö");
        const QByteArray old = isUtf8 ? QByteArrayLiteral(" groß ") : QByteArrayLiteral(" gro\xDF ");
        expected.replace(expected.indexOf(old), old.size(),
                         isUtf8 ? "größer"
                                : "gr\xF6\xDF"
                                  "er");
        EXPECT_EQ(text.Bytes(), expected);
        EXPECT_EQ(ValueIn(text.Bytes(), u"Style", u"Schriftgrad"), u"größer"_s);
    }
}

TEST(IniText, LineBreaksCannotBreakTheFile) {
    IniText text;
    text.SetValue(u"S"_s, u"a"_s, u"1\n[T]\r\nb=2"_s);
    EXPECT_FALSE(ValueIn(text.Bytes(), u"T", u"b"));
    EXPECT_EQ(ValueIn(text.Bytes(), u"S", u"a"), u"1 [T]  b=2"_s);
    text.SetValue(u"S"_s, u"a"_s, u"x\u0001y\u0000z"_s);
    EXPECT_EQ(ValueIn(text.Bytes(), u"S", u"a"), u"x y z"_s);
}

} // namespace kalvo
