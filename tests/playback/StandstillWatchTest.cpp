#include "playback/StandstillWatch.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

using std::chrono::milliseconds;

/** The watch, looking ten times a second. */
struct StandstillWatchTest : ::testing::Test {
    /** How many standstills it tells within the time; `play` changes the pulse before each look. */
    template<typename Play>
    int Found(int looks, Play play) {
        int found = 0;
        for (int look = 0; look < looks; ++look) {
            ++pulse.rendered;
            play();
            last = watch.Look(pulse, milliseconds(100));
            found += last > 0 ? 1 : 0;
        }
        return found;
    }

    StandstillWatch watch;
    DeskPulse pulse{true, 0, {1.0, std::nullopt}};
    int last = 0;
};

TEST_F(StandstillWatchTest, StandsInARowAreCounted) {
    EXPECT_EQ(Found(40, [] {}), 2);
    EXPECT_EQ(last, 2);
    *pulse.positions[0] += 0.1;
    EXPECT_EQ(Found(20, [] {}), 0) << "it has moved once";
    EXPECT_EQ(Found(1, [] {}), 1);
    EXPECT_EQ(last, 1) << "a new row";
}

TEST_F(StandstillWatchTest, MusicThatMovesOrIsNotWantedIsFine) {
    EXPECT_EQ(Found(100, [this] { *pulse.positions[0] += 0.1; }), 0);
    EXPECT_EQ(Found(100, [this] { *pulse.positions[0] -= 0.1; }), 0) << "a seek backwards";
    pulse.wanted = false;
    EXPECT_EQ(Found(100, [] {}), 0);
    pulse.wanted = true;
    EXPECT_EQ(Found(19, [] {}), 0) << "the time without a wish does not count";
}

TEST_F(StandstillWatchTest, ATitleThatIsOnlyTurnedUpHasNotMoved) {
    EXPECT_EQ(Found(19, [] {}), 0);
    pulse.positions = {std::nullopt, 50.0};
    EXPECT_EQ(Found(1, [] {}), 1);
    pulse.positions = {};
    EXPECT_EQ(Found(20, [] {}), 1) << "nobody plays, though somebody should";
}

} // namespace
} // namespace kalvo
