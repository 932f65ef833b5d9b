#pragma once

#include <atomic>
#include <optional>
#include <string>

namespace kalvo::audio {

/** What a title sounds like as a whole. */
struct TitleMeasures {
    double loudness = 0; ///< integrated, EBU R 128, in LUFS; -70 for silence
    double peak = 0;     ///< highest true peak of both channels, 1 = full scale
    double tempo = 0;    ///< beats per minute, 45..190; 0 = no beat was found
    bool operator==(const TitleMeasures&) const = default;
};

/**
 * Decodes a whole file and measures it; a thread's work for a second or so. path: as StreamCreateFile. None when the
 * file cannot be decoded, holds no sound, or `cancelled` was set meanwhile. Throws nothing.
 */
std::optional<TitleMeasures> MeasureTitle(const std::string& path, const std::atomic<bool>& cancelled);

} // namespace kalvo::audio
