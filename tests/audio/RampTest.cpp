#include "audio/Ramp.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

using kalvo::audio::kBlockFrames;
using kalvo::audio::Ramp;

TEST(RampTest, GlidesAlongARaisedCosineOf256Frames) {
    Ramp ramp(0.2);
    ramp.GlideTo(0.8);
    for (int i = 1; i <= 256; ++i)
        ASSERT_NEAR(ramp.Next(), 0.5 - 0.3 * std::cos(std::numbers::pi * i / 256), 1e-12) << i;
    EXPECT_FALSE(ramp.Moving());
    EXPECT_EQ(ramp.Value(), 0.8);
}

TEST(RampTest, ANewTargetStartsFromTheValueReached) {
    Ramp ramp(0);
    ramp.GlideTo(1);
    ramp.Advance(128);
    EXPECT_NEAR(ramp.Value(), 0.5, 1e-12);
    ramp.GlideTo(1); // on its way there already
    EXPECT_EQ(ramp.FramesLeft(), 128U);
    ramp.GlideTo(0);
    EXPECT_NEAR(ramp.Next(), 0.5, 1e-4);
    ramp.Advance(kBlockFrames - 1);
    EXPECT_EQ(ramp.Value(), 0);
}

TEST(RampTest, SlidesInAStraightLine) {
    Ramp ramp(1);
    ramp.SlideTo(0, 1000);
    for (int i = 1; i <= 1000; ++i)
        ASSERT_NEAR(ramp.Next(), 1 - i / 1000.0, 1e-12);
    ramp.SlideTo(0.5, 0);
    EXPECT_EQ(ramp.Value(), 0.5);
}

TEST(RampTest, AGlideTakesOverFromASlideToTheSameTarget) {
    Ramp ramp(0);
    ramp.SlideTo(1, 10000);
    ramp.Advance(100);
    ramp.GlideTo(1);
    EXPECT_EQ(ramp.FramesLeft(), kBlockFrames);
}
