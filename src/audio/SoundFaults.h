#pragma once

#include "audio/TitleInspection.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace kalvo::audio {

/** Finds silence and clipping in a title that comes piece by piece. */
class SoundFaults {
public:
    /** Interleaved stereo, the next frames. */
    void Take(const float* stereo, std::size_t frames);
    /** Writes the silences and clipped runs; rate in Hz. */
    void Report(TitleInspection& inspection, double rate) const;

private:
    void CountClipping(const float* frame);

    std::int64_t frames_ = 0;
    std::int64_t silentSince_ = 0; ///< first frame of the silence that runs, frames_ when none does
    std::int64_t start_ = -1;      ///< first frame of sound; -1: none yet
    std::int64_t gap_ = 0;
    std::int64_t gapAt_ = 0;
    int clipped_ = 0;
    std::array<int, 2> full_{}; ///< samples in a row, of each channel
};

} // namespace kalvo::audio
