#include "OfflineDesk.h"

#include <cmath>
#include <numbers>

using namespace kalvo::audio;
using namespace kalvo::test;

namespace {

/** Raised cosine from one value to another, i of 256 frames done. */
double Glide(double from, double to, std::size_t i) {
    return from + (to - from) * (0.5 - 0.5 * std::cos(std::numbers::pi * double(std::min<std::size_t>(i, 256)) / 256));
}

void ExpectGlide(const std::vector<float>& out, double from, double to) {
    for (std::size_t i = 0; i + kDelay < out.size(); ++i)
        ASSERT_NEAR(out[i + kDelay], Glide(from, to, i + 1), 1e-6) << i;
}

struct PlayingTest : DeskTest {};

} // namespace

TEST_F(PlayingTest, ASingleTitlePassesBitByBitFromItsFirstSample) {
    for (const std::size_t block : {1, 37, 256, 1000}) {
        OfflineDesk own;
        const Tone tone = Sine(9000, 0.9);
        own.Play(tone);
        const auto out = own.Render(3000, block);
        for (std::size_t i = kDelay; i < out.size(); ++i)
            ASSERT_EQ(out[i], tone.sample(std::int64_t(i - kDelay))) << i;
        EXPECT_EQ(out, own.right);
    }
}

TEST_F(PlayingTest, VolumeIsAFaderLawAndPanABalance) {
    const struct {
        int volume, pan;
        float left, right;
    } cases[] = {{100, 0, 0.8F, 0.8F}, {50, 0, 0.4F, 0.4F},  {1, 0, 0.008F, 0.008F},
                 {0, 0, 0, 0},         {100, -100, 0.8F, 0}, {100, -25, 0.8F, 0.6F},
                 {100, 100, 0, 0.8F},  {50, 75, 0.1F, 0.4F}, {100, 1, 0.792F, 0.8F}};
    for (const auto& c : cases) {
        OfflineDesk own;
        const Handle stream = own.Open(Constant(0.8F));
        ASSERT_TRUE(own.Audio().ChannelSetAttributes(stream, kKeepFrequency, c.volume, c.pan));
        ASSERT_TRUE(own.Audio().StreamPlay(stream, true));
        const auto out = own.Render(kDelay + 1); // set before the start: no ramp
        EXPECT_NEAR(out[kDelay], c.left, 1e-6) << c.volume << " " << c.pan;
        EXPECT_NEAR(own.right[kDelay], c.right, 1e-6) << c.volume << " " << c.pan;
    }
}

TEST_F(PlayingTest, VolumePanAndMasterGlideWhilePlaying) {
    const Handle stream = desk.Play(Constant(0.5F));
    desk.Render(1000);
    ASSERT_TRUE(library.ChannelSetAttributes(stream, kKeepFrequency, 40, kKeepPan));
    ExpectGlide(desk.Render(1000), 0.5, 0.2);
    ASSERT_TRUE(library.ChannelSetAttributes(stream, kKeepFrequency, kKeepVolume, 100));
    ExpectGlide(desk.Render(1000), 0.2, 0);
    EXPECT_NEAR(desk.right.back(), 0.2, 1e-6);
    ASSERT_TRUE(library.ChannelSetAttributes(stream, kKeepFrequency, 100, 0));
    desk.Render(1000);
    ASSERT_TRUE(library.SetVolume(Output::Main, 50));
    ExpectGlide(desk.Render(1000), 0.5, 0.25);
    EXPECT_EQ(library.GetVolume(Output::Main), 50);
}

TEST_F(PlayingTest, PauseResumeAndStopFadeAndKeepThePlace) {
    const Handle stream = desk.Play(Constant(0.5F));
    desk.Render(1000);
    ASSERT_TRUE(library.ChannelPause(stream));
    EXPECT_EQ(library.ChannelIsActive(stream), Activity::Paused);
    ExpectGlide(desk.Render(1000), 0.5, 0);
    EXPECT_EQ(library.ChannelGetPosition(stream), 4U * 1256) << "the fade takes 256 frames, then nothing moves";
    EXPECT_FALSE(library.ChannelPause(stream));
    ASSERT_TRUE(library.ChannelResume(stream));
    ExpectGlide(desk.Render(1000), 0, 0.5);
    EXPECT_EQ(library.ChannelGetPosition(stream), 4U * 2256);
    ASSERT_TRUE(library.ChannelStop(stream));
    EXPECT_EQ(library.ChannelIsActive(stream), Activity::Stopped);
    ExpectGlide(desk.Render(1000), 0.5, 0);
    ASSERT_TRUE(library.StreamPlay(stream, false));
    ExpectGlide(desk.Render(1000), 0, 0.5);
    EXPECT_EQ(library.ChannelGetPosition(stream), 4U * 3512);
}

TEST_F(PlayingTest, ASeekFadesOutJumpsAndFadesIn) {
    const Handle stream = desk.Play({44100, 100000, [](std::int64_t frame) { return frame < 50000 ? 0.25F : 0.75F; }});
    desk.Render(1000);
    ASSERT_TRUE(library.ChannelSetPosition(stream, 4 * 60000));
    EXPECT_EQ(library.ChannelGetPosition(stream), 4U * 60000) << "at once";
    const auto out = desk.Render(1000);
    for (std::size_t i = 0; i < 256; ++i) {
        ASSERT_NEAR(out[kDelay + i], Glide(0.25, 0, i + 1), 1e-6) << i;
        ASSERT_NEAR(out[kDelay + 256 + i], Glide(0, 0.75, i + 1), 1e-6) << i;
    }
    EXPECT_EQ(library.ChannelGetPosition(stream), 4U * (60000 + 1000 - 256));
    EXPECT_FALSE(library.ChannelSetPosition(stream, 4 * 100001));
    EXPECT_EQ(library.ErrorGetCode(), ErrorCode::Argument);
}

TEST_F(PlayingTest, FreeFadesOutAndInvalidatesTheHandleAtOnce) {
    const Handle stream = desk.Play(Constant(0.5F));
    desk.Render(1000);
    ASSERT_TRUE(library.StreamFree(stream));
    EXPECT_FALSE(library.StreamPlay(stream, true));
    EXPECT_EQ(library.ErrorGetCode(), ErrorCode::InvalidHandle);
    ExpectGlide(desk.Render(1000), 0.5, 0);
    EXPECT_GT(desk.Open(Constant(0)), stream) << "handles are not used twice";
}

TEST_F(PlayingTest, AStarvingTitleFadesStaysPlayingAndComesBack) {
    auto delivery = std::make_shared<Delivery>();
    delivery->until = 5000;
    const Handle stream = desk.Open(Sine(100, 0.5), delivery);
    ASSERT_TRUE(library.StreamPlay(stream, true));
    auto out = desk.Render(10000);
    EXPECT_EQ(out.back(), 0);
    EXPECT_EQ(library.ChannelIsActive(stream), Activity::Playing);
    OutputInfo info;
    ASSERT_TRUE(library.GetInfo(Output::Main, info));
    EXPECT_EQ(info.starvations, 1U);
    delivery->until = INT64_MAX;
    desk.RenderTo(out, 4000);
    EXPECT_LT(LargestJump(out), 0.0005);
    EXPECT_EQ(library.ChannelGetPosition(stream) % 4, 0U);
    EXPECT_NEAR(MeasuredFrequency({out.end() - 2000, out.end()}), 100, 0.1);
}
