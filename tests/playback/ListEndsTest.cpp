#include "playback/ListEnds.h"

#include <gtest/gtest.h>

namespace kalvo {

TEST(ListEnds, FollowThePlayersInTurn) {
    MixState idle, one, both, apart, alone;
    one.decks[0] = {true, false, 40, 100, false, false};
    both = one;
    both.fader = 100;
    both.decks[1] = {true, false, 10, 200, false, false};
    apart = one;
    apart.mode = FadeMode::NoFading;
    alone = one;
    alone.continuous = false;
    const struct {
        const char* what;
        const MixState& state;
        QList<int> first, second;
        std::array<qint64, 2> rest, end;
    } cases[] = {
        {"nothing to play", idle, {}, {}, {0, 0}, {0, 0}},
        {"Player 1 begins", idle, {100}, {200, 50}, {100, 250}, {100, 91 + 200 + 50}},
        {"the other list first", one, {100, 30}, {200}, {190, 200}, {51 + 191 + 100 + 30, 51 + 200}},
        {"two at once, the fader right", both, {}, {70}, {60, 260}, {181 + 60, 181 + 51 + 70}},
        {"without overlap", apart, {100}, {200}, {160, 200}, {60 + 200 + 100, 60 + 200}},
        {"each alone", alone, {100}, {200}, {160, 200}, {160, 200}},
        {"shorter than the overlap", idle, {5, 5}, {5}, {10, 5}, {5, 5}},
    };
    for (const auto& [what, state, first, second, rest, end] : cases) {
        const ListEnds ends = EndsOfLists(state, {first, second});
        EXPECT_EQ(ends.rest, rest) << what;
        EXPECT_EQ(ends.end, end) << what;
    }
}

} // namespace kalvo
