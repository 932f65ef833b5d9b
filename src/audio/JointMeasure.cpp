#include "audio/JointMeasure.h"

#include "audio/TitleInspection.h"

#include <algorithm>
#include <cmath>
#include <ebur128.h>
#include <memory>

namespace kalvo::audio {

namespace {

constexpr double kSilence = -70; // LUFS
constexpr std::size_t kSide = 4; // seconds
constexpr std::size_t kAround = 5;

struct Ebur128Deleter {
    void operator()(ebur128_state* state) const { ebur128_destroy(&state); }
};
using Meter = std::unique_ptr<ebur128_state, Ebur128Deleter>;

Meter MakeMeter(int rate, int mode) {
    return Meter(ebur128_init(2, unsigned(rate), mode));
}

double Finite(double loudness) {
    return std::isfinite(loudness) ? std::max(loudness, kSilence) : kSilence;
}

double Loudness(const float* stereo, std::size_t from, std::size_t to, int rate) {
    const Meter meter = MakeMeter(rate, EBUR128_MODE_I);
    double loudness = kSilence;
    if (!meter || from >= to || ebur128_add_frames_float(meter.get(), stereo + 2 * from, to - from) != EBUR128_SUCCESS)
        return kSilence;
    ebur128_loudness_global(meter.get(), &loudness);
    return Finite(loudness);
}

double LowestMoment(const float* stereo, std::size_t from, std::size_t to, int rate) {
    const Meter meter = MakeMeter(rate, EBUR128_MODE_M);
    const auto step = std::size_t(rate) / 10;
    if (!meter || step == 0)
        return kSilence;
    double lowest = 0;
    int steps = 0;
    for (std::size_t at = from; at + step <= to; at += step) {
        ebur128_add_frames_float(meter.get(), stereo + 2 * at, step);
        double moment = kSilence;
        if (++steps >= 4 && ebur128_loudness_momentary(meter.get(), &moment) == EBUR128_SUCCESS)
            lowest = std::min(lowest, Finite(moment));
    }
    return steps < 4 ? kSilence : lowest;
}

double LongestGap(const float* stereo, std::size_t from, std::size_t to, int rate) {
    std::size_t longest = 0;
    std::size_t run = 0;
    for (std::size_t i = from; i < to; ++i) {
        const bool silent = std::abs(stereo[2 * i]) < TitleInspection::kSilent &&
                            std::abs(stereo[2 * i + 1]) < TitleInspection::kSilent;
        run = silent ? run + 1 : 0;
        longest = std::max(longest, run);
    }
    return double(longest) / rate;
}

} // namespace

double JointMeasures::Jump() const {
    return before <= kSilence || after <= kSilence ? 0 : after - before;
}

double JointMeasures::Dip() const {
    return before <= kSilence || after <= kSilence ? 0 : std::max(0.0, std::min(before, after) - lowest);
}

JointMeasures MeasureJoint(const float* stereo, std::size_t frames, int rate, std::size_t begin, std::size_t end) {
    JointMeasures measures;
    if (frames == 0 || rate <= 0)
        return measures;
    end = std::min(end, frames);
    begin = std::min(begin, end);
    const auto second = std::size_t(rate);
    const auto back = [](std::size_t from, std::size_t by) { return from > by ? from - by : 0; };
    measures.before = Loudness(stereo, back(begin, kSide * second), begin, rate);
    measures.after = Loudness(stereo, end, std::min(frames, end + kSide * second), rate);
    measures.lowest = LowestMoment(stereo, back(begin, second / 2), std::min(frames, end + second / 2), rate);
    measures.gap = LongestGap(stereo, back(begin, kAround * second), std::min(frames, end + kAround * second), rate);
    return measures;
}

} // namespace kalvo::audio
