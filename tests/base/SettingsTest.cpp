#include "base/Settings.h"
#include "base/IniText.h"
#include "support/TestFolder.h"

#include <QDir>
#include <gtest/gtest.h>
#include <unistd.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

std::optional<QString> ValueIn(const QByteArray& bytes, const char16_t* section, const char16_t* key) {
    return IniText(bytes).Value(QString::fromUtf16(section), QString::fromUtf16(key));
}

TEST(IniText, FindsKeysWithoutCase) {
    const QByteArray text = "a=0\r\n[ Mixer ]\r\n \334berblendmodus = No Fading \r\n;b=1\r\n[MIXER]\r\nb=2\r\n";
    EXPECT_EQ(ValueIn(text, u"mixer", u"überblendmodus"), u"No Fading"_s);
    EXPECT_FALSE(ValueIn(text, u"Mixer", u"b")) << "a comment, and the first of two sections counts";
    EXPECT_FALSE(ValueIn(text, u"Mixer", u"a"));
    EXPECT_FALSE(ValueIn({}, u"Mixer", u"a"));
}

TEST(IniText, ReadsKeyAndValueInTheirOwnEncoding) {
    const QByteArray mixed = "[Größe]\n\334ber=Čert\nschrift=gro\337\n";
    EXPECT_EQ(ValueIn(mixed, u"GRÖßE", u"über"), u"Čert"_s);
    EXPECT_EQ(ValueIn(mixed, u"Größe", u"Schrift"), u"groß"_s);
    EXPECT_EQ(ValueIn("\xEF\xBB\xBF[S]\na=1", u"S", u"a"), u"1"_s);
}

TEST(IniText, ValuesComeBackAsTheyWere) {
    for (const QString& value : u"|  x |\"x\"|'x'|\"|'|a=b;c|\"\"x\"\"|Čert „ü“|[x]"_s.split(u'|')) {
        IniText text;
        text.SetValue(u"Metadata"_s, u"Stop"_s, value);
        EXPECT_EQ(ValueIn(text.Bytes(), u"Metadata", u"Stop"), value) << text.Bytes().constData();
    }
    EXPECT_EQ(ValueIn("[S]\na='x y '\n", u"S", u"a"), u"x y "_s);
    EXPECT_EQ(ValueIn("[S]\nb=\"x'\n", u"S", u"b"), u"\"x'"_s);
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
    const QByteArrayList lines = QByteArray("; Größe: von Hand|verirrt=1|[Style]| Schriftgrad = groß |[Über mich]|"
                                            "Alternativ=\"Jürgen & Söhne\"|Fremd=ÄÖÜ|[style]|Schriftgrad=klein")
                                     .split('|');
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
        QByteArray expected = before; // the word stands there once, between blanks
        expected.replace(" groß ", "größer").replace(" gro\337 ", "gr\366\337er");
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

struct SettingsTest : ::testing::Test {
    QString Get(const char* key, const char* fallback = "-") const {
        return settings.GetSetting(u"S"_s, QString::fromUtf8(key), QString::fromUtf8(fallback));
    }
    void Put(const char* key, const QString& value) { settings.PutSetting(u"S"_s, QString::fromUtf8(key), value); }

    test::TestFolder folder;
    Settings settings{folder.Path(u"kalvo.ini"_s)};
};

TEST_F(SettingsTest, MissingFileGivesDefaultsAndIsCreatedByTheFirstWrite) {
    EXPECT_EQ(Get("a"), u"-"_s);
    EXPECT_TRUE(settings.GetSwitch(u"S"_s, u"a"_s, true));
    Put("a", u"ü"_s);
    EXPECT_EQ(folder.Read(u"kalvo.ini"_s), QByteArray("[S]\r\na=\xFC\r\n"));
}

TEST_F(SettingsTest, CutsAt255OnReading) {
    Put("a", QString(300, u'x'));
    EXPECT_EQ(Get("a"), QString(255, u'x'));
    Put("a", QString(254, u'x') + u"😀"_s);
    EXPECT_EQ(Get("a"), QString(254, u'x')) << "no half characters";
    EXPECT_TRUE(folder.Read(u"kalvo.ini"_s).contains("😀"));
}

TEST_F(SettingsTest, ConvertsOnlyWhatFits) {
    const std::tuple<const char*, int, bool> cases[] = {{"1", 1, true}, {"0", 0, false},   {"-7", -7, false},
                                                        {"", 5, false}, {"1,5", 5, false}, {"ja", 5, false}};
    for (const auto& [text, number, isOn] : cases) {
        Put("a", QString::fromUtf8(text));
        EXPECT_EQ(settings.GetNumber(u"S"_s, u"a"_s, 5), number) << text;
        EXPECT_EQ(settings.GetSwitch(u"S"_s, u"a"_s, true), isOn) << text;
    }
}

TEST_F(SettingsTest, SeesForeignChangesAndKeepsThem) {
    Put("a", u"1"_s);
    folder.Write(u"kalvo.ini"_s, "[S]\na=22\nfremd=x\n");
    EXPECT_EQ(Get("a"), u"22"_s);
    {
        const Settings::Pass pass(settings);
        Put("b", u"3"_s);
        folder.Write(u"kalvo.ini"_s, "[S]\na=222\nfremd=yy\n");
        EXPECT_EQ(Get("b"), u"3"_s);
        EXPECT_EQ(folder.Read(u"kalvo.ini"_s), QByteArray("[S]\na=222\nfremd=yy\n"));
    }
    EXPECT_EQ(folder.Read(u"kalvo.ini"_s), QByteArray("[S]\na=222\nfremd=yy\nb=3\n"));
}

TEST_F(SettingsTest, PassesNestAndCoverSeveralFiles) {
    const QString other = folder.Path(u"other.ini"_s);
    {
        const Settings::Pass outer(settings);
        {
            const Settings::Pass inner(settings);
            Put("a", u"1"_s);
            settings.PutSetting(u"S"_s, u"a"_s, u"2"_s, other);
        }
        EXPECT_FALSE(QFile::exists(other));
    }
    EXPECT_EQ(Settings(other).GetSetting(u"s"_s, u"A"_s, {}), u"2"_s);
    EXPECT_EQ(Get("a"), u"1"_s);
}

TEST_F(SettingsTest, AFailedWriteKeepsTheValueForTheNextOne) {
    Settings lost(folder.Path(u"later/kalvo.ini"_s));
    lost.PutSetting(u"S"_s, u"a"_s, u"1"_s);
    EXPECT_EQ(lost.GetSetting(u"S"_s, u"a"_s, {}), u"1"_s);
    ASSERT_TRUE(QDir().mkpath(folder.Path(u"later"_s)));
    lost.PutSetting(u"S"_s, u"b"_s, u"2"_s);
    EXPECT_EQ(folder.Read(u"later/kalvo.ini"_s), QByteArray("[S]\r\na=1\r\nb=2\r\n"));
}

TEST_F(SettingsTest, NeverReplacesWhatItCannotRead) {
    if (::geteuid() == 0)
        GTEST_SKIP() << "nothing is unreadable for the administrator";
    const QString path = folder.Write(u"kalvo.ini"_s, "[S]\na=1\n");
    ASSERT_TRUE(QFile::setPermissions(path, {}));
    Put("b", u"2"_s);
    EXPECT_EQ(Get("a"), u"-"_s);
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner));
    EXPECT_EQ(folder.Read(u"kalvo.ini"_s), QByteArray("[S]\na=1\n"));
}

TEST_F(SettingsTest, ADamagedFileCountsAsMissingAndIsKept) {
    const QByteArray damaged = "[S]\na=1\n" + QByteArray(64, '\0');
    folder.Write(u"kalvo.ini"_s, damaged);
    EXPECT_EQ(Get("a"), u"-"_s);
    Put("a", u"2"_s);
    EXPECT_EQ(Get("a"), u"2"_s) << "for this run";
    EXPECT_EQ(folder.Read(u"kalvo.ini"_s), damaged);
    ASSERT_TRUE(QFile::remove(folder.Path(u"kalvo.ini"_s)));
    Put("b", u"3"_s);
    EXPECT_EQ(folder.Read(u"kalvo.ini"_s), QByteArray("[S]\r\na=2\r\nb=3\r\n"));
}

} // namespace
} // namespace kalvo
