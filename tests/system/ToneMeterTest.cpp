#include "support/ToneMeter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kalvo::test {
namespace {

constexpr int kRate = 44100;
const std::vector<double> kTones{440, 1000};

/** Two seconds: 440 Hz at 0.25 throughout; 1000 Hz rises from nothing at 0.5 s to 0.25 at 1.5 s and stays. */
std::vector<float> TwoTones() {
    std::vector<float> samples(2 * kRate);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double second = static_cast<double>(i) / kRate;
        const double rising = 0.25 * std::clamp(second - 0.5, 0.0, 1.0);
        samples[i] = static_cast<float>(0.25 * std::sin(2 * std::numbers::pi * 440 * second) +
                                        rising * std::sin(2 * std::numbers::pi * 1000 * second + 1));
    }
    return samples;
}

TEST(ToneMeter, FaultsStandOut) {
    // What remains comes from the two bends, where the rise begins and ends.
    EXPECT_LT(ToneMeter(TwoTones(), kRate).ResidualPeak(kTones, 0, 2), -70);
    std::vector<float> click = TwoTones();
    click[kRate] += 0.01F;
    EXPECT_NEAR(ToneMeter(click, kRate).ResidualPeak(kTones, 0, 2), -40, 1);

    EXPECT_NEAR(ToneMeter(click, kRate).TreblePeak(0.1, 2), -42, 2);
    EXPECT_LT(ToneMeter(TwoTones(), kRate).TreblePeak(0.1, 2), -90);

    std::vector<float> lost = TwoTones();
    lost.erase(lost.begin() + kRate, lost.begin() + kRate + 20);
    EXPECT_GT(ToneMeter(lost, kRate).ResidualPeak(kTones, 0, 1.9), -30);

    std::vector<float> gap = TwoTones();
    std::fill_n(gap.begin() + kRate, 441, 0.0F);
    EXPECT_GT(ToneMeter(gap, kRate).ResidualPeak(kTones, 0, 2), -20);
    EXPECT_NEAR(ToneMeter(gap, kRate).LongestSilence(0.001, 0, 2), 0.01, 0.001);
    EXPECT_LT(ToneMeter(TwoTones(), kRate).LongestSilence(0.001, 0.1, 2), 0.001);
}

} // namespace
} // namespace kalvo::test
