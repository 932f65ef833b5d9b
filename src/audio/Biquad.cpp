#include "audio/Biquad.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kalvo::audio {

namespace {

struct State {
    StereoPair first;
    StereoPair second;
};

inline StereoPair Filter(const BiquadCoefficients& c, State& state, StereoPair x) {
    const StereoPair y = c.b0 * x + state.first;
    state.first = c.b1 * x - c.a1 * y + state.second;
    state.second = c.b2 * x - c.a2 * y;
    return y;
}

bool Quiet(StereoPair state) {
    return std::fabs(state[0]) < 1e-7 && std::fabs(state[1]) < 1e-7;
}

} // namespace

BiquadCoefficients BiquadCoefficients::Peaking(double centre, double bandwidth, double gain, double rate) {
    const double w = 2 * std::numbers::pi * std::clamp(centre, 1.0, 0.49 * rate) / rate;
    const double octaves = bandwidth / 12;
    const double alpha = std::sin(w) * std::sinh(std::numbers::ln2 / 2 * octaves * w / std::sin(w));
    const double a = std::pow(10.0, gain / 40);
    const double a0 = 1 + alpha / a;
    const double b1 = -2 * std::cos(w) / a0;
    return {(1 + alpha * a) / a0, b1, (1 - alpha * a) / a0, b1, (1 - alpha / a) / a0};
}

void Biquad::Set(const BiquadCoefficients& target, bool flat) {
    now_ = target_ = target;
    glideLeft_ = 0;
    flat_ = idle_ = flat;
    state1_ = state2_ = StereoPair{0, 0};
}

void Biquad::GlideTo(const BiquadCoefficients& target, bool flat) {
    if (idle_) // starts from "unchanged" with the new poles, where its memory is empty by right
        now_ = {1, target.a1, target.a2, target.a1, target.a2};
    target_ = target;
    flat_ = flat;
    idle_ = idle_ && flat;
    glideLeft_ = idle_ ? 0 : kGlideFrames;
    const double share = 1.0 / double(kGlideFrames);
    step_ = {(target_.b0 - now_.b0) * share, (target_.b1 - now_.b1) * share, (target_.b2 - now_.b2) * share,
             (target_.a1 - now_.a1) * share, (target_.a2 - now_.a2) * share};
}

void Biquad::Process(StereoPair* frames, std::size_t count) {
    if (idle_)
        return;
    const std::size_t gliding = std::min(count, glideLeft_);
    if (gliding > 0)
        ProcessGliding(frames, gliding);
    if (count > gliding)
        ProcessSteady(frames + gliding, count - gliding);
    if (flat_ && glideLeft_ == 0 && Quiet(state1_) && Quiet(state2_))
        Set(target_, true);
}

void Biquad::ProcessGliding(StereoPair* frames, std::size_t count) {
    State state{state1_, state2_};
    BiquadCoefficients c = now_;
    for (std::size_t i = 0; i < count; ++i) {
        c.b0 += step_.b0;
        c.b1 += step_.b1;
        c.b2 += step_.b2;
        c.a1 += step_.a1;
        c.a2 += step_.a2;
        frames[i] = Filter(c, state, frames[i]);
    }
    glideLeft_ -= count;
    now_ = glideLeft_ == 0 ? target_ : c;
    state1_ = state.first;
    state2_ = state.second;
}

void Biquad::ProcessSteady(StereoPair* frames, std::size_t count) {
    State state{state1_, state2_};
    const BiquadCoefficients c = now_;
    for (std::size_t i = 0; i < count; ++i)
        frames[i] = Filter(c, state, frames[i]);
    state1_ = state.first;
    state2_ = state.second;
}

} // namespace kalvo::audio
