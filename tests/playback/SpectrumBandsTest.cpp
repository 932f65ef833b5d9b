#include "playback/SpectrumBands.h"

#include "audio/Spectrum.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace kalvo {
namespace {

constexpr int kBandRate = 44100;

/** The bars of a sine that lies on a line of the spectrum. */
std::array<float, 26> Bands(double hertz, double height) {
    const double cycles = std::round(hertz / kBandRate * 2048);
    audio::TapRing tap;
    for (int i = 0; i < 5000; ++i) {
        const auto sample = float(height * std::sin(2 * std::numbers::pi * cycles * i / 2048));
        tap.Write(std::array{sample, sample}.data(), 1);
    }
    std::vector<float> lines(1024);
    EXPECT_EQ(ReadTap(tap, audio::DataKind::Fft2048, lines.data(), lines.size()), lines.size());
    EXPECT_NEAR(lines[std::size_t(cycles)], height, 0.01 * height);
    std::array<float, 26> bands{};
    FillSpectrumBands(lines, kBandRate, bands);
    return bands;
}

TEST(SpectrumBandsTest, AToneStandsInTheBarOfItsFrequency) {
    for (const double hertz : {43.0, 110.0, 220.0, 440.0, 1000.0, 5000.0, 12000.0}) {
        const auto bands = Bands(hertz, 1);
        const auto highest = static_cast<double>(std::max_element(bands.begin(), bands.end()) - bands.begin());
        EXPECT_NEAR(highest, 26 * std::log(hertz / 40) / std::log(400.0) - 0.5, 1.1) << hertz;
    }
}

TEST(SpectrumBandsTest, ABarIsEvenInDecibelsAndTheTrebleIsLifted) {
    const auto bar = [](double hertz, double height) {
        const auto bands = Bands(hertz, height);
        return *std::max_element(bands.begin(), bands.end());
    };
    EXPECT_NEAR(bar(1000, 0.1) - bar(1000, 0.01), 20.0 / 60, 0.001);
    EXPECT_NEAR(bar(8000, 0.1) - bar(1000, 0.1), 3 * 3.0 / 60, 0.03) << "three octaves above";
    EXPECT_EQ(bar(1000, 1e-6), 0);
    EXPECT_LE(bar(15000, 1), 1);
}

TEST(SpectrumBandsTest, NoMoreIsReadThanThereIsRoomForAndNothingIsSilence) {
    audio::TapRing tap;
    std::vector<float> values(100, -1);
    EXPECT_EQ(ReadTap(tap, audio::DataKind::Fft2048, values.data(), 99), 99U);
    EXPECT_EQ(values[98], 0) << "nothing written yet";
    EXPECT_EQ(values[99], -1);
    for (float frame = 0; frame < 20000; ++frame)
        tap.Write(std::array{frame, frame}.data(), 1);
    ASSERT_EQ(ReadTap(tap, audio::DataKind::Samples, values.data(), 20), 20U);
    EXPECT_EQ(values[19], 19999) << "the newest";
    std::array<float, 26> bands{1};
    FillSpectrumBands({}, kBandRate, bands);
    EXPECT_EQ(bands, (std::array<float, 26>{}));
}

} // namespace
} // namespace kalvo
