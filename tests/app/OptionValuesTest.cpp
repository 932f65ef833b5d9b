#include "app/OptionValues.h"

#include "base/Settings.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

constexpr int kFontHeight = 13;

class OptionValuesTest : public ::testing::Test {
protected:
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
    EXPECT_EQ(values.scanInterval, 7);
    EXPECT_EQ(values.switchOver, 9);
    EXPECT_EQ(values.meterColour, OptionValues::kNoColour);
    EXPECT_EQ(values.meterStyle, u"Analyzer"_s);
    EXPECT_EQ(values.skin, u"Light Green"_s);
    EXPECT_EQ(values.buttonSize, u"klein"_s);
    EXPECT_EQ(values.wheelRows, 3);
    EXPECT_EQ(values.volume, 35);
    EXPECT_TRUE(values.password.isEmpty());
    EXPECT_EQ(values.buffer, u"normal"_s);
}

} // namespace
} // namespace kalvo
