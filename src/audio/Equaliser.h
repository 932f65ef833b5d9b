#pragma once

#include "audio/AudioLibrary.h"
#include "audio/Biquad.h"
#include "audio/BlockSize.h"

#include <array>
#include <cstddef>

namespace kalvo::audio {

/** The parametric bands of one voice, in series. Audio thread. */
class Equaliser {
public:
    static constexpr std::size_t kBands = 16;

    explicit Equaliser(int sampleRate) : sampleRate_(sampleRate) {}

    int SampleRate() const { return sampleRate_; }

    /** Moves a band to new values without a click; gain 0 takes it out of the signal path. `atOnce` jumps there. */
    void SetBand(std::size_t band, const EffectParameters& parameters, bool atOnce);
    /** Interleaved stereo in place, at most one block. Unchanged bit by bit while all bands stand at 0 dB. */
    void Process(float* stereo, std::size_t frames);

private:
    int sampleRate_;
    std::array<Biquad, kBands> bands_;
    std::array<StereoPair, kBlockFrames> work_;
};

} // namespace kalvo::audio
