#include "playback/SpectrumBands.h"

#include <algorithm>
#include <cmath>

namespace kalvo {

namespace {

constexpr double kLowest = 40;
constexpr double kHighest = 16000;
constexpr double kPivot = 1000;
constexpr double kSlope = 3;  // dB an octave
constexpr double kRange = 60; // dB

double Between(std::span<const float> lines, double place) {
    const auto below = std::min(static_cast<std::size_t>(place), lines.size() - 1);
    const auto above = std::min(below + 1, lines.size() - 1);
    const double share = place - std::floor(place);
    return (1 - share) * static_cast<double>(lines[below]) + share * static_cast<double>(lines[above]);
}

/** The highest magnitude from one place between the lines to another; low bars are narrower than a line. */
double Highest(std::span<const float> lines, double from, double to) {
    double highest = Between(lines, (from + to) / 2);
    const auto first = static_cast<std::size_t>(std::ceil(from));
    for (std::size_t line = first; static_cast<double>(line) < to && line < lines.size(); ++line)
        highest = std::max(highest, static_cast<double>(lines[line]));
    return highest;
}

} // namespace

void FillSpectrumBands(std::span<const float> lines, int sampleRate, std::span<float> bands) {
    std::fill(bands.begin(), bands.end(), 0.0F);
    if (lines.empty() || sampleRate <= 0)
        return;
    const double lineWidth = sampleRate / 2.0 / static_cast<double>(lines.size());
    const double ratio = std::pow(kHighest / kLowest, 1 / static_cast<double>(bands.size()));
    double from = kLowest;
    for (float& band : bands) {
        const double highest = Highest(lines, from / lineWidth, from * ratio / lineWidth);
        const double decibel =
            20 * std::log10(std::max(highest, 1e-9)) + kSlope * std::log2(from * std::sqrt(ratio) / kPivot);
        band = static_cast<float>(std::clamp(1 + decibel / kRange, 0.0, 1.0));
        from *= ratio;
    }
}

} // namespace kalvo
