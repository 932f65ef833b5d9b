#pragma once

namespace kalvo {

constexpr int kFaderEnd = 100; ///< the fader runs from -100 (Player 1) to 100 (Player 2), 0 is the centre

/** Volume of a player, 0..100, by the fader alone: full up to the centre and on its own side, then falling evenly. */
constexpr int FaderVolume(int player, int fader) {
    const int towardsPlayer = player == 1 ? -fader : fader;
    return towardsPlayer >= 0 ? 100 : 100 + towardsPlayer;
}

/** Volume of a player, 0..100, by all that touches it: mute goes before the fader. */
constexpr int PlayerVolume(int player, int fader, bool muted) {
    return muted ? 0 : FaderVolume(player, fader);
}

/** Where the fader stands when only this player is heard. */
constexpr int FaderEndOf(int player) {
    return player == 1 ? -kFaderEnd : kFaderEnd;
}

constexpr int OtherPlayer(int player) {
    return 3 - player;
}

} // namespace kalvo
