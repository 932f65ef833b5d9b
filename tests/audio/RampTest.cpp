#include "audio/Ramp.h"

#include <gtest/gtest.h>

using kalvo::audio::kBlockFrames;
using kalvo::audio::Ramp;

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
    EXPECT_FALSE(ramp.Moving());
    EXPECT_EQ(ramp.Value(), 0);
    ramp.SlideTo(1, 10000);
    ramp.Advance(100);
    EXPECT_NEAR(ramp.Value(), 0.01, 1e-12);
    ramp.GlideTo(1); // takes over from a slide to the same target
    EXPECT_EQ(ramp.FramesLeft(), kBlockFrames);
    ramp.SlideTo(0.5, 0);
    EXPECT_EQ(ramp.Value(), 0.5);
}
