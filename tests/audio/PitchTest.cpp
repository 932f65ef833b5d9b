#include "OfflineDesk.h"

#include <cmath>
#include <numbers>

using namespace kalvo::audio;
using namespace kalvo::test;

namespace {

double Position(OfflineDesk& desk, Handle stream) {
    return double(desk.Audio().ChannelGetPosition(stream)) / 4;
}

/** What a sine sounds like where the stream says it is, kDelay output frames ago. */
double Expected(double frequency, double amplitude, double position, double speed) {
    return amplitude * std::sin(2 * std::numbers::pi * frequency * (position - (kDelay + 1) * speed) / 44100);
}

struct PitchTest : ::testing::Test {};

} // namespace

TEST_F(PitchTest, TheFrequencyIsExactAtEverySpeed) {
    for (const int percent : {50, 88, 95, 100, 101, 112, 200}) {
        OfflineDesk own;
        const Handle stream = own.Open(Sine(1000, 0.5, 1 << 20));
        ASSERT_TRUE(own.Audio().ChannelSetAttributes(stream, 441 * percent, kKeepVolume, kKeepPan));
        ASSERT_TRUE(own.Audio().StreamPlay(stream, true));
        own.Render(1000);
        EXPECT_NEAR(MeasuredFrequency(own.Render(44100)), 10.0 * percent, 0.01);
        EXPECT_NEAR(Position(own, stream), 45100 * percent / 100.0, 1.5);
    }
}

TEST_F(PitchTest, AnotherRateSoundsAtItsPitchAndEndsWithItsLastFrame) {
    for (const int rate : {22050, 48000, 96000}) {
        OfflineDesk own;
        const Handle stream = own.Play(Sine(1000, 0.5, rate, rate)); // one second
        EXPECT_NEAR(MeasuredFrequency(own.Render(44000)), 1000, 0.05) << rate;
        EXPECT_EQ(own.Audio().ChannelIsActive(stream), Activity::Playing) << rate;
        own.Render(101);
        EXPECT_EQ(own.Audio().ChannelIsActive(stream), Activity::Stopped) << rate;
        EXPECT_EQ(Position(own, stream), rate);
    }
}

TEST_F(PitchTest, ChangesMakeNoClickAndKeepTheTime) {
    std::vector<std::vector<int>> changes{{44101}, {43000}, {49392}, {38808}, {88200}, {}};
    for (int step = 0; step <= 240; ++step) // the slider up to 12 % and back
        changes.back().push_back(44100 + (step <= 120 ? step : 240 - step) * 44);
    for (const std::vector<int>& frequencies : changes) {
        SCOPED_TRACE(frequencies.front());
        OfflineDesk own;
        const Handle stream = own.Play(Sine(50, 0.5, 1 << 20));
        std::vector<float> out = own.Render(5000, 1000);
        for (const int frequency : frequencies) {
            ASSERT_TRUE(own.Audio().ChannelSetAttributes(stream, frequency, kKeepVolume, kKeepPan));
            own.RenderTo(out, frequencies.size() == 1 ? 5000 : 441);
        }
        EXPECT_LT(LargestJump(out), frequencies.size() == 1 ? 0.0002 : 0.0001);
        EXPECT_NEAR(out.back(), Expected(50, 0.5, Position(own, stream), frequencies.back() / 44100.0), 0.006);
    }
}
