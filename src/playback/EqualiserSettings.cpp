#include "playback/EqualiserSettings.h"

#include "base/Settings.h"

#include <algorithm>
#include <cmath>

namespace kalvo {

namespace {

const QString kEqualiserSection = QStringLiteral("Equalizer");
const QString kStatus = QStringLiteral("EQStatus");
const QString kReverb = QStringLiteral("Hall");

} // namespace

EqualiserSettings EqualiserSettings::Read(const Settings& settings) {
    EqualiserSettings result;
    result.on = settings.GetSwitch(kEqualiserSection, kStatus, false);
    for (std::size_t band = 0; band < result.bands.size(); ++band) {
        const int stored = settings.GetNumber(kEqualiserSection, QString::number(kBandFrequencies.at(band)), kFlat);
        result.bands.at(band) = std::clamp(stored, 0, kLastPosition);
    }
    result.reverb = std::clamp(settings.GetNumber(kEqualiserSection, kReverb, kDry), 0, kLastPosition);
    return result;
}

void EqualiserSettings::Write(Settings& settings) const {
    const Settings::Pass pass(settings);
    settings.PutSwitch(kEqualiserSection, kStatus, on);
    for (std::size_t band = 0; band < bands.size(); ++band) {
        settings.PutNumber(kEqualiserSection, QString::number(kBandFrequencies.at(band)), bands.at(band));
    }
    settings.PutNumber(kEqualiserSection, kReverb, reverb);
}

audio::EffectParameters EqualiserSettings::Band(int index) const {
    audio::EffectParameters parameters;
    const auto band = static_cast<std::size_t>(index);
    parameters.centre = static_cast<float>(kBandFrequencies.at(band));
    parameters.gain = static_cast<float>(bands.at(band) - kFlat) * kStep;
    return parameters;
}

audio::EffectParameters EqualiserSettings::Reverb() const {
    audio::EffectParameters parameters;
    const float wet = 1.0F - static_cast<float>(reverb) / static_cast<float>(kLastPosition);
    parameters.reverbMix = wet <= 0 ? -96.0F : std::max(-96.0F, 20.0F * std::log10(wet));
    return parameters;
}

} // namespace kalvo
