#pragma once

#include "audio/AudioLibrary.h"
#include "audio/Ramp.h"

#include <array>
#include <cstddef>
#include <vector>

namespace kalvo::audio {

/**
 * Reverberation after Jezar's public-domain Freeverb: eight damped comb filters in parallel and four all-passes in
 * series for each side, the right one's delays spread a little. Constructed on the control thread, used by the audio
 * thread; allocates when constructed only.
 */
class Reverb {
public:
    explicit Reverb(int sampleRate);

    /** Mix in dB (-96 and below: dry) and the time in ms in which the sound falls by 60 dB; both glide. */
    void SetParameters(const EffectParameters& parameters);
    /** Adds the reverberation to interleaved stereo. Unchanged bit by bit while dry. */
    void Process(float* stereo, std::size_t frames);

private:
    static constexpr std::size_t kCombs = 8;
    static constexpr std::size_t kAllPasses = 4;

    struct Comb {
        std::vector<float> line;
        std::size_t place = 0;
        float damped = 0;
        float feedback = 0;

        float Process(float input);
    };
    struct AllPass {
        std::vector<float> line;
        std::size_t place = 0;

        float Process(float input);
    };
    struct Side {
        std::array<Comb, kCombs> combs;
        std::array<AllPass, kAllPasses> allPasses;

        float Process(float input);
    };

    void GlideFeedback();
    void Clear();

    int sampleRate_;
    std::array<Side, 2> sides_;
    Ramp mix_{0};
    Ramp input_{0}; // rises at the start: an abrupt beginning would come back as an echo of a click
    float seconds_ = 1;
    float secondsTarget_ = 1;
    bool sounding_ = false;
};

} // namespace kalvo::audio
