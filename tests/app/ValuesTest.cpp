#include "app/OptionValues.h"

#include "app/WindowValues.h"
#include "base/Settings.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

constexpr int kFontHeight = 13;

struct OptionValuesTest : ::testing::Test {
    OptionValues Read() const { return OptionValues::Read(Settings(folder.Path(u"kalvo.ini"_s)), charts, kFontHeight); }
    void Write(const OptionValues& values) {
        Settings settings(folder.Path(u"kalvo.ini"_s));
        values.Write(settings, charts);
    }

    test::TestFolder folder;
    QString charts = folder.Path(u"optionen.dll"_s);
};

TEST_F(OptionValuesTest, WritesEveryKeyInItsOrderAndStartsWithItsDefault) {
    OptionValues values = Read();
    EXPECT_EQ(values.columns, GridColumns::Defaults(kFontHeight));
    values.metaStop = u"Pause – gleich geht's weiter"_s;
    values.fontSize = u"groß"_s;
    values.buttonSize = u"gross"_s;
    Write(values);
    const QString written = QString::fromLatin1(folder.Read(u"kalvo.ini"_s));
    qsizetype at = 0;
    for (const QString& line :
         u"[Metadata]|Status=2144|Alternativ=|Stop=Pause|[MA0]|Caption=Titel|Width=|Visible=1|DataField=Titel|[MA11]|"
         "[Mixer]|Nachladen=1|ID3WL=0|WlLoeschen=0|Überblendgeschwindigkeit=30|Umschaltzeitpunkt=9|ScanIntervall=7|"
         "Überblendmodus=Fade-CrossOver|[Style]|Schriftgrad=groß|Buttongroesse=gross|Skin=Light Green|[Musikarchiv]|"
         "Wheel=3|[Equalizer]|Lautstärke=35|Pegelabsenkung=50|Mikrofonpegel=80|[VU Meter]|Style=Analyzer|Farbe=|"
         "[Bildschirmschoner]|Passwort=0|Tastaturfunktion=0|[Soundkarte]|Device=0|Index=0|DeviceW=1"_s.split(u'|')) {
        const qsizetype found = written.indexOf(line, at);
        ASSERT_GE(found, at) << line.toStdString() << "\n" << written.toStdString();
        at = found;
    }
}

TEST_F(OptionValuesTest, EverythingComesBack) {
    OptionValues values = Read();
    values.metaAlternative = u" \"ohne Titel\" "_s;
    values.columns.move(0, 3);
    values.columns[1].caption = u"Größe"_s;
    values.columns[2].visible = false;
    values.meterColour = 0x123456;
    values.meterStyle = u"Kreis 2Kanal"_s;
    values.password = u"geheim; = \"x\""_s;
    values.screenSaverKeys = true;
    values.fadeMode = FadeMode::NoFading;
    values.fadeInterval = 5;
    values.wheelRows = 8;
    values.headphones = {3, u"USB-Kopfhörer"_s};
    values.output = {2, u"Built-in"_s};
    values.buffer = u"sicher"_s;
    values.useCuePoints = false;
    values.evenLoudness = true;
    values.chartsLimit = u"50"_s;
    folder.Write(u"optionen.dll"_s, "\"1\",2,\"drei\"\n4\n");
    Write(values);
    EXPECT_EQ(folder.Read(u"optionen.dll"_s), QByteArray("\"50\"\r\n")) << "exactly one value";
    // Nothing differs: taking what changed gives back the other side whole.
    OptionValues read = Read();
    OptionValues other;
    read.KeepChangesOnly(values, other);
    EXPECT_EQ(std::tie(read.columns, read.headphones, read.output, read.meterColour, read.metaAlternative,
                       read.password, read.fadeMode, read.chartsLimit, read.wheelRows, read.buffer),
              std::tie(other.columns, other.headphones, other.output, other.meterColour, other.metaAlternative,
                       other.password, other.fadeMode, other.chartsLimit, other.wheelRows, other.buffer));
}

TEST_F(OptionValuesTest, WhatIsOutOfRangeCountsAsAbsent) {
    folder.Write(u"kalvo.ini"_s,
                 "[Mixer]\nScanIntervall=0\nUmschaltzeitpunkt=bald\n[VU Meter]\nFarbe=-7\nStyle=Rund\n"
                 "[Style]\nSkin=Pink\nButtongroesse=gro\xDF\n[Musikarchiv]\nWheel=99\n[Equalizer]\nLautst\xE4rke=101\n"
                 "[Bildschirmschoner]\nPasswort=0\n[Soundkarte]\nPuffer=riesig\n");
    const OptionValues values = Read();
    EXPECT_EQ(std::tuple(values.scanInterval, values.switchOver, values.meterColour, values.wheelRows, values.volume),
              std::tuple(7, 9, OptionValues::kNoColour, 3, 35));
    EXPECT_EQ((QStringList{values.meterStyle, values.skin, values.buttonSize, values.password, values.buffer}),
              (QStringList{u"Analyzer"_s, u"Light Green"_s, u"klein"_s, QString(), u"normal"_s}));
}

TEST(WindowValues, ComeBackAsTheyWereWritten) {
    const test::TestFolder folder;
    WindowValues values;
    values.geometry = QRect(-20, 30, 1024, 700);
    values.maximised = true;
    values.consoleHeight = 400;
    values.continuous = false;
    values.importFolder = u"/musik/\"Männer\", neu"_s;
    const QString path = folder.Path(u"kalvo.dll"_s);
    ASSERT_TRUE(values.Write(path));
    const WindowValues read = WindowValues::Read(path);
    EXPECT_EQ(std::tie(read.geometry, read.maximised, read.consoleHeight, read.continuous, read.automatic),
              std::tie(values.geometry, values.maximised, values.consoleHeight, values.continuous, values.automatic));
    EXPECT_EQ(read.importFolder, values.importFolder);
}

TEST(WindowValues, TakeDefaultsForWhatIsMissingOrBroken) {
    const test::TestFolder folder;
    const QString path = folder.Write(u"kalvo.dll"_s, "10,20,unsinn,,0,\"\",99");
    const WindowValues read = WindowValues::Read(path);
    EXPECT_TRUE(read.geometry.isNull());
    EXPECT_EQ(read.consoleHeight, 318);
    EXPECT_EQ(read.treeWidth, 99);
    EXPECT_TRUE(read.continuous);
    EXPECT_TRUE(WindowValues::Read(folder.Path(u"keine"_s)).importFolder.isEmpty());
    folder.Write(u"kalvo.dll"_s, "0,0,2000000000,700,0,-5,1999999999,1,#TRUE#,0,\"/m\",zu,viele");
    const WindowValues wild = WindowValues::Read(path);
    EXPECT_TRUE(wild.geometry.isNull());
    EXPECT_EQ(std::pair(wild.consoleHeight, wild.treeWidth), std::pair(318, 210));
    EXPECT_FALSE(wild.automatic);
    EXPECT_EQ(wild.importFolder, u"/m"_s);
}

} // namespace
} // namespace kalvo
