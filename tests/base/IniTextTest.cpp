#include "base/IniText.h"

#include <gtest/gtest.h>

namespace kalvo {

namespace {

std::optional<QString> ValueIn(const QByteArray& bytes, const char16_t* section, const char16_t* key) {
    return IniText(bytes).Value(QString::fromUtf16(section), QString::fromUtf16(key));
}

} // namespace

TEST(IniText, FindsKeysWithoutCase) {
    const QByteArray text = "a=0\r\n[ Mixer ]\r\n \xDC"
                            "berblendmodus = No Fading \r\n;b=1\r\n[MIXER]\r\nb=2\r\n";
    EXPECT_EQ(ValueIn(text, u"mixer", u"überblendmodus"), QStringLiteral("No Fading"));
    EXPECT_FALSE(ValueIn(text, u"Mixer", u"b")) << "a comment, and the first of two sections counts";
    EXPECT_FALSE(ValueIn(text, u"Mixer", u"a"));
    EXPECT_FALSE(ValueIn({}, u"Mixer", u"a"));
}

TEST(IniText, ReadsKeyAndValueInTheirOwnEncoding) {
    const QByteArray mixed = "[Gr\xC3\xB6\xC3\x9F"
                             "e]\n\xDC"
                             "ber=\xC4\x8C"
                             "ert\nschrift=gro\xDF\n";
    EXPECT_EQ(ValueIn(mixed, u"GRÖßE", u"über"), QStringLiteral("Čert"));
    EXPECT_EQ(ValueIn(mixed, u"Größe", u"Schrift"), QStringLiteral("groß"));
    EXPECT_EQ(ValueIn("\xEF\xBB\xBF[S]\na=1", u"S", u"a"), QStringLiteral("1"));
}

TEST(IniText, ValuesComeBackAsTheyWere) {
    for (const char16_t* value :
         {u"", u"  x ", u"\"x\"", u"'x'", u"\"", u"'", u"a=b;c", u"\"\"x\"\"", u"Čert „ü“", u"[x]"}) {
        IniText text;
        text.SetValue(QStringLiteral("Metadata"), QStringLiteral("Stop"), QString::fromUtf16(value));
        EXPECT_EQ(ValueIn(text.Bytes(), u"Metadata", u"Stop"), QString::fromUtf16(value)) << text.Bytes().constData();
    }
    EXPECT_EQ(ValueIn("[S]\na='x y '\nb=\"x'\n", u"S", u"a"), QStringLiteral("x y "));
    EXPECT_EQ(ValueIn("[S]\na='x y '\nb=\"x'\n", u"S", u"b"), QStringLiteral("\"x'"));
}

TEST(IniText, ChangesOnlyWhatIsAsked) {
    const QByteArray before =
        "; mein Kommentar \xFC\r\n\r\n[Fremd]\nfoo = bar \n\n[Mixer]\r\nkein Gleich\r\nA =1\r\n\r\n\r\n[Z]\nq='1'";
    IniText text(before);
    EXPECT_EQ(text.Bytes(), before);
    text.SetValue(QStringLiteral("MIXER"), QStringLiteral("a"), QStringLiteral("2"));
    text.SetValue(QStringLiteral("Mixer"), QStringLiteral("neu"), QStringLiteral("3"));
    text.SetValue(QStringLiteral("z"), QStringLiteral("r"), QStringLiteral("4"));
    text.SetValue(QStringLiteral("Y"), QStringLiteral("s"), QStringLiteral("5"));
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
        EXPECT_EQ(ValueIn(before, u"STYLE", u"schriftgrad"), QStringLiteral("groß"));
        EXPECT_EQ(ValueIn(before, u"ÜBER MICH", u"alternativ"), QStringLiteral("Jürgen & Söhne"));
        EXPECT_FALSE(ValueIn(before, u"Style", u"verirrt"));
        IniText text(before);
        text.SetValue(QStringLiteral("Style"), QStringLiteral("Schriftgrad"), QStringLiteral("größer"));
        QByteArray expected = before;
        const bool isUtf8 = before.contains("ö");
        const QByteArray old = isUtf8 ? QByteArrayLiteral(" groß ") : QByteArrayLiteral(" gro\xDF ");
        expected.replace(expected.indexOf(old), old.size(),
                         isUtf8 ? "größer"
                                : "gr\xF6\xDF"
                                  "er");
        EXPECT_EQ(text.Bytes(), expected);
        EXPECT_EQ(ValueIn(text.Bytes(), u"Style", u"Schriftgrad"), QStringLiteral("größer"));
    }
}

TEST(IniText, LineBreaksCannotBreakTheFile) {
    IniText text;
    text.SetValue(QStringLiteral("S"), QStringLiteral("a"), QStringLiteral("1\n[T]\r\nb=2"));
    EXPECT_FALSE(ValueIn(text.Bytes(), u"T", u"b"));
    EXPECT_EQ(ValueIn(text.Bytes(), u"S", u"a"), QStringLiteral("1 [T]  b=2"));
    text.SetValue(QStringLiteral("S"), QStringLiteral("a"), QStringLiteral("x\u0001y\u0000z"));
    EXPECT_EQ(ValueIn(text.Bytes(), u"S", u"a"), QStringLiteral("x y z"));
}

} // namespace kalvo
