#pragma once

#include "playback/HandOver.h"

#include <QString>

// What pre-listening on the main output decides, as free functions over plain values.
namespace kalvo {

/** Which players were running when pre-listening was asked for. */
enum class PreListenMode : unsigned char { KeinPlayer, Player1, Player2, BeidePlayer };

PreListenMode PreListenModeOf(bool firstRuns, bool secondRuns);

/** "keinplayer", "player1", "player2" or "beideplayer". */
QString PreListenModeText(PreListenMode mode);

/**
 * The player whose music is faded out first, 0 for none; with both running the one on the fader's side, Player 2 in the
 * centre.
 */
int PlayerToFadeOut(PreListenMode mode, int fader);

/**
 * What becomes of the music when what was listened to on a player has ended. musicRan: before it began. The other
 * player, if it still runs, is faded to; else list 1 goes on, then list 2. Nothing where nothing ran, or where nothing
 * starts by itself.
 */
StartAction AfterListening(const MixState& state, int player, bool musicRan);

} // namespace kalvo
