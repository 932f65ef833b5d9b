#include "audio/TitleInspection.h"

#include "DecodeSupport.h"
#include "audio/JointMeasure.h"

#include <gtest/gtest.h>
#include <sndfile.h>

#include <cmath>
#include <functional>

using namespace kalvo::audio;
using namespace kalvo::audio::test;

namespace {

constexpr int kToneRate = 44100;

float Tone(int frame, double amplitude) {
    return float(amplitude * std::sin(2 * 3.14159265358979 * 997 * frame / kToneRate));
}

struct TitleInspectionTest : ::testing::Test {
    TitleInspection Inspected(const QString& path) {
        return InspectTitle(QFile::encodeName(path).toStdString(), cancelled).value();
    }
    QString Write(double seconds, const std::function<float(int frame)>& sample) {
        const QString path = folder.Path(QStringLiteral("ton.wav"));
        SF_INFO info{0, kToneRate, 1, SF_FORMAT_WAV | SF_FORMAT_FLOAT, 0, 0};
        SNDFILE* file = sf_open(QFile::encodeName(path).constData(), SFM_WRITE, &info);
        std::vector<float> mono;
        for (int i = 0; i < seconds * kToneRate; ++i)
            mono.push_back(sample(i));
        sf_write_float(file, mono.data(), sf_count_t(mono.size()));
        sf_close(file);
        return path;
    }

    TestFolder folder;
    std::atomic<bool> cancelled{false};
};

} // namespace

TEST_F(TitleInspectionTest, SilenceIsFoundAtBothEndsAndWithin) {
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
    EXPECT_TRUE(Inspected(Write(2, [](int) { return 0.0F; })).IsSilent());
}

TEST_F(TitleInspectionTest, RunsAtFullScaleAreClipped) {
    const auto loud = [](double amplitude) {
        return [amplitude](int frame) { return std::max(-1.0F, std::min(1.0F, Tone(frame, amplitude))); };
    };
    EXPECT_EQ(Inspected(Write(1, loud(0.99))).clippedRuns, 0);
    EXPECT_GE(Inspected(Write(1, loud(2))).clippedRuns, 2 * 1900) << "both halves of each wave, on both sides";
}

TEST_F(TitleInspectionTest, AnMp3ThatWasCutOffIsShorterThanItTells) {
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

TEST_F(TitleInspectionTest, WhatIsNoSoundHasNothing) {
    EXPECT_EQ(Inspected(folder.Write(QStringLiteral("text.mp3"), "kein Ton")), TitleInspection());
    cancelled = true;
    EXPECT_FALSE(InspectTitle(Write(1, [](int) { return 0.0F; }).toStdString(), cancelled));
}

TEST(JointMeasureTest, TellsJumpDipAndGap) {
    const auto joint = [](double first, double between, double second) {
        std::vector<float> stereo;
        for (int i = 0; i < 12 * kToneRate; ++i)
            stereo.insert(stereo.end(), 2, Tone(i, i < 5 * kToneRate ? first : i < 7 * kToneRate ? between : second));
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
