#include "audio/Biquad.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace kalvo::audio {

namespace {

struct State {
    StereoPair first;
    StereoPair second;
};

/** A section whose coefficients stand still, each of them there for both sides. */
struct SteadySection {
    StereoPair b0, b1, b2, a1, a2;
    State state;

    StereoPair Filter(StereoPair x) {
        const StereoPair y = b0 * x + state.first;
        state.first = b1 * x - a1 * y + state.second;
        state.second = b2 * x - a2 * y;
        return y;
    }
};

StereoPair Both(double value) {
    return StereoPair{value, value};
}

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
    if (count > gliding) {
        Biquad* const self = this;
        ProcessInSeries(&self, 1, frames + gliding, count - gliding);
    }
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

void Biquad::ProcessInSeries(Biquad* const* sections, std::size_t sectionCount, StereoPair* frames, std::size_t count) {
    switch (sectionCount) {
    case 1:
        return Cascade(sections, frames, count, std::make_index_sequence<1>());
    case 2:
        return Cascade(sections, frames, count, std::make_index_sequence<2>());
    case 3:
        return Cascade(sections, frames, count, std::make_index_sequence<3>());
    case 4:
        return Cascade(sections, frames, count, std::make_index_sequence<4>());
    case kMostInSeries:
        return Cascade(sections, frames, count, std::make_index_sequence<kMostInSeries>());
    default:
        return;
    }
}

template<std::size_t... Section>
void Biquad::Cascade(Biquad* const* sections, StereoPair* frames, std::size_t count,
                     std::index_sequence<Section...> /*indices*/) {
    const auto take = [](const Biquad& b) {
        return SteadySection{Both(b.now_.b0), Both(b.now_.b1), Both(b.now_.b2),
                             Both(b.now_.a1), Both(b.now_.a2), {b.state1_, b.state2_}};
    };
    std::array<SteadySection, sizeof...(Section)> series{take(*sections[Section])...};
    for (std::size_t i = 0; i < count; ++i) {
        StereoPair x = frames[i];
        ((x = series[Section].Filter(x)), ...);
        frames[i] = x;
    }
    const auto give = [](Biquad& b, const State& state) {
        b.state1_ = state.first;
        b.state2_ = state.second;
        b.RestWhenQuiet();
    };
    (give(*sections[Section], series[Section].state), ...);
}

void Biquad::RestWhenQuiet() {
    if (flat_ && Quiet(state1_) && Quiet(state2_))
        Set(target_, true);
}

} // namespace kalvo::audio
