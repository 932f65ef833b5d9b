#include "playback/PreListenMode.h"

#include <gtest/gtest.h>

namespace kalvo {

TEST(PreListenMode, TellsWhoRunsAndWhoIsFadedOut) {
    struct Case {
        bool first;
        bool second;
        int fader;
        const char* text;
        int faded;
    };
    for (const Case& given : {Case{false, false, -50, "keinplayer", 0}, Case{true, false, 100, "player1", 1},
                              Case{false, true, -100, "player2", 2}, Case{true, true, -1, "beideplayer", 1},
                              Case{true, true, 0, "beideplayer", 2}, Case{true, true, 1, "beideplayer", 2}}) {
        const PreListenMode mode = PreListenModeOf(given.first, given.second);
        EXPECT_EQ(PreListenModeText(mode), QLatin1String(given.text));
        EXPECT_EQ(PlayerToFadeOut(mode, given.fader), given.faded) << given.text << given.fader;
    }
}

TEST(PreListenMode, AfterwardsTheMusicThatRanGoesOn) {
    MixState state;
    state.heldByUser = false;
    EXPECT_EQ(AfterListening(state, 1, true), (StartAction{StartKind::AllEnded, 0}));
    state.decks[1].hasNext = true;
    EXPECT_EQ(AfterListening(state, 1, true), (StartAction{StartKind::Jump, 2}));
    state.decks[0].hasNext = true;
    EXPECT_EQ(AfterListening(state, 1, true), (StartAction{StartKind::Jump, 1}));
    EXPECT_EQ(AfterListening(state, 2, true), (StartAction{StartKind::Jump, 1})) << "list 1 first";
    EXPECT_EQ(AfterListening(state, 1, false), StartAction()) << "nothing ran";
    state.continuous = false;
    EXPECT_EQ(AfterListening(state, 1, true), StartAction()) << "nothing starts by itself";
    state.decks[1].playing = true;
    EXPECT_EQ(AfterListening(state, 1, true), (StartAction{StartKind::Fade, 2})) << "it runs already";
}

} // namespace kalvo
