#include "app/OptionValues.h"

#include "base/Settings.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

constexpr int kFontHeight = 13;

class OptionValuesTest : public ::testing::Test {
protected:
    OptionValues Read() const {
        return OptionValues::Read(Settings(folder.Path(QStringLiteral("kalvo.ini"))), charts, kFontHeight);
    }
    void Write(const OptionValues& values) {
        Settings settings(folder.Path(QStringLiteral("kalvo.ini")));
        values.Write(settings, charts);
    }

    test::TestFolder folder;
    QString charts = folder.Path(QStringLiteral("optionen.dll"));
};

TEST_F(OptionValuesTest, WithoutFilesEverythingHasItsDefault) {
    const OptionValues values = Read();
    EXPECT_EQ(values.metaStatus, QStringLiteral("2144"));
    EXPECT_TRUE(values.metaAlternative.isEmpty() && values.metaStop.isEmpty() && values.password.isEmpty());
    EXPECT_EQ(values.columns, GridColumns::Defaults(kFontHeight));
    EXPECT_EQ(values.chartsLimit, QStringLiteral("200"));
    EXPECT_TRUE(values.preload && values.useCuePoints);
    EXPECT_FALSE(values.tagsIntoLists || values.removePlayed || values.screenSaverKeys);
    EXPECT_EQ(values.scanInterval, 7);
    EXPECT_EQ(values.switchOver, 9);
    EXPECT_EQ(values.fadeInterval, 30);
    EXPECT_EQ(values.meterStyle, QStringLiteral("Analyzer"));
    EXPECT_EQ(values.skin, QStringLiteral("Light Green"));
    EXPECT_EQ(values.output.device, 1);
    EXPECT_EQ(values.headphones.device, 0);
    EXPECT_EQ(values.volume, 35);
    EXPECT_EQ(values.levelReduction, 50);
    EXPECT_EQ(values.microphoneLevel, 80);
}

TEST_F(OptionValuesTest, WritesEveryKeyInItsOrder) {
    OptionValues values = Read();
    values.metaStop = QStringLiteral("Pause – gleich geht's weiter");
    values.fontSize = QStringLiteral("groß");
    values.buttonSize = QStringLiteral("gross");
    Write(values);
    const QString written = QString::fromLatin1(folder.Read(QStringLiteral("kalvo.ini")));
    qsizetype at = 0;
    for (const char* line : {"[Metadata]",
                             "Status=2144",
                             "Alternativ=",
                             "Stop=Pause",
                             "[MA0]",
                             "Caption=Titel",
                             "Width=",
                             "Visible=1",
                             "DataField=Titel",
                             "[MA11]",
                             "[Mixer]",
                             "Nachladen=1",
                             "ID3WL=0",
                             "WlLoeschen=0",
                             "Überblendgeschwindigkeit=30",
                             "Umschaltzeitpunkt=9",
                             "ScanIntervall=7",
                             "Überblendmodus=Fade-CrossOver",
                             "[Style]",
                             "Schriftgrad=groß",
                             "Buttongroesse=gross",
                             "Skin=Light Green",
                             "[Musikarchiv]",
                             "Wheel=3",
                             "[Equalizer]",
                             "Lautstärke=35",
                             "Pegelabsenkung=50",
                             "Mikrofonpegel=80",
                             "[VU Meter]",
                             "Style=Analyzer",
                             "Farbe=",
                             "[Bildschirmschoner]",
                             "Passwort=0",
                             "Tastaturfunktion=0",
                             "[Soundkarte]",
                             "Device=0",
                             "Index=0",
                             "DeviceW=1"}) {
        const qsizetype found = written.indexOf(QString::fromUtf8(line), at);
        ASSERT_GE(found, at) << line << "\n" << written.toStdString();
        at = found;
    }
}

TEST_F(OptionValuesTest, EverythingComesBack) {
    OptionValues values = Read();
    values.metaAlternative = QStringLiteral(" \"ohne Titel\" ");
    values.columns.move(0, 3);
    values.columns[1].caption = QStringLiteral("Größe");
    values.columns[2].visible = false;
    values.meterColour = 0x123456;
    values.meterStyle = QStringLiteral("Kreis 2Kanal");
    values.password = QStringLiteral("geheim; = \"x\"");
    values.screenSaverKeys = true;
    values.fadeMode = FadeMode::NoFading;
    values.fadeInterval = 5;
    values.wheelRows = 8;
    values.headphones = {3, QStringLiteral("USB-Kopfhörer")};
    values.output = {2, QStringLiteral("Built-in")};
    values.buffer = QStringLiteral("sicher");
    values.useCuePoints = false;
    values.chartsLimit = QStringLiteral("50");
    folder.Write(QStringLiteral("optionen.dll"), "\"1\",2,\"drei\"\n4\n");
    Write(values);
    EXPECT_EQ(folder.Read(QStringLiteral("optionen.dll")), QByteArray("\"50\"\r\n")) << "exactly one value";
    OptionValues read = Read();
    EXPECT_EQ(read.password, values.password);
    // Nothing differs: taking what changed gives back the other side whole.
    OptionValues other;
    other.metaStatus = QStringLiteral("anders");
    read.KeepChangesOnly(values, other);
    EXPECT_EQ(read.metaStatus, other.metaStatus);
    EXPECT_EQ(read.columns, other.columns);
    EXPECT_EQ(read.headphones, other.headphones);
    EXPECT_EQ(read.output, other.output);
    EXPECT_EQ(read.meterColour, other.meterColour);
    EXPECT_EQ(read.metaAlternative, other.metaAlternative);
    EXPECT_EQ(read.fadeMode, other.fadeMode);
    EXPECT_EQ(read.chartsLimit, other.chartsLimit);
}

TEST_F(OptionValuesTest, WhatIsOutOfRangeCountsAsAbsent) {
    folder.Write(QStringLiteral("kalvo.ini"),
                 "[Mixer]\nScanIntervall=0\nUmschaltzeitpunkt=bald\n[VU Meter]\nFarbe=-7\nStyle=Rund\n"
                 "[Style]\nSkin=Pink\nButtongroesse=gro\xDF\n[Musikarchiv]\nWheel=99\n[Equalizer]\nLautst\xE4rke=101\n"
                 "[Bildschirmschoner]\nPasswort=0\n[Soundkarte]\nPuffer=riesig\n");
    const OptionValues values = Read();
    EXPECT_EQ(values.scanInterval, 7);
    EXPECT_EQ(values.switchOver, 9);
    EXPECT_EQ(values.meterColour, OptionValues::kNoColour);
    EXPECT_EQ(values.meterStyle, QStringLiteral("Analyzer"));
    EXPECT_EQ(values.skin, QStringLiteral("Light Green"));
    EXPECT_EQ(values.buttonSize, QStringLiteral("klein"));
    EXPECT_EQ(values.wheelRows, 3);
    EXPECT_EQ(values.volume, 35);
    EXPECT_TRUE(values.password.isEmpty());
    EXPECT_EQ(values.buffer, QStringLiteral("normal"));
}

TEST_F(OptionValuesTest, OnlyWhatWasChangedIsTaken) {
    const OptionValues opened = Read();
    OptionValues edited = opened;
    edited.switchOver = 12;
    OptionValues now = opened;
    now.volume = 90;
    now.switchOver = 5;
    edited.KeepChangesOnly(opened, now);
    EXPECT_EQ(edited.switchOver, 12);
    EXPECT_EQ(edited.volume, 90) << "moved in the main window meanwhile";
}

} // namespace
} // namespace kalvo
