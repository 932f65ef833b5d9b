#include "audio/Limiter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using kalvo::audio::Limiter;

namespace {

std::vector<float> Limited(std::vector<float> stereo, std::size_t blockFrames = 256) {
    Limiter limiter(44100);
    for (std::size_t done = 0; done < stereo.size(); done += 2 * blockFrames)
        limiter.Process(&stereo[done], std::min(blockFrames, (stereo.size() - done) / 2));
    return stereo;
}

std::vector<float> Noise(std::size_t frames, float height) {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> sample(-height, height);
    std::vector<float> stereo(2 * frames);
    for (float& value : stereo)
        value = sample(random);
    return stereo;
}

float Peak(const std::vector<float>& samples) {
    float peak = 0;
    for (const float sample : samples)
        peak = std::max(peak, std::fabs(sample));
    return peak;
}

} // namespace

TEST(LimiterTest, NothingComesOutAboveTheCeiling) {
    for (const float height : {1.0F, 2.0F, 10.0F}) {
        EXPECT_LE(Peak(Limited(Noise(20000, height))), Limiter::kCeiling);
        EXPECT_LE(Peak(Limited(Noise(3000, height), 7)), Limiter::kCeiling);
    }
}

TEST(LimiterTest, ASinglePeakIsMetInTimeWithoutAJumpOfTheGain) {
    std::vector<float> in(2 * 4000, 0.5F);
    in[2 * 1000] = 2;
    const auto out = Limited(in);
    const std::size_t peak = 1000 + Limiter::kDelay;
    EXPECT_NEAR(out[2 * peak], Limiter::kCeiling, 0.001);
    EXPECT_NEAR(out[2 * peak + 1], 0.25 * Limiter::kCeiling, 0.001) << "both sides by the same gain";
    for (std::size_t i = Limiter::kDelay + 1; i < 4000; ++i)
        ASSERT_NEAR(out[2 * i + 1], out[2 * i - 1], 0.005) << i;
}

TEST(LimiterTest, IsExactAgainAfterTheRelease) {
    auto in = Noise(150000, 0.9F);
    in[10] = 3;
    const auto out = Limited(in);
    for (std::size_t i = 2 * 140000; i < in.size(); ++i)
        ASSERT_EQ(out[i], in[i - 2 * Limiter::kDelay]);
}
