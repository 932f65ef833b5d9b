#pragma once

#include "playback/HandOver.h"

#include <QList>

#include <array>

namespace kalvo {

/** How long the lists will still be heard; index = player - 1. */
struct ListEnds {
    std::array<qint64, 2> rest{}; ///< seconds of music: what the player has, and all coming titles
    std::array<qint64, 2> end{};  ///< seconds from now until the last of them has ended
};

/**
 * coming: durations in seconds of the titles that each list will still give. With continuous play the players take
 * turns, beginning with the one on air, each starting the switch-over time before the other's end where the hand-over
 * is automatic; a list that is left over goes on alone. Without continuous play each list is taken as played through
 * alone. A paused player counts as if it went on now; with both silent Player 1 begins.
 */
ListEnds EndsOfLists(const MixState& state, const std::array<QList<int>, 2>& coming);

} // namespace kalvo
