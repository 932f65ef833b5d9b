#include "app/DeckPresenter.h"

#include "base/FaderLaw.h"
#include "base/FileName.h"
#include "base/PlayTime.h"
#include "playback/Mixer.h"

#include <algorithm>
#include <cmath>

namespace kalvo {

namespace {

constexpr int kAnnouncedSeconds = 15;
constexpr float kLevelRange = 48; // dB
constexpr QChar kMinus(0x2212);

/** Whether titles are handed over by themselves, as things stand. */
bool HandsOver(const Mixer& mixer, const MixState& state) {
    return state.continuous && state.automatic && state.mode == FadeMode::FadeCrossOver && !mixer.IsListening();
}

/** Seconds until the player on air hands over; negative when it will not. */
int SecondsToHandOver(const Mixer& mixer, const MixState& state) {
    const int onAir = OnAir(state);
    if (!HandsOver(mixer, state) || onAir == 0 || !state.Deck(onAir).playing || state.fadeStep != 0) {
        return -1;
    }
    const int other = OtherPlayer(onAir);
    const DeckState& next = state.Deck(other);
    if (!next.playing && !next.paused && !mixer.Title(other).prepared) {
        return -1;
    }
    return std::max(0, state.Deck(onAir).length - state.switchOver - state.Deck(onAir).position);
}

DeckSignal SignalOf(const Mixer& mixer, int player, const MixState& state) {
    const DeckState& deck = state.Deck(player);
    if (deck.playing) {
        if (OnAir(state) != player) {
            return DeckSignal::Running;
        }
        return mixer.IsMuted(player) ? DeckSignal::Muted : DeckSignal::OnAir;
    }
    if (deck.paused) {
        return DeckSignal::Paused;
    }
    return mixer.Title(player).path.isEmpty() ? DeckSignal::None : DeckSignal::Ready;
}

} // namespace

QString TimeText(double position, double length) {
    return PlayTime::Format(position) + u'/' + PlayTime::Format(length);
}

float LevelShare(float peak) {
    if (peak <= 0) {
        return 0;
    }
    return std::clamp(1.0F + 20.0F * std::log10(peak) / kLevelRange, 0.0F, 1.0F);
}

DeckView PresentDeck(const Mixer& mixer, int player, float levelLeft, float levelRight) {
    const MixState state = mixer.State();
    const DeckState& deck = state.Deck(player);
    const DeckTitle& title = mixer.Title(player);
    DeckView view;
    view.signal = SignalOf(mixer, player, state);
    view.status = mixer.StatusText(player);
    view.title = FileName::ShownTitle(title.title, title.artist, title.path);
    view.artist = title.artist;
    view.bitrate = title.format;
    view.lengthSeconds = title.length;
    view.cueSeconds = title.cue;
    view.muted = mixer.IsMuted(player);
    view.playing = deck.playing;
    view.pitchPermille = mixer.Pitch(player);
    view.levelLeft = LevelShare(levelLeft);
    view.levelRight = LevelShare(levelRight);
    const bool handsOver = HandsOver(mixer, state);
    view.switchOverSeconds = handsOver && title.length > 0 ? state.switchOver : 0;
    if (!deck.playing && !deck.paused) {
        view.remaining = title.length > 0 ? PlayTime::Format(title.length) : QString();
        return view;
    }
    const double position = mixer.PositionSeconds(player);
    view.time = TimeText(position, title.length);
    view.remaining = kMinus + PlayTime::Format(std::max(0, deck.length - deck.position));
    view.position = title.length > 0 ? std::clamp(position / title.length, 0.0, 1.0) : 0;
    view.warning = OnAir(state) == player && deck.playing &&
                   deck.length - deck.position <= kAnnouncedSeconds + (handsOver ? state.switchOver : 0);
    return view;
}

HandOverView PresentHandOver(const Mixer& mixer) {
    const MixState state = mixer.State();
    HandOverView view;
    if (!HandsOver(mixer, state)) {
        return view;
    }
    view.kind = HandOverView::Kind::Rest;
    view.seconds = state.switchOver;
    const int seconds = SecondsToHandOver(mixer, state);
    if (state.handOverRunning && state.fadeStep != 0) {
        view = {HandOverView::Kind::Coming, state.fadeStep < 0 ? 1 : 2, 0};
    } else if (seconds >= 0 && seconds <= kAnnouncedSeconds) {
        view = {HandOverView::Kind::Coming, OtherPlayer(OnAir(state)), seconds};
    }
    return view;
}

} // namespace kalvo
