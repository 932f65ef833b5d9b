#include "audio/Ramp.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kalvo::audio {

const std::array<double, kBlockFrames>& RaisedCosine() {
    static const auto table = [] {
        std::array<double, kBlockFrames> steps{};
        for (std::size_t i = 0; i < steps.size(); ++i)
            steps[i] = 0.5 - 0.5 * std::cos(std::numbers::pi * double(i + 1) / double(steps.size()));
        return steps;
    }();
    return table;
}

void Ramp::Set(double value) {
    value_ = start_ = target_ = value;
    left_ = 0;
}

void Ramp::GlideTo(double target) {
    if (target == target_ && (curved_ || left_ == 0))
        return;
    SlideTo(target, kBlockFrames);
    curved_ = true;
}

void Ramp::SlideTo(double target, std::uint64_t frames) {
    start_ = value_;
    target_ = target;
    length_ = left_ = frames;
    curved_ = false;
    if (frames == 0)
        value_ = target;
}

void Ramp::Advance(std::uint64_t frames) {
    if (left_ == 0)
        return;
    left_ -= std::min(left_, frames);
    Place();
}

void Ramp::Step() {
    --left_;
    Place();
}

void Ramp::Place() {
    if (left_ == 0) {
        value_ = target_;
        return;
    }
    const std::uint64_t done = length_ - left_;
    const double share = curved_ ? (*curve_)[std::size_t(done) - 1] : double(done) / double(length_);
    value_ = start_ + (target_ - start_) * share;
}

} // namespace kalvo::audio
