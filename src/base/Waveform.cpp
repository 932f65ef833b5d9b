#include "base/Waveform.h"

#include <algorithm>

namespace kalvo {

namespace {

constexpr float kFullScale = 255;
constexpr float kMostGain = 4;

/** Of the columns from `first` to before `last`. */
float Height(const Waveform& waveform, int first, int last) {
    int peak = 0;
    float sum = 0;
    for (int i = first; i < last; ++i) {
        const Waveform::Column& column = waveform.columns[std::size_t(i)];
        peak = std::max(peak, int(column.peak));
        sum += column.rms;
    }
    const float mean = sum / float(last - first);
    return (float(peak) + std::min(kFullScale, 2 * mean)) / (2 * kFullScale);
}

} // namespace

std::vector<float> WaveBars(const Waveform& waveform, int count) {
    std::vector<float> bars(std::size_t(std::max(0, count)));
    for (std::size_t i = 0; i < bars.size(); ++i) {
        const int first = int(i * Waveform::kColumns / bars.size());
        const int next = int((i + 1) * Waveform::kColumns / bars.size());
        bars[i] = Height(waveform, first, std::max(next, first + 1));
    }
    const float most = bars.empty() ? 0 : *std::max_element(bars.begin(), bars.end());
    const float gain = most > 0 ? std::min(kMostGain, 1 / most) : 1;
    for (float& bar : bars)
        bar *= gain;
    return bars;
}

} // namespace kalvo
