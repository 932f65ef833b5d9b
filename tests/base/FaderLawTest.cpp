#include "base/FaderLaw.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

TEST(FaderLaw, FullUpToTheCentreThenFallingOnTheFarSide) {
    const struct {
        int fader, player1, player2;
    } cases[] = {{-100, 100, 0}, {-99, 100, 1}, {-30, 100, 70}, {0, 100, 100},
                 {1, 99, 100},   {70, 30, 100}, {100, 0, 100}};
    for (const auto& c : cases) {
        EXPECT_EQ(FaderVolume(1, c.fader), c.player1) << c.fader;
        EXPECT_EQ(FaderVolume(2, c.fader), c.player2) << c.fader;
        EXPECT_EQ(PlayerVolume(1, c.fader, true), 0);
    }
}

} // namespace
} // namespace kalvo
