#include "audio/Limiter.h"

#include <algorithm>
#include <cmath>

namespace kalvo::audio {

namespace {
constexpr double kHoldSeconds = 0.012; // longer than half a wave of 50 Hz: a low note does not wobble
constexpr double kReleaseSeconds = 0.15;
} // namespace

Limiter::Limiter(int sampleRate)
    : releaseFactor_(1 - std::exp(-1 / (kReleaseSeconds * sampleRate))),
      holdFrames_(std::uint64_t(kHoldSeconds * sampleRate)) {
    gains_.fill(1);
}

void Limiter::Process(float* stereo, std::size_t frames) {
    for (std::size_t i = 0; i < frames; ++i, ++frame_) {
        const float peak = std::max(std::fabs(stereo[2 * i]), std::fabs(stereo[2 * i + 1]));
        const float needed = peak > kCeiling ? kCeiling / peak : 1.0F;
        const float gain = Smooth(Release(LowestOfWindow(needed)));

        float* in = &delayed_[2 * (frame_ % kRing)];
        in[0] = stereo[2 * i];
        in[1] = stereo[2 * i + 1];
        const float* out = &delayed_[2 * ((frame_ - kDelay) % kRing)];
        // The clamp takes the last rounding only.
        stereo[2 * i] = gain == 1 ? out[0] : std::clamp(out[0] * gain, -kCeiling, kCeiling);
        stereo[2 * i + 1] = gain == 1 ? out[1] : std::clamp(out[1] * gain, -kCeiling, kCeiling);
    }
}

float Limiter::LowestOfWindow(float needed) {
    while (candidatesTail_ > candidatesHead_ && candidates_[(candidatesTail_ - 1) % kRing].gain >= needed)
        --candidatesTail_;
    candidates_[candidatesTail_++ % kRing] = {frame_, needed};
    if (candidates_[candidatesHead_ % kRing].frame + kWindow <= frame_)
        ++candidatesHead_;
    return candidates_[candidatesHead_ % kRing].gain;
}

float Limiter::Release(float lowest) {
    if (lowest <= envelope_) {
        envelope_ = lowest;
        holdLeft_ = lowest < 1 ? holdFrames_ : 0;
    } else if (holdLeft_ > 0) {
        --holdLeft_;
    } else {
        envelope_ += (lowest - envelope_) * releaseFactor_;
        if (envelope_ > 0.99999)
            envelope_ = std::min(1.0F, lowest);
    }
    return float(envelope_);
}

float Limiter::Smooth(float gain) {
    const float oldest = gains_[(frame_ - kWindow) % kRing];
    gains_[frame_ % kRing] = gain;
    reduced_ += std::size_t(gain < 1);
    reduced_ -= std::size_t(oldest < 1);
    if (reduced_ == 0) {
        gainSum_ = double(kWindow);
        return 1;
    }
    gainSum_ += double(gain) - double(oldest);
    return float(gainSum_ / double(kWindow));
}

} // namespace kalvo::audio
