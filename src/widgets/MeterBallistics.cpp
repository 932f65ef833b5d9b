#include "widgets/MeterBallistics.h"

#include <algorithm>

namespace kalvo {

void MeterBallistics::Show(float value, Clock::time_point now) {
    const std::chrono::duration<float> passed = now - shownAt_;
    shownAt_ = now;
    value_ = std::max(std::clamp(value, 0.0F, 1.0F), value_ - kFall * passed.count());
    if (now - peakAt_ > kPeakHold)
        peak_ -= kPeakFall * passed.count();
    if (value_ >= peak_) {
        peak_ = value_;
        peakAt_ = now;
    }
}

void ClipLight::Show(bool clipped, Clock::time_point now) {
    if (clipped)
        since_ = now;
    on_ = clipped || (on_ && now - since_ < kHold);
}

} // namespace kalvo
