#include "audio/TitleMeasure.h"

#include "DecodeSupport.h"
#include "OfflineDesk.h"

#include <gtest/gtest.h>
#include <sndfile.h>

#include <cmath>
#include <functional>

using namespace kalvo::audio;
using namespace kalvo::audio::test;

namespace {

struct TitleMeasureTest : ::testing::Test {
    std::optional<TitleMeasures> Measured(const QString& path) {
        return MeasureTitle(QFile::encodeName(path).toStdString(), cancelled);
    }
    /** Both sides alike. */
    QString Write(int seconds, const std::function<float(int frame)>& sample) {
        const QString path = folder.Path(QStringLiteral("ton.wav"));
        SF_INFO info{0, 44100, 2, SF_FORMAT_WAV | SF_FORMAT_FLOAT, 0, 0};
        SNDFILE* file = sf_open(QFile::encodeName(path).constData(), SFM_WRITE, &info);
        std::vector<float> stereo;
        for (int i = 0; i < seconds * 44100; ++i)
            stereo.insert(stereo.end(), 2, sample(i));
        sf_writef_float(file, stereo.data(), seconds * 44100);
        sf_close(file);
        return path;
    }

    TestFolder folder;
    std::atomic<bool> cancelled{false};
};

float Sine1k(int frame, double amplitude) {
    return float(amplitude * std::sin(2 * 3.14159265358979 * 997 * frame / 44100));
}

} // namespace

TEST_F(TitleMeasureTest, AToneHasTheLoudnessThatTheStandardSays) {
    for (const double decibel : {-23.0, -33.0}) { // both channels: a level in dBFS reads as the same figure in LUFS
        const double amplitude = std::pow(10, decibel / 20);
        const auto measured = Measured(Write(20, [amplitude](int frame) { return Sine1k(frame, amplitude); }));
        ASSERT_TRUE(measured);
        EXPECT_NEAR(measured->loudness, decibel, 0.1);
        EXPECT_NEAR(20 * std::log10(measured->peak), decibel, 0.1);
    }
}

TEST_F(TitleMeasureTest, ThePeakBetweenTheSamplesCounts) {
    const double turn = 2 * 3.14159265358979 / 4; // a quarter of the rate, its crests between the samples
    const auto measured = Measured(Write(2, [turn](int frame) { return float(0.9 * std::sin(turn * (frame + 0.5))); }));
    ASSERT_TRUE(measured);
    EXPECT_NEAR(measured->peak, 0.9, 0.03) << "the samples only reach 0.64";
}

TEST_F(TitleMeasureTest, BeatsAreCounted) {
    for (const int tempo : {58, 96, 128, 150, 174}) {
        const int beat = 44100 * 60 / tempo;
        const auto measured = Measured(Write(30, [beat](int frame) {
            const int since = frame % beat;
            return float(0.8 * std::exp(-since / 2500.0) * std::sin(since * 2 * 3.14159 * 60 / 44100));
        }));
        ASSERT_TRUE(measured);
        EXPECT_NEAR(measured->tempo, tempo, 1) << tempo;
    }
}

TEST_F(TitleMeasureTest, SilenceHasNoBeatAndNoFileNoMeasures) {
    const QString silence = Write(3, [](int) { return 0.0F; });
    EXPECT_EQ(Measured(silence), (TitleMeasures{-70, 0, 0}));
    EXPECT_EQ(Measured(folder.Path(QStringLiteral("fehlt.mp3"))), std::nullopt);
    EXPECT_EQ(Measured(folder.Write(QStringLiteral("text.mp3"), "kein Ton")), std::nullopt);
    cancelled = true;
    EXPECT_EQ(Measured(silence), std::nullopt);
}

TEST_F(TitleMeasureTest, LossyFilesMeasureAsTheirSource) {
    for (const char* name : {"a.mp3", "a.ogg", "a.opus"}) {
        const auto measured = Measured(MakeSound(folder.Path({}), QLatin1String(name), Spec(5)));
        ASSERT_TRUE(measured) << name;
        EXPECT_NEAR(20 * std::log10(measured->peak), -6, 0.5) << name;
    }
}

using GainTest = kalvo::test::DeskTest;

TEST_F(GainTest, ScalesTheSoundGlidesAndStopsAtTheLimiter) {
    using kalvo::test::Constant;
    const Handle stream = desk.Open(Constant(0.25F));
    ASSERT_TRUE(library.ChannelSetGain(stream, 6.0206F));
    ASSERT_TRUE(library.StreamPlay(stream, true));
    EXPECT_NEAR(desk.Render(1000)[900], 0.5, 1e-5) << "from the first frame on";
    ASSERT_TRUE(library.ChannelSetGain(stream, 0));
    const auto glided = desk.Render(1000);
    EXPECT_LT(kalvo::test::LargestJump(glided, 2), 0.001);
    EXPECT_EQ(glided[900], 0.25F) << "bit by bit";
    ASSERT_TRUE(library.ChannelSetGain(stream, 24));
    EXPECT_LE(desk.Render(3000)[2900], Limiter::kCeiling);
    for (const float wrong : {24.5F, -25.0F, NAN})
        EXPECT_FALSE(library.ChannelSetGain(stream, wrong));
}
