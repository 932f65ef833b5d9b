#pragma once

#include "audio/AudioLibrary.h"
#include "playback/PlayerRecord.h"

#include <array>

namespace kalvo {

class Settings;

/** Positions of the equaliser's controls as they are stored: 0..20 each. */
struct EqualiserSettings {
    bool on = false;
    std::array<int, kEqualiserBands> bands{10, 10, 10, 10, 10, 10, 10, 10, 10, 10}; ///< 10 = 0 dB, 1.5 dB a step
    int reverb = 20;                                                                ///< 20 = dry, 0 = full

    static EqualiserSettings Read(const Settings& settings);
    audio::EffectParameters Band(int index) const;
    audio::EffectParameters Reverb() const;
};

} // namespace kalvo
