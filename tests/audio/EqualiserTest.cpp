#include "audio/Equaliser.h"

#include "OfflineDesk.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace kalvo::audio;
using namespace kalvo::test;

namespace {

/** The left side of a tone after the equaliser, in blocks. */
std::vector<float> Filtered(Equaliser& equaliser, const Tone& tone, std::int64_t first, std::size_t frames) {
    std::vector<float> left;
    for (std::size_t done = 0; done < frames; done += kBlockFrames) {
        float block[2 * kBlockFrames];
        for (std::size_t i = 0; i < kBlockFrames; ++i)
            block[2 * i] = block[2 * i + 1] = tone.sample(first + std::int64_t(done + i));
        equaliser.Process(block, kBlockFrames);
        for (std::size_t i = 0; i < kBlockFrames; ++i)
            left.push_back(block[2 * i]);
    }
    return left;
}

double Decibel(double frequency, Equaliser& equaliser) {
    const auto out = Filtered(equaliser, Sine(frequency, 0.1), 0, 44032);
    double sum = 0;
    for (std::size_t i = 22016; i < out.size(); ++i)
        sum += double(out[i]) * out[i];
    return 10 * std::log10(sum / 22016 / (0.1 * 0.1 / 2));
}

EffectParameters Band(float centre, float gain) {
    EffectParameters band;
    band.centre = centre;
    band.gain = gain;
    return band;
}

} // namespace

TEST(EqualiserTest, EveryBandHasItsGainAtItsCentre) {
    for (const float centre : {80.F, 125.F, 250.F, 500.F, 1000.F, 2000.F, 4000.F, 8000.F, 12000.F, 16000.F}) {
        for (const float gain : {-15.F, -6.F, 6.F, 15.F}) {
            Equaliser equaliser(44100);
            equaliser.SetBand(3, Band(centre, gain), true);
            EXPECT_NEAR(Decibel(centre, equaliser), gain, 0.1) << centre;
        }
    }
}

TEST(EqualiserTest, TheBandwidthIsWhereHalfTheGainIsReached) {
    Equaliser equaliser(44100);
    equaliser.SetBand(0, Band(1000, 12), true); // 12 semitones: half an octave to each side
    EXPECT_NEAR(Decibel(1000 / std::sqrt(2.0), equaliser), 6, 0.2);
    EXPECT_NEAR(Decibel(1000 * std::sqrt(2.0), equaliser), 6, 0.2);
    EXPECT_NEAR(Decibel(8000, equaliser), 0, 0.2);
}

TEST(EqualiserTest, LiveChangesMakeNoClickAndEndExact) {
    Equaliser equaliser(44100);
    const Tone tone = Sine(60, 0.3);
    std::int64_t at = 0;
    double largest = 0;
    for (const float gain : {15.F, -15.F, 0.F, 6.F, 0.F}) {
        equaliser.SetBand(0, Band(80, gain), false);
        const auto out = Filtered(equaliser, tone, at, 8192);
        at += 8192;
        largest = std::max(largest, LargestJump(out, 0));
    }
    EXPECT_LT(largest, 0.001) << "-60 dBFS";
    Filtered(equaliser, tone, at, 88064); // rings out
    EXPECT_EQ(Filtered(equaliser, tone, at + 88064, 256)[100], tone.sample(at + 88064 + 100));
}
