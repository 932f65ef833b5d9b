#include "playback/MixerOptions.h"

#include "base/Settings.h"

#include <algorithm>

namespace kalvo {

namespace {

const QString kSection = QStringLiteral("Mixer");
const QString kNoFading = QStringLiteral("No Fading");
const QString kFadeCrossOver = QStringLiteral("Fade-CrossOver");

} // namespace

MixerOptions MixerOptions::Read(const Settings& settings) {
    MixerOptions options;
    options.mode = FadeModeFromText(settings.GetSetting(kSection, QStringLiteral("Überblendmodus"), kFadeCrossOver));
    const int interval = settings.GetNumber(kSection, QStringLiteral("Überblendgeschwindigkeit"), kDefaultFadeInterval);
    options.fadeInterval = kFadeSpeeds.at(static_cast<std::size_t>(FadeSpeedIndex(interval))).interval;
    options.switchOver = std::max(0, settings.GetNumber(kSection, QStringLiteral("Umschaltzeitpunkt"), 9));
    options.removePlayed = settings.GetSwitch(kSection, QStringLiteral("WlLoeschen"), false);
    options.preload = settings.GetSwitch(kSection, QStringLiteral("Nachladen"), true);
    return options;
}

QString FadeModeText(FadeMode mode) {
    return mode == FadeMode::NoFading ? kNoFading : kFadeCrossOver;
}

FadeMode FadeModeFromText(const QString& text) {
    return text == kNoFading ? FadeMode::NoFading : FadeMode::FadeCrossOver;
}

QString FadeModeCaption(FadeMode mode) {
    return QStringLiteral("Überblendmodus: ") + FadeModeText(mode);
}

QString ContinuousCaption(bool on) {
    return on ? QStringLiteral("Kontinuierliche Wiedergabe") : QStringLiteral("Keine Kontinuierliche Wiedergabe");
}

QString AutomaticCaption(bool on) {
    return on ? QStringLiteral("Mixerautomatik Aktiv") : QStringLiteral("Mixerautomatik Nicht Aktiv");
}

} // namespace kalvo
