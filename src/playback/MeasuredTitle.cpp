#include "playback/MeasuredTitle.h"

#include "audio/Limiter.h"

#include <algorithm>
#include <cmath>

namespace kalvo {

namespace {

constexpr double kWanted = -16;
constexpr double kMostDown = -12;
constexpr double kMostUp = 6;
constexpr double kSilence = -60; // LUFS

} // namespace

QJsonArray MeasuredTitle::Places() const {
    return {stamp.size, stamp.time, measures.loudness, measures.peak, measures.tempo};
}

MeasuredTitle MeasuredTitle::FromPlaces(const QJsonArray& places) {
    return {{places[0].toInteger(), places[1].toInteger()},
            {places[2].toDouble(), places[3].toDouble(), places[4].toDouble()}};
}

double LevellingGain(const audio::TitleMeasures& measures) {
    if (measures.loudness < kSilence || measures.peak <= 0)
        return 0;
    const double headroom = 20 * std::log10(static_cast<double>(audio::Limiter::kCeiling) / measures.peak);
    const double gain = std::clamp(kWanted - measures.loudness, kMostDown, kMostUp);
    return std::min(gain, std::max(0.0, headroom));
}

} // namespace kalvo
