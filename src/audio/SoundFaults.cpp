#include "audio/SoundFaults.h"

#include <cmath>

namespace kalvo::audio {

void SoundFaults::Take(const float* stereo, std::size_t frames) {
    for (std::size_t i = 0; i < frames; ++i, ++frames_) {
        const float* const frame = stereo + 2 * i;
        const bool silent =
            std::abs(frame[0]) < TitleInspection::kSilent && std::abs(frame[1]) < TitleInspection::kSilent;
        CountClipping(frame);
        if (silent)
            continue;
        if (start_ < 0) {
            start_ = frames_;
        } else if (frames_ - silentSince_ > gap_) {
            gap_ = frames_ - silentSince_;
            gapAt_ = silentSince_;
        }
        silentSince_ = frames_ + 1;
    }
}

void SoundFaults::CountClipping(const float* frame) {
    for (std::size_t channel = 0; channel < full_.size(); ++channel) {
        int& full = full_[channel];
        full = std::abs(frame[channel]) >= TitleInspection::kFull ? full + 1 : 0;
        clipped_ += full == TitleInspection::kClippedRun ? 1 : 0;
    }
}

void SoundFaults::Report(TitleInspection& inspection, double rate) const {
    const auto seconds = [rate](std::int64_t frames) { return static_cast<double>(frames) / rate; };
    inspection.silenceAtStart = seconds(start_ < 0 ? frames_ : start_);
    inspection.silenceAtEnd = seconds(frames_ - silentSince_);
    inspection.longestGap = seconds(gap_);
    inspection.gapAt = seconds(gapAt_);
    inspection.clippedRuns = clipped_;
}

} // namespace kalvo::audio
