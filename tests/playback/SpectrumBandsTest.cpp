#include "playback/SpectrumBands.h"

#include <gtest/gtest.h>

#include <cmath>

namespace kalvo {
namespace {

constexpr int kBandRate = 44100;
constexpr double kLineWidth = kBandRate / 2.0 / 1024;

std::array<float, 26> Bands(std::vector<float> lines, int rate = kBandRate) {
    std::array<float, 26> bands{};
    bands.fill(-1);
    FillSpectrumBands(lines, rate, bands);
    return bands;
}

/** One line of full scale. */
std::vector<float> Tone(double hertz, float height = 1) {
    std::vector<float> lines(1024);
    lines[static_cast<std::size_t>(hertz / kLineWidth + 0.5)] = height;
    return lines;
}

TEST(SpectrumBandsTest, AToneStandsInTheBarOfItsFrequency) {
    std::size_t last = 0;
    for (const double hertz : {43.0, 110.0, 220.0, 440.0, 1000.0, 5000.0, 12000.0}) {
        const auto bands = Bands(Tone(hertz));
        const auto highest = static_cast<std::size_t>(std::max_element(bands.begin(), bands.end()) - bands.begin());
        EXPECT_NEAR(static_cast<double>(highest), 26 * std::log(hertz / 40) / std::log(400.0) - 0.5, 1.1) << hertz;
        EXPECT_GE(highest, last);
        last = highest;
    }
}

TEST(SpectrumBandsTest, ABarIsEvenInDecibelsAndTheTrebleIsLifted) {
    const auto bar = [](double hertz, float height) {
        const auto bands = Bands(Tone(hertz, height));
        return *std::max_element(bands.begin(), bands.end());
    };
    EXPECT_NEAR(bar(1000, 0.1F) - bar(1000, 0.01F), 20.0 / 60, 0.001);
    EXPECT_NEAR(bar(8000, 0.1F) - bar(1000, 0.1F), 3 * 3.0 / 60, 0.03) << "three octaves above";
    EXPECT_EQ(bar(1000, 1e-6F), 0);
    EXPECT_LE(bar(15000, 1), 1);
}

TEST(SpectrumBandsTest, SilenceAndNothingAtAllAreEmptyBars) {
    const std::array<float, 26> none{};
    EXPECT_EQ(Bands(std::vector<float>(1024)), none);
    EXPECT_EQ(Bands({}), none);
    EXPECT_EQ(Bands(Tone(1000), 0), none) << "no rate";
}

} // namespace
} // namespace kalvo
