#include "playback/EqualiserSettings.h"

#include "WaveBytes.h"
#include "audio/AudioLibraryImpl.h"
#include "base/Settings.h"
#include "playback/AudioLayer.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <complex>
#include <numbers>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

constexpr int kMixRate = 44100;
constexpr std::size_t kFrames = 32768;
constexpr std::size_t kClick = 1000; // frame of the one sample, after the effects have faded in
constexpr qint16 kHeight = 1024;     // 15 dB more, ten times over, stay below the limiter

/** Silence with one sample: what comes out is the desk's impulse response. */
QByteArray ClickFile() {
    std::vector<qint16> samples(2 * kFrames);
    samples[2 * kClick] = samples[2 * kClick + 1] = kHeight;
    return test::WaveBytes(kMixRate, 2, samples);
}

struct EqualiserSettingsTest : ::testing::Test {
    /** What the real library makes of the click when the player has these settings; left side. */
    std::vector<float> Response(const EqualiserSettings& settings) {
        AudioLayer layer(std::make_unique<audio::AudioLibraryImpl>());
        EXPECT_TRUE(layer.InitAudio(audio::kOffline, 1024));
        layer.SetEqualiser(settings);
        const audio::Handle stream = layer.LoadStream(1, folder.Write(u"click.wav"_s, ClickFile()));
        EXPECT_TRUE(layer.Audio().StreamPlay(stream, true));
        std::vector<float> stereo(2 * kFrames);
        EXPECT_TRUE(layer.Audio().Render(audio::Output::Main, stereo.data(), kFrames));
        std::vector<float> left(kFrames);
        for (std::size_t i = 0; i < kFrames; ++i)
            left[i] = stereo[2 * i] * 32768 / kHeight;
        return left;
    }
    static double Decibel(const std::vector<float>& response, double hertz) {
        std::complex<double> sum = 0;
        for (std::size_t i = 0; i < response.size(); ++i)
            sum += double(response[i]) * std::polar(1.0, -2 * std::numbers::pi * hertz * double(i) / kMixRate);
        return 20 * std::log10(std::abs(sum));
    }

    test::TestFolder folder;
};

TEST_F(EqualiserSettingsTest, EveryBandOfAPlayerIsMeasuredAtItsCentre) {
    for (std::size_t band = 0; band < kBandFrequencies.size(); ++band) {
        for (const int position : {0, 6, 20}) {
            EqualiserSettings settings{true};
            settings.bands.at(band) = position;
            const std::vector<float> response = Response(settings);
            SCOPED_TRACE(kBandFrequencies.at(band));
            EXPECT_NEAR(Decibel(response, kBandFrequencies.at(band)), (position - 10) * 1.5, 0.2);
            EXPECT_NEAR(Decibel(response, band < 5 ? 15000 : 60), 0, 0.3) << "far away nothing changes";
        }
    }
}

TEST_F(EqualiserSettingsTest, BandsWorkTogetherAndOffMeansUntouched) {
    EqualiserSettings settings;
    settings.bands = {16, 10, 10, 10, 4, 10, 10, 10, 10, 14};
    EXPECT_NEAR(Decibel(Response(settings), 80), 0, 0.001) << "off";
    settings.on = true;
    const std::vector<float> all = Response(settings);
    for (const std::size_t band : {0, 4, 9})
        EXPECT_NEAR(Decibel(all, kBandFrequencies.at(band)), (settings.bands.at(band) - 10) * 1.5, 0.3) << band;
}

TEST_F(EqualiserSettingsTest, TheReverbRingsOnWhatIsDryDoesNot) {
    for (const int position : {0, 10, 20}) {
        EqualiserSettings settings{true};
        settings.reverb = position;
        const std::vector<float> response = Response(settings);
        const auto rings = [](float sample) { return std::abs(sample) > 0.0001F; };
        EXPECT_EQ(std::any_of(response.begin() + 4000, response.end(), rings), position < EqualiserSettings::kDry);
    }
}

TEST_F(EqualiserSettingsTest, WhatIsWrittenIsReadAndNonsenseIsMovedIntoTheRange) {
    Settings settings(folder.Path(u"kalvo.ini"_s));
    EXPECT_EQ(EqualiserSettings::Read(settings), EqualiserSettings{}) << "nothing stored";
    const EqualiserSettings some{true, {0, 1, 2, 3, 4, 5, 6, 7, 8, 20}, 13};
    some.Write(settings);
    EXPECT_EQ(EqualiserSettings::Read(settings), some);
    settings.PutSetting(u"Equalizer"_s, u"80"_s, u"-5"_s);
    settings.PutSetting(u"Equalizer"_s, u"125"_s, u"laut"_s);
    settings.PutSetting(u"Equalizer"_s, u"Hall"_s, u"99"_s);
    const EqualiserSettings mended = EqualiserSettings::Read(settings);
    EXPECT_EQ(mended.bands[0], 0);
    EXPECT_EQ(mended.bands[1], 10);
    EXPECT_EQ(mended.reverb, 20);
}

} // namespace
} // namespace kalvo
