#include "playback/HandOver.h"

#include "playback/ListEnds.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

MixState PlayingOn(int player, int position, int length) {
    MixState state;
    state.heldByUser = false;
    state.lastOnAir = player;
    state.decks.at(static_cast<std::size_t>(player - 1)) = {true, false, position, length, true};
    state.decks.at(static_cast<std::size_t>(2 - player)).hasNext = true;
    return state;
}

const StartAction kNothing{};

TEST(HandOver, BeginsWhenTheSwitchOverTimeIsLeftUnlessModeSwitchesOrAFadeForbidIt) {
    const MixState due = PlayingOn(1, 195, 200);
    const auto with = [&due](auto change) {
        MixState state = due;
        change(state);
        return HandOverDecision(state);
    };
    EXPECT_EQ(HandOverDecision(PlayingOn(1, 190, 200)), kNothing);
    EXPECT_EQ(HandOverDecision(PlayingOn(1, 191, 200)), (StartAction{StartKind::Fade, 2}));
    EXPECT_EQ(HandOverDecision(PlayingOn(2, 191, 200)), (StartAction{StartKind::Fade, 1}));
    EXPECT_EQ(with([](MixState& s) { s.continuous = false; }), kNothing);
    EXPECT_EQ(with([](MixState& s) { s.automatic = false; }), kNothing);
    EXPECT_EQ(with([](MixState& s) { s.mode = FadeMode::NoFading; }), kNothing);
    EXPECT_EQ(with([](MixState& s) { s.handOverRunning = true; }), kNothing);
    EXPECT_EQ(with([](MixState& s) { s.fadeStep = -1; }), kNothing);
    EXPECT_EQ(with([](MixState& s) { s.decks[1].hasNext = false; }), kNothing) << "the own list goes on at the end";
    EXPECT_EQ(with([](MixState& s) { s.decks[0] = {false, true, 195, 200, true}; }), kNothing) << "paused";
    EXPECT_EQ(with([](MixState& s) { s.decks[1] = {true, false, 3, 90, false}; }), (StartAction{StartKind::Fade, 2}));
}

TEST(HandOver, TheFaderDecidesWhoIsOnAirWhenBothPlay) {
    MixState state = PlayingOn(1, 10, 200);
    state.decks[1] = {true, false, 10, 200, true};
    state.fader = 0;
    EXPECT_EQ(OnAir(state), 1);
    state.fader = 1;
    EXPECT_EQ(OnAir(state), 2);
    state.decks[1] = {false, true, 10, 200, true};
    EXPECT_EQ(OnAir(state), 1) << "the playing one goes before a paused one";
    state.decks[0] = {};
    EXPECT_EQ(OnAir(state), 2);
}

TEST(HandOver, OnlyTheEndOfTheTitleOnAirAdvances) {
    MixState state = PlayingOn(2, 20, 200);
    state.fader = 100;
    EXPECT_EQ(EndDecision(state, 1), kNothing) << "the silent side just stops";
    state.fader = -100;
    EXPECT_EQ(EndDecision(state, 1), (StartAction{StartKind::Jump, 2})) << "the playing other one is brought up";
    state = PlayingOn(1, 200, 200);
    state.decks[0].playing = false;
    EXPECT_EQ(EndDecision(state, 1), (StartAction{StartKind::Jump, 2}));
    state.decks[1].hasNext = false;
    EXPECT_EQ(EndDecision(state, 1), (StartAction{StartKind::Continue, 1}));
    state.decks[0].hasNext = false;
    EXPECT_EQ(EndDecision(state, 1), (StartAction{StartKind::AllEnded, 0}));
    state.continuous = false;
    EXPECT_EQ(EndDecision(state, 1), kNothing);
}

TEST(HandOver, AFadeOutlivesTheOldTitleAndNeverEndsInSilence) {
    MixState state = PlayingOn(2, 2, 200);
    state.fadeStep = 1;
    EXPECT_EQ(EndDecision(state, 1), kNothing) << "the old title ended first";

    state = PlayingOn(1, 195, 200); // the new one is shorter than the fade
    state.fadeStep = 1;
    EXPECT_EQ(EndDecision(state, 2), (StartAction{StartKind::Continue, 2}));
    state.decks[1].hasNext = false;
    EXPECT_EQ(EndDecision(state, 2), (StartAction{StartKind::FadeBack, 1}));
    state.decks[0].playing = false;
    EXPECT_EQ(EndDecision(state, 2), (StartAction{StartKind::Jump, 1}));
}

TEST(HandOver, SilenceEndsUnlessItIsWanted) {
    MixState state = PlayingOn(1, 0, 0);
    state.decks[0].playing = false;
    EXPECT_EQ(SilenceDecision(state), (StartAction{StartKind::Jump, 2}));
    state.decks[1].hasNext = false;
    EXPECT_EQ(SilenceDecision(state), (StartAction{StartKind::Jump, 1}));
    state.heldByUser = true;
    EXPECT_EQ(SilenceDecision(state), kNothing);
    state.heldByUser = false;
    state.decks[0].paused = true;
    EXPECT_EQ(SilenceDecision(state), kNothing);
}

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

} // namespace
} // namespace kalvo
