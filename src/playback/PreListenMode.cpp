#include "playback/PreListenMode.h"

#include "base/FaderLaw.h"

namespace kalvo {

PreListenMode PreListenModeOf(bool firstRuns, bool secondRuns) {
    if (firstRuns && secondRuns) {
        return PreListenMode::BeidePlayer;
    }
    return firstRuns ? PreListenMode::Player1 : secondRuns ? PreListenMode::Player2 : PreListenMode::KeinPlayer;
}

QString PreListenModeText(PreListenMode mode) {
    switch (mode) {
    case PreListenMode::Player1:
        return QStringLiteral("player1");
    case PreListenMode::Player2:
        return QStringLiteral("player2");
    case PreListenMode::BeidePlayer:
        return QStringLiteral("beideplayer");
    case PreListenMode::KeinPlayer:
        break;
    }
    return QStringLiteral("keinplayer");
}

int PlayerToFadeOut(PreListenMode mode, int fader) {
    switch (mode) {
    case PreListenMode::Player1:
        return 1;
    case PreListenMode::Player2:
        return 2;
    case PreListenMode::BeidePlayer:
        return fader < 0 ? 1 : 2;
    case PreListenMode::KeinPlayer:
        break;
    }
    return 0;
}

StartAction AfterListening(const MixState& state, int player, bool musicRan) {
    const int other = OtherPlayer(player);
    if (state.Deck(other).playing) {
        return {StartKind::Fade, other};
    }
    if (!musicRan || !state.continuous) {
        return {};
    }
    for (const int next : {1, 2}) {
        if (state.Deck(next).hasNext) {
            return {StartKind::Jump, next};
        }
    }
    return {StartKind::AllEnded, 0};
}

} // namespace kalvo
