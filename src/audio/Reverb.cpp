#include "audio/Reverb.h"

#include <algorithm>
#include <cmath>

namespace kalvo::audio {

namespace {

// Delays in frames at 44,100 Hz, mutually prime as far as possible, and what the right side has more.
constexpr std::array<int, 8> kCombDelays{1116, 1188, 1277, 1356, 1422, 1491, 1557, 1617};
constexpr std::array<int, 4> kAllPassDelays{556, 441, 341, 225};
constexpr int kSpread = 23;

constexpr float kInputGain = 0.015F; // of both sides' sum; eight combs add up to about full scale
constexpr float kWetGain = 3;
constexpr float kDamping = 0.2F;
constexpr float kDryBelow = -96; // dB

std::size_t DelayFrames(int at44100, std::size_t side, int sampleRate) {
    return std::size_t(std::max(1L, std::lround(double(at44100 + int(side) * kSpread) * sampleRate / 44100)));
}

} // namespace

Reverb::Reverb(int sampleRate) : sampleRate_(sampleRate) {
    for (std::size_t side = 0; side < sides_.size(); ++side) {
        for (std::size_t i = 0; i < kCombs; ++i)
            sides_[side].combs[i].line.resize(DelayFrames(kCombDelays[i], side, sampleRate));
        for (std::size_t i = 0; i < kAllPasses; ++i)
            sides_[side].allPasses[i].line.resize(DelayFrames(kAllPassDelays[i], side, sampleRate));
    }
}

void Reverb::SetParameters(const EffectParameters& parameters) {
    const bool dry = parameters.reverbMix <= kDryBelow;
    mix_.GlideTo(dry ? 0 : kWetGain * std::pow(10.0, double(parameters.reverbMix) / 20));
    secondsTarget_ = parameters.reverbTime / 1000;
    if (!sounding_)
        seconds_ = secondsTarget_;
}

void Reverb::Process(float* stereo, std::size_t frames) {
    if (!mix_.Moving() && mix_.Value() == 0) {
        if (sounding_)
            Clear();
        return;
    }
    if (!sounding_)
        input_.GlideTo(1);
    sounding_ = true;
    GlideFeedback();
    for (std::size_t i = 0; i < frames; ++i) {
        const float input = (stereo[2 * i] + stereo[2 * i + 1]) * kInputGain * float(input_.Next());
        const auto mix = float(mix_.Next());
        stereo[2 * i] += mix * sides_[0].Process(input);
        stereo[2 * i + 1] += mix * sides_[1].Process(input);
    }
}

// A quarter of the way per block: a jump of the feedback would be heard.
void Reverb::GlideFeedback() {
    seconds_ += (secondsTarget_ - seconds_) * 0.25F;
    for (Side& side : sides_) {
        for (Comb& comb : side.combs)
            comb.feedback = std::pow(10.0F, -3.0F * float(comb.line.size()) / (float(sampleRate_) * seconds_));
    }
}

void Reverb::Clear() {
    for (Side& side : sides_) {
        for (Comb& comb : side.combs) {
            std::fill(comb.line.begin(), comb.line.end(), 0.0F);
            comb.damped = 0;
        }
        for (AllPass& allPass : side.allPasses)
            std::fill(allPass.line.begin(), allPass.line.end(), 0.0F);
    }
    input_.Set(0);
    sounding_ = false;
}

float Reverb::Comb::Process(float input) {
    const float output = line[place];
    damped = output * (1 - kDamping) + damped * kDamping;
    line[place] = input + damped * feedback;
    place = place + 1 == line.size() ? 0 : place + 1;
    return output;
}

float Reverb::AllPass::Process(float input) {
    const float delayed = line[place];
    line[place] = input + delayed * 0.5F;
    place = place + 1 == line.size() ? 0 : place + 1;
    return delayed - input;
}

float Reverb::Side::Process(float input) {
    float sum = 0;
    for (Comb& comb : combs)
        sum += comb.Process(input);
    for (AllPass& allPass : allPasses)
        sum = allPass.Process(sum);
    return sum;
}

} // namespace kalvo::audio
