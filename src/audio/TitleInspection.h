#pragma once

#include "audio/TitleMeasure.h"

#include <atomic>
#include <cstdint>
#include <optional>
#include <string>

namespace kalvo::audio {

/** What decoding a whole title has found. Times in seconds. */
struct TitleInspection {
    /** Below this a sample is silence: -60 dBFS. */
    static constexpr float kSilent = 0.001F;
    /** So many samples of one channel in a row at kFull or beyond are clipped. */
    static constexpr int kClippedRun = 6;
    static constexpr float kFull = 0.999F;

    double decoded = 0;        ///< of sound; 0: the file cannot be decoded
    double told = 0;           ///< length that the file tells of itself; 0: none
    bool broken = false;       ///< reading failed before the end
    double silenceAtStart = 0; ///< all of it when the title is silent
    double silenceAtEnd = 0;
    double longestGap = 0; ///< silence between sound and sound
    double gapAt = 0;      ///< where it begins
    int clippedRuns = 0;   ///< of both channels
    TitleMeasures measures;

    bool IsSilent() const { return decoded > 0 && silenceAtStart >= decoded; }
    bool operator==(const TitleInspection&) const = default;
};

/**
 * Decodes a whole file, measures it and looks for what would disturb on air, in one pass; a thread's work for a second
 * or so. path: as StreamCreateFile. None when `cancelled` was set meanwhile. Throws nothing.
 */
std::optional<TitleInspection> InspectTitle(const std::string& path, const std::atomic<bool>& cancelled);

} // namespace kalvo::audio
