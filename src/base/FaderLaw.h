#pragma once

#include <array>

namespace kalvo {

constexpr int kFaderEnd = 100; ///< the fader runs from -100 (Player 1) to 100 (Player 2), 0 is the centre

/** Volume of a player, 0..100, by the fader alone: full up to the centre and on its own side, then falling evenly. */
constexpr int FaderVolume(int player, int fader) {
    const int towardsPlayer = player == 1 ? -fader : fader;
    return towardsPlayer >= 0 ? 100 : 100 + towardsPlayer;
}

/** What the live tools do to the players' volumes. */
struct LiveVolumes {
    bool jingle = false; ///< a scheduled file plays: both players are silent
    /** By player: it has ended, the volume is 100 until the fader moves, a player starts or this one's mute ends. */
    std::array<bool, 2> full{};
    int dipped = 0; ///< the player that a sampler pad turns down; 0 = none
    int dip = 100;  ///< to this volume, 0..100
};

/** Volume of a player, 0..100, by all that touches it: the jingle goes before mute, dip and fader. */
constexpr int PlayerVolume(int player, int fader, bool muted, const LiveVolumes& live = {}) {
    if (live.jingle || muted) {
        return 0;
    }
    const int own = live.full.at(player == 1 ? 0 : 1) ? 100 : FaderVolume(player, fader);
    return live.dipped == player && live.dip < own ? live.dip : own;
}

/** Where the fader stands when only this player is heard. */
constexpr int FaderEndOf(int player) {
    return player == 1 ? -kFaderEnd : kFaderEnd;
}

constexpr int OtherPlayer(int player) {
    return 3 - player;
}

} // namespace kalvo
