#include "app/OptionValues.h"

#include "base/Settings.h"
#include "base/ValueFile.h"
#include "widgets/Skin.h"

#include <algorithm>
#include <tuple>

namespace kalvo {

namespace {

const QString kMetadata = QStringLiteral("Metadata");
const QString kMixer = QStringLiteral("Mixer");
const QString kEqualizer = QStringLiteral("Equalizer");
const QString kMeter = QStringLiteral("VU Meter");
const QString kStyle = QStringLiteral("Style");
const QString kScreenSaver = QStringLiteral("Bildschirmschoner");
const QString kSoundCard = QStringLiteral("Soundkarte");
const QString kNoPassword = QStringLiteral("0");
constexpr int kLargestColour = 0xFFFFFF;

/** A number of the file; outside its range it counts as absent. */
int Number(const Settings& settings, const QString& section, const char16_t* key, int lowest, int highest,
           int fallback) {
    const int number = settings.GetNumber(section, QString::fromUtf16(key), fallback);
    return number >= lowest && number <= highest ? number : fallback;
}

/** A text of the file; one that is no choice counts as absent. */
QString Choice(const Settings& settings, const QString& section, const char16_t* key, const QStringList& choices,
               const QString& fallback) {
    const QString text = settings.GetSetting(section, QString::fromUtf16(key), fallback);
    return choices.contains(text) ? text : fallback;
}

void ReadLooks(OptionValues& values, const Settings& settings) {
    values.skin = Choice(settings, kStyle, u"Skin", Skins::Names(), values.skin);
    values.fontSize =
        Choice(settings, kStyle, u"Schriftgrad",
               {QStringLiteral("klein"), QStringLiteral("mittel"), QStringLiteral("groß")}, values.fontSize);
    values.buttonSize = Choice(settings, kStyle, u"Buttongroesse", {QStringLiteral("klein"), QStringLiteral("gross")},
                               values.buttonSize);
    values.meterStyle = Choice(settings, kMeter, u"Style", OptionValues::MeterStyles(), values.meterStyle);
    values.meterColour = Number(settings, kMeter, u"Farbe", 0, kLargestColour, OptionValues::kNoColour);
}

void ReadMixing(OptionValues& values, const Settings& settings) {
    const MixerOptions mixing = MixerOptions::Read(settings);
    values.preload = mixing.preload;
    values.removePlayed = mixing.removePlayed;
    values.fadeInterval = mixing.fadeInterval;
    values.switchOver = mixing.switchOver;
    values.fadeMode = mixing.mode;
    values.tagsIntoLists = settings.GetSwitch(kMixer, QStringLiteral("ID3WL"), values.tagsIntoLists);
    values.scanInterval = Number(settings, kMixer, u"ScanIntervall", 1, 99, values.scanInterval);
    values.useCuePoints = settings.GetSwitch(kMixer, QStringLiteral("CuePunkte"), values.useCuePoints);
    values.emergencyTitle = settings.GetSetting(kMixer, QStringLiteral("Notfalltitel"), {});
    values.emergencyAtEnd = settings.GetSwitch(kMixer, QStringLiteral("NotfalltitelAmEnde"), false);
    values.evenLoudness = settings.GetSwitch(kMixer, QStringLiteral("LautheitAusgleich"), values.evenLoudness);
    values.volume = Number(settings, kEqualizer, u"Lautstärke", 0, 100, values.volume);
    values.levelReduction = Number(settings, kEqualizer, u"Pegelabsenkung", 0, 100, values.levelReduction);
    values.microphoneLevel = Number(settings, kEqualizer, u"Mikrofonpegel", 0, 100, values.microphoneLevel);
}

void WriteMetadata(const OptionValues& values, Settings& settings) {
    settings.PutSetting(kMetadata, QStringLiteral("Status"), values.metaStatus);
    settings.PutSetting(kMetadata, QStringLiteral("Alternativ"), values.metaAlternative);
    settings.PutSetting(kMetadata, QStringLiteral("Stop"), values.metaStop);
}

void WriteLevels(const OptionValues& values, Settings& settings) {
    settings.PutNumber(kEqualizer, QStringLiteral("Lautstärke"), values.volume);
    settings.PutNumber(kEqualizer, QStringLiteral("Pegelabsenkung"), values.levelReduction);
    settings.PutNumber(kEqualizer, QStringLiteral("Mikrofonpegel"), values.microphoneLevel);
    settings.PutSetting(kMeter, QStringLiteral("Style"), values.meterStyle);
    settings.PutSetting(kMeter, QStringLiteral("Farbe"),
                        values.meterColour == OptionValues::kNoColour ? QString()
                                                                      : QString::number(values.meterColour));
}

void WriteFading(const OptionValues& values, Settings& settings) {
    settings.PutSwitch(kMixer, QStringLiteral("WlLoeschen"), values.removePlayed);
    settings.PutNumber(kMixer, QStringLiteral("Überblendgeschwindigkeit"), values.fadeInterval);
    settings.PutNumber(kMixer, QStringLiteral("Umschaltzeitpunkt"), values.switchOver);
}

void WriteOutputs(const OptionValues& values, Settings& settings) {
    values.headphones.Write(settings, audio::Output::Headphones);
    // The list shows every device from number 0 on, so that the place in it is the number.
    settings.PutNumber(kSoundCard, QStringLiteral("Index"), values.headphones.device);
    values.output.Write(settings);
    OutputBuffer::Write(settings, values.buffer);
}

} // namespace

QStringList OptionValues::MeterStyles() {
    return {QStringLiteral("Kein"),         QStringLiteral("Analyzer"),       QStringLiteral("VU Meter"),
            QStringLiteral("Vertikal"),     QStringLiteral("Horizontal"),     QStringLiteral("Kreis 1Kanal"),
            QStringLiteral("Kreis 2Kanal"), QStringLiteral("Ellipse 1Kanal"), QStringLiteral("Ellipse 2Kanal")};
}

MeterStyle OptionValues::MeterStyleOf(const QString& name) {
    const auto index = MeterStyles().indexOf(name);
    return index < 0 ? MeterStyle::Analyzer : static_cast<MeterStyle>(index);
}

QColor OptionValues::ColourOf(int number) {
    return number == kNoColour ? QColor() : QColor(number & 0xFF, (number >> 8) & 0xFF, (number >> 16) & 0xFF);
}

OptionValues OptionValues::Read(const Settings& settings, const QString& chartsPath, int fontHeight) {
    OptionValues values;
    values.metaStatus = settings.GetSetting(kMetadata, QStringLiteral("Status"), values.metaStatus);
    values.metaAlternative = settings.GetSetting(kMetadata, QStringLiteral("Alternativ"), {});
    values.metaStop = settings.GetSetting(kMetadata, QStringLiteral("Stop"), {});
    values.columns = GridColumns::Read(settings, fontHeight);
    values.chartsLimit = ValueFile::Read(chartsPath).value(0, values.chartsLimit);
    values.wheelRows = Number(settings, QStringLiteral("Musikarchiv"), u"Wheel", 1, 20, values.wheelRows);
    const QString password = settings.GetSetting(kScreenSaver, QStringLiteral("Passwort"), kNoPassword);
    values.password = password == kNoPassword ? QString() : password;
    values.screenSaverKeys = settings.GetSwitch(kScreenSaver, QStringLiteral("Tastaturfunktion"), false);
    values.headphones = OutputChoice::Read(settings, audio::Output::Headphones);
    values.output = OutputChoice::Read(settings);
    values.buffer = OutputBuffer::Read(settings);
    values.desktop = DesktopOptions::Read(settings);
    ReadLooks(values, settings);
    ReadMixing(values, settings);
    return values;
}

void OptionValues::Write(Settings& settings, const QString& chartsPath) const {
    const Settings::Pass pass(settings);
    WriteMetadata(*this, settings);
    GridColumns::Write(settings, columns);
    ValueFile::Write(chartsPath, {chartsLimit});
    settings.PutSwitch(kMixer, QStringLiteral("Nachladen"), preload);
    settings.PutSwitch(kMixer, QStringLiteral("ID3WL"), tagsIntoLists);
    settings.PutSetting(kStyle, QStringLiteral("Schriftgrad"), fontSize);
    settings.PutSetting(kStyle, QStringLiteral("Buttongroesse"), buttonSize);
    settings.PutNumber(QStringLiteral("Musikarchiv"), QStringLiteral("Wheel"), wheelRows);
    WriteLevels(*this, settings);
    settings.PutSetting(kScreenSaver, QStringLiteral("Passwort"), password.isEmpty() ? kNoPassword : password);
    settings.PutSwitch(kScreenSaver, QStringLiteral("Tastaturfunktion"), screenSaverKeys);
    WriteFading(*this, settings);
    settings.PutNumber(kMixer, QStringLiteral("ScanIntervall"), scanInterval);
    settings.PutSetting(kMixer, QStringLiteral("Überblendmodus"), FadeModeText(fadeMode));
    settings.PutSetting(kStyle, QStringLiteral("Skin"), skin);
    WriteOutputs(*this, settings);
    settings.PutSwitch(kMixer, QStringLiteral("CuePunkte"), useCuePoints);
    settings.PutSetting(kMixer, QStringLiteral("Notfalltitel"), emergencyTitle);
    settings.PutSwitch(kMixer, QStringLiteral("NotfalltitelAmEnde"), emergencyAtEnd);
    settings.PutSwitch(kMixer, QStringLiteral("LautheitAusgleich"), evenLoudness);
    desktop.Write(settings);
}

void OptionValues::KeepChangesOnly(const OptionValues& before, const OptionValues& now) {
    constexpr auto fields = std::make_tuple(
        &OptionValues::metaStatus, &OptionValues::metaAlternative, &OptionValues::metaStop, &OptionValues::columns,
        &OptionValues::chartsLimit, &OptionValues::preload, &OptionValues::tagsIntoLists, &OptionValues::fontSize,
        &OptionValues::buttonSize, &OptionValues::wheelRows, &OptionValues::volume, &OptionValues::levelReduction,
        &OptionValues::microphoneLevel, &OptionValues::meterStyle, &OptionValues::meterColour, &OptionValues::password,
        &OptionValues::screenSaverKeys, &OptionValues::removePlayed, &OptionValues::fadeInterval,
        &OptionValues::switchOver, &OptionValues::scanInterval, &OptionValues::fadeMode, &OptionValues::skin,
        &OptionValues::headphones, &OptionValues::output, &OptionValues::buffer, &OptionValues::useCuePoints,
        &OptionValues::emergencyTitle, &OptionValues::emergencyAtEnd, &OptionValues::evenLoudness,
        &OptionValues::desktop);
    const auto keep = [&](auto field) {
        if (this->*field == before.*field)
            this->*field = now.*field;
    };
    std::apply([&keep](auto... field) { (keep(field), ...); }, fields);
}

} // namespace kalvo
