#include "playback/HandOver.h"

#include "base/FaderLaw.h"

namespace kalvo {

namespace {

bool CanStart(const DeckState& deck) {
    return deck.playing || deck.paused || deck.opening || deck.hasNext;
}

/** The player that a running fade moves to; 0 = no fade. */
int FadeTarget(const MixState& state) {
    return state.fadeStep == 0 ? 0 : state.fadeStep < 0 ? 1 : 2;
}

int SideOf(int fader) {
    return fader <= 0 ? 1 : 2;
}

/** Lists that end because their titles cannot be played do not end the music. */
StartAction EndOfLists(const MixState& state, int player) {
    const bool lacking = state.decks[0].failed || state.decks[1].failed;
    if (state.emergency && (state.emergencyAtEnd || lacking)) {
        return {StartKind::Emergency, player};
    }
    return {StartKind::AllEnded, 0};
}

StartAction AfterEndOfFadeTarget(const MixState& state, int ended) {
    const int other = OtherPlayer(ended);
    if (state.continuous && state.Deck(ended).hasNext) {
        return {StartKind::Continue, ended};
    }
    if (state.Deck(other).playing) {
        return {StartKind::FadeBack, other};
    }
    if (!state.continuous) {
        return {};
    }
    return state.Deck(other).hasNext ? StartAction{StartKind::Jump, other} : EndOfLists(state, ended);
}

} // namespace

int OnAir(const MixState& state) {
    const DeckState& first = state.decks[0];
    const DeckState& second = state.decks[1];
    if (first.playing && second.playing) {
        return SideOf(state.fader);
    }
    if (first.playing || second.playing) {
        return first.playing ? 1 : 2;
    }
    if (first.paused && second.paused) {
        return SideOf(state.fader);
    }
    return first.paused ? 1 : second.paused ? 2 : 0;
}

bool WantsHandOver(const MixState& state) {
    if (!state.continuous || !state.automatic || state.mode != FadeMode::FadeCrossOver || state.handOverRunning ||
        state.fadeStep != 0) {
        return false;
    }
    const int onAir = OnAir(state);
    if (onAir == 0 || !state.Deck(onAir).playing) {
        return false;
    }
    const DeckState& deck = state.Deck(onAir);
    return deck.position + state.switchOver >= deck.length;
}

StartAction HandOverDecision(const MixState& state) {
    if (!WantsHandOver(state)) {
        return {};
    }
    const int target = OtherPlayer(OnAir(state));
    return CanStart(state.Deck(target)) ? StartAction{StartKind::Fade, target} : StartAction{};
}

StartAction EndDecision(const MixState& state, int ended) {
    const int other = OtherPlayer(ended);
    const int target = FadeTarget(state);
    if (target == ended) {
        return AfterEndOfFadeTarget(state, ended);
    }
    if (target == other && state.Deck(other).playing) {
        return {};
    }
    const bool wasOnAir = !state.Deck(other).playing || SideOf(state.fader) == ended;
    if (!wasOnAir || !state.continuous || state.heldByUser) {
        return {};
    }
    if (CanStart(state.Deck(other))) {
        return {StartKind::Jump, other};
    }
    if (!state.Deck(ended).hasNext) {
        return EndOfLists(state, ended);
    }
    // The fader may stand at the far end, after a hand-over whose target was stopped.
    return {FaderVolume(ended, state.fader) == 0 ? StartKind::Jump : StartKind::Continue, ended};
}

StartAction SilenceDecision(const MixState& state) {
    const bool isStarting = state.decks[0].opening || state.decks[1].opening;
    if (!state.continuous || state.heldByUser || isStarting || OnAir(state) != 0) {
        return {};
    }
    const int last = state.lastOnAir == 2 ? 2 : 1;
    for (const int player : {OtherPlayer(last), last}) {
        if (state.Deck(player).hasNext) {
            return {StartKind::Jump, player};
        }
    }
    return EndOfLists(state, last);
}

StartAction StandstillDecision(const MixState& state, int stuck, int nth) {
    if (nth > 1 && state.emergency) {
        return {StartKind::Emergency, stuck};
    }
    for (const int player : {OtherPlayer(stuck), stuck}) {
        if (CanStart(state.Deck(player))) {
            return {StartKind::Jump, player};
        }
    }
    return state.emergency ? StartAction{StartKind::Emergency, stuck} : StartAction{};
}

} // namespace kalvo
