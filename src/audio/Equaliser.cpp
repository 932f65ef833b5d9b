#include "audio/Equaliser.h"

#include <algorithm>
#include <utility>

namespace kalvo::audio {

void Equaliser::SetBand(std::size_t band, const EffectParameters& parameters, bool atOnce) {
    const auto target =
        BiquadCoefficients::Peaking(parameters.centre, parameters.bandwidth, parameters.gain, sampleRate_);
    const bool flat = parameters.gain == 0;
    if (atOnce)
        bands_[band].Set(target, flat);
    else
        bands_[band].GlideTo(target, flat);
}

void Equaliser::Process(float* stereo, std::size_t frames) {
    if (std::all_of(bands_.begin(), bands_.end(), [](const Biquad& band) { return band.Idle(); }))
        return;
    for (std::size_t i = 0; i < frames; ++i)
        work_[i] = StereoPair{stereo[2 * i], stereo[2 * i + 1]};
    std::array<Biquad*, Biquad::kMostInSeries> steady{};
    std::size_t held = 0;
    for (Biquad& band : bands_) {
        if (band.Steady())
            steady[held++] = &band;
        if (held == steady.size() || (!band.Steady() && !band.Idle()))
            Biquad::ProcessInSeries(steady.data(), std::exchange(held, 0), work_.data(), frames);
        if (!band.Steady())
            band.Process(work_.data(), frames);
    }
    Biquad::ProcessInSeries(steady.data(), held, work_.data(), frames);
    for (std::size_t i = 0; i < frames; ++i) {
        stereo[2 * i] = float(work_[i][0]);
        stereo[2 * i + 1] = float(work_[i][1]);
    }
}

} // namespace kalvo::audio
