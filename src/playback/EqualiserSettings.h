#pragma once

#include "audio/AudioLibrary.h"
#include "playback/PlayerRecord.h"

#include <array>

namespace kalvo {

class Settings;

/** Positions of the equaliser's controls as they are stored: 0..20 each. */
struct EqualiserSettings {
    static constexpr int kLastPosition = 20;
    static constexpr int kFlat = 10;     ///< of a band: 0 dB
    static constexpr int kDry = 20;      ///< of the reverb
    static constexpr float kStep = 1.5F; ///< dB of a position

    bool on = false;
    std::array<int, kEqualiserBands> bands{10, 10, 10, 10, 10, 10, 10, 10, 10, 10};
    int reverb = kDry; ///< 0 = full

    /** Section "Equalizer"; what lies outside the range is moved to its end. */
    static EqualiserSettings Read(const Settings& settings);
    /** All twelve keys in one pass. */
    void Write(Settings& settings) const;
    bool operator==(const EqualiserSettings&) const = default;
    /** Of a band, counting from 0; out of range: std::out_of_range. */
    audio::EffectParameters Band(int index) const;
    audio::EffectParameters Reverb() const;
};

} // namespace kalvo
