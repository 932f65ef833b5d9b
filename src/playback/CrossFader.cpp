#include "playback/CrossFader.h"

#include "base/FaderLaw.h"

#include <algorithm>
#include <cstdlib>

namespace kalvo {

void CrossFader::SetPosition(int position) {
    position_ = std::clamp(position, -kFaderEnd, kFaderEnd);
}

bool CrossFader::Tick() {
    if (step_ == 0) {
        return false;
    }
    SetPosition(position_ + step_);
    if (std::abs(position_) < kFaderEnd) {
        return false;
    }
    step_ = 0;
    return true;
}

int CrossFader::StepsToBend() const {
    if (step_ == 0) {
        return 0;
    }
    const int towardsEnd = position_ * step_; // below 0: the centre is still to come
    return towardsEnd < 0 ? -towardsEnd : kFaderEnd - towardsEnd;
}

int FadeSpeedIndex(int interval) {
    const auto at = [](int wanted) {
        const auto found = std::find_if(kFadeSpeeds.begin(), kFadeSpeeds.end(),
                                        [wanted](const FadeSpeed& speed) { return speed.interval == wanted; });
        return found == kFadeSpeeds.end() ? -1 : static_cast<int>(found - kFadeSpeeds.begin());
    };
    const int index = at(interval);
    return index >= 0 ? index : at(kDefaultFadeInterval);
}

} // namespace kalvo
