// What is told of a title and of a joint: loudness, peak, tempo, silence, clipping; and the gain that follows from it.

#include "audio/TitleMeasure.h"

#include "DecodeSupport.h"
#include "OfflineDesk.h"
#include "audio/JointMeasure.h"
#include "audio/TitleInspection.h"

#include <sndfile.h>

#include <cmath>
#include <numbers>

using namespace kalvo::audio;
using namespace kalvo::audio::test;

namespace {

constexpr int kToneRate = 44100;
constexpr double kTurn = 2 * std::numbers::pi;

float Sine997(int frame, double amplitude) {
    return float(amplitude * std::sin(kTurn * 997 * frame / kToneRate));
}

float Silence(int) {
    return 0;
}

struct TitleMeasureTest : ::testing::Test {
    std::optional<TitleMeasures> Measured(const QString& path) {
        return MeasureTitle(QFile::encodeName(path).toStdString(), cancelled);
    }
    TitleInspection Inspected(const QString& path) {
        return InspectTitle(QFile::encodeName(path).toStdString(), cancelled).value();
    }
    /** Both sides alike. */
    QString Write(double seconds, const std::function<float(int frame)>& sample) {
        const QString path = folder.Path(QStringLiteral("ton.wav"));
        SF_INFO info{0, kToneRate, 2, SF_FORMAT_WAV | SF_FORMAT_FLOAT, 0, 0};
        SNDFILE* file = sf_open(QFile::encodeName(path).constData(), SFM_WRITE, &info);
        std::vector<float> stereo;
        for (int i = 0; i < seconds * kToneRate; ++i)
            stereo.insert(stereo.end(), 2, sample(i));
        sf_write_float(file, stereo.data(), sf_count_t(stereo.size()));
        sf_close(file);
        return path;
    }

    TestFolder folder;
    std::atomic<bool> cancelled{false};
};

} // namespace

TEST_F(TitleMeasureTest, AToneHasTheLoudnessThatTheStandardSays) {
    for (const double decibel : {-23.0, -33.0}) { // both channels: a level in dBFS reads as the same figure in LUFS
        const double amplitude = std::pow(10, decibel / 20);
        const auto measured = Measured(Write(20, [amplitude](int frame) { return Sine997(frame, amplitude); }));
        ASSERT_TRUE(measured);
        EXPECT_NEAR(measured->loudness, decibel, 0.1);
        EXPECT_NEAR(20 * std::log10(measured->peak), decibel, 0.1);
    }
}

TEST_F(TitleMeasureTest, ThePeakBetweenTheSamplesCounts) {
    const auto between = [](int frame) { return float(0.9 * std::sin(kTurn / 4 * (frame + 0.5))); };
    EXPECT_NEAR(Measured(Write(2, between)).value().peak, 0.9, 0.03) << "the samples only reach 0.64";
}

TEST_F(TitleMeasureTest, BeatsAreCounted) {
    for (const int tempo : {58, 96, 128, 150, 174}) {
        const auto beats = [beat = kToneRate * 60 / tempo](int frame) {
            const int since = frame % beat;
            return float(0.8 * std::exp(-since / 2500.0) * std::sin(since * kTurn * 60 / kToneRate));
        };
        EXPECT_NEAR(Measured(Write(30, beats)).value().tempo, tempo, 1) << tempo;
    }
}

TEST_F(TitleMeasureTest, SilenceHasNoBeatAndNoFileNoMeasures) {
    const QString text = folder.Write(QStringLiteral("text.mp3"), "kein Ton");
    EXPECT_EQ(Measured(folder.Path(QStringLiteral("fehlt.mp3"))), std::nullopt);
    EXPECT_EQ(Measured(text), std::nullopt);
    EXPECT_EQ(Inspected(text), TitleInspection());
    const QString silence = Write(3, &Silence);
    EXPECT_EQ(Measured(silence), (TitleMeasures{-70, 0, 0}));
    EXPECT_TRUE(Inspected(silence).IsSilent());
    cancelled = true;
    EXPECT_EQ(Measured(silence), std::nullopt);
    EXPECT_FALSE(InspectTitle(silence.toStdString(), cancelled));
}

TEST_F(TitleMeasureTest, SilenceIsFoundAtBothEndsAndWithin) {
    const auto found = Inspected(Write(10, [](int frame) {
        const double second = double(frame) / kToneRate;
        const bool sounds = (second >= 1 && second < 3) || (second >= 5.5 && second < 6) || (second >= 7 && second < 8);
        return sounds ? 0.5F : 0.0F;
    }));
    EXPECT_NEAR(found.silenceAtStart, 1, 0.001);
    EXPECT_NEAR(found.longestGap, 2.5, 0.001);
    EXPECT_NEAR(found.gapAt, 3, 0.001);
    EXPECT_NEAR(found.silenceAtEnd, 2, 0.001);
    EXPECT_FALSE(found.IsSilent());
}

TEST_F(TitleMeasureTest, RunsAtFullScaleAreClipped) {
    const auto runs = [this](double amplitude) {
        const auto loud = [&](int frame) { return std::clamp(Sine997(frame, amplitude), -1.0F, 1.0F); };
        return Inspected(Write(1, loud)).clippedRuns;
    };
    EXPECT_EQ(runs(0.99), 0);
    EXPECT_GE(runs(2), 2 * 1900) << "both halves of each wave, on both sides";
}

TEST_F(TitleMeasureTest, AnMp3ThatWasCutOffIsShorterThanItTells) {
    const QString path = MakeSound(folder.Path({}), QStringLiteral("a.mp3"), Spec(20));
    const auto whole = Inspected(path);
    EXPECT_NEAR(whole.told, 20, 0.1);
    EXPECT_NEAR(whole.decoded, whole.told, 0.1);
    EXPECT_FALSE(whole.broken);
    QFile file(path);
    ASSERT_TRUE(file.resize(file.size() / 2));
    const auto cut = Inspected(path);
    EXPECT_NEAR(cut.told, 20, 0.1) << "its header still says so";
    EXPECT_NEAR(cut.decoded, 10, 0.5);
}

TEST(JointMeasureTest, TellsJumpDipAndGap) {
    const auto joint = [](double first, double between, double second) {
        std::vector<float> stereo;
        for (int i = 0; i < 12 * kToneRate; ++i) {
            const double amplitude = i < 5 * kToneRate ? first : i < 7 * kToneRate ? between : second;
            stereo.insert(stereo.end(), 2, Sine997(i, amplitude));
        }
        return MeasureJoint(stereo.data(), stereo.size() / 2, kToneRate, 5 * kToneRate, 7 * kToneRate);
    };
    const JointMeasures even = joint(0.1, 0.1, 0.1);
    EXPECT_NEAR(even.before, -20, 0.2);
    EXPECT_NEAR(even.Jump(), 0, 0.1);
    EXPECT_NEAR(even.Dip(), 0, 0.1);
    EXPECT_LT(even.gap, 0.01);
    const JointMeasures louder = joint(0.1, 0.05, 0.2);
    EXPECT_NEAR(louder.Jump(), 6, 0.2);
    EXPECT_NEAR(louder.Dip(), 6, 0.2);
    const JointMeasures hole = joint(0.1, 0, 0.1);
    EXPECT_NEAR(hole.gap, 2, 0.01);
    EXPECT_GT(hole.Dip(), 40);
    EXPECT_EQ(joint(0, 0, 0.1).Jump(), 0) << "nothing to compare with";
    EXPECT_EQ(MeasureJoint(nullptr, 0, kToneRate, 0, 0), JointMeasures());
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
