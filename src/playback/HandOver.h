#pragma once

#include <array>

// Who takes over from whom, and when: free functions over plain values, called by timers and events that carry out what
// they say. Players count 1 and 2; 0 = none.
namespace kalvo {

enum class FadeMode : unsigned char { NoFading, FadeCrossOver };

struct DeckState {
    bool playing = false;
    bool paused = false;
    int position = 0;     ///< whole seconds, rounded to the nearest
    int length = 0;       ///< whole seconds, rounded to the nearest
    bool hasNext = false; ///< its list has a next title; looked up only where it is asked for
    bool opening = false; ///< has been started and waits for its file
    bool failed = false;  ///< its list has titles left, but none that can be played; looked up with hasNext
};

struct MixState {
    bool continuous = true;
    bool automatic = true;
    FadeMode mode = FadeMode::FadeCrossOver;
    int switchOver = 9;           ///< seconds before a title's end
    int fader = 0;                ///< -100..100
    int fadeStep = 0;             ///< -1 towards Player 1, 1 towards Player 2, 0 no fade
    bool handOverRunning = false; ///< a hand-over has begun and its fade has not ended
    bool heldByUser = true;       ///< the silence is wanted: stopped or paused by hand, or nothing started yet
    int lastOnAir = 0;
    bool emergency = false;      ///< there is an emergency title
    bool emergencyAtEnd = false; ///< it plays at the end of both lists, too
    std::array<DeckState, 2> decks;

    const DeckState& Deck(int player) const { return decks.at(static_cast<std::size_t>(player - 1)); }
};

enum class StartKind : unsigned char {
    Nothing,
    Fade,      ///< the player starts (unless it plays already) and the fade towards it begins
    Jump,      ///< the player starts (unless it plays already) and the fader jumps to its side
    Continue,  ///< the player takes its own next title; fader and fade stay as they are
    FadeBack,  ///< the fade turns round to the player, which still plays
    Emergency, ///< the player starts the emergency title and the fader jumps to its side
    AllEnded   ///< both lists are at their end: the music stops
};

struct StartAction {
    StartKind kind = StartKind::Nothing;
    int player = 0;

    bool operator==(const StartAction&) const = default;
};

/** The player the guests hear: the playing one; with both playing the one on the fader's side, Player 1 in the centre.
 */
int OnAir(const MixState& state);

/** Whether the time for a hand-over has come, whatever the other list holds. */
bool WantsHandOver(const MixState& state);

/** Asked on every tick of the playback timer. Fade or Nothing. */
StartAction HandOverDecision(const MixState& state);

/** Asked when the title of `ended` has played to its end; the state still holds everything else as it was. */
StartAction EndDecision(const MixState& state, int ended);

/** The safety net, asked on every tick: silence that nobody wants ends with the next title, or is said to be the end.
 */
StartAction SilenceDecision(const MixState& state);

/**
 * Asked when the music has come to a stand on `stuck`, for the nth time in a row (from 1 on): who goes on. In the state
 * what stands still counts as stopped. From the second time on the emergency title comes before the lists, whose files
 * may all lie where nothing answers. Nothing when there is nothing left to play.
 */
StartAction StandstillDecision(const MixState& state, int stuck, int nth);

} // namespace kalvo
