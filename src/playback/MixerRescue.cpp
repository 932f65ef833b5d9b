// What the mixer does when the music stands still, and the emergency title.

#include "base/FaderLaw.h"
#include "playback/Mixer.h"
#include "playlists/NextTitle.h"

#include <array>

namespace kalvo {

namespace {

/** Of CheckHandOver. */
constexpr std::chrono::milliseconds kLookInterval{100};

} // namespace

/** The list has titles left, but none that can be played; asked where it has no next title. */
bool Mixer::HasFailed(int player) const {
    const Playlist& list = *Deck(player).list;
    const int current = list.CurrentRow();
    return list.IsPassedOver() || current + 1 < list.Count() || (current >= 0 && !exists_(list.At(current).path));
}

/** The user asked for music, and the player's list has nothing that can be read: silence is not what he wants. */
void Mixer::PassOn(int player) {
    if (layer_.Activity(player) == audio::Activity::Playing || !HasFailed(player) ||
        PeekNextTitle(List(player), exists_, options_.removePlayed) >= 0) {
        return;
    }
    const int other = OtherPlayer(player);
    if (layer_.Activity(other) != audio::Activity::Playing) {
        heldByUser_ = heldByUser_ && !emergency_.IsThere();
    } else if (FadeTarget() == player) {
        fader_.FadeTowards(other);
    } else if (FadeTarget() == 0 && FaderVolume(other, fader_.Position()) == 0) {
        MoveFader(FaderEndOf(other));
    }
}

/** Whether the player is to be heard now; mute is the user's affair. */
bool Mixer::IsDue(int player, const MixState& state) const {
    return state.Deck(player).playing && (player == OnAir(state) || FaderVolume(player, state.fader) > 0);
}

void Mixer::WatchStandstill() {
    const MixState state = StateNow(false);
    const int onAir = OnAir(state);
    DeskPulse pulse;
    pulse.wanted = options_.continuous && !heldByUser_ && (onAir == 0 || state.Deck(onAir).playing);
    audio::OutputInfo info;
    layer_.Audio().GetInfo(audio::Output::Main, info);
    pulse.rendered = info.callbacks;
    for (const int player : {1, 2}) {
        if (IsDue(player, state)) {
            pulse.positions.at(static_cast<std::size_t>(player - 1)) = layer_.PositionSeconds(player);
        }
    }
    if (const int nth = standstill_.Look(pulse, kLookInterval); nth > 0) {
        EndStandstill(nth);
    }
}

void Mixer::EndStandstill(int nth) {
    MixState state = StateNow(true);
    const int onAir = OnAir(state);
    const int stuck = onAir != 0 ? onAir : IsOpening(1) ? 1 : IsOpening(2) ? 2 : lastOnAir_ == 2 ? 2 : 1;
    std::array<bool, 2> standing{};
    for (const int player : {1, 2}) {
        standing.at(static_cast<std::size_t>(player - 1)) = IsOpening(player) || IsDue(player, state);
    }
    for (std::size_t i = 0; i < standing.size(); ++i) {
        DeckState& deck = state.decks.at(i);
        deck.playing = deck.playing && !standing.at(i);
        deck.opening = false;
    }
    const StartAction action = StandstillDecision(state, stuck, nth);
    if (action.kind == StartKind::Nothing) { // what stands still may yet move on
        if (nth == 1) {
            Q_EMIT Message(QStringLiteral("Die Musik steht still: kein weiterer Titel, kein Notfalltitel gewählt."));
        }
        return;
    }
    for (const int player : {1, 2}) {
        if (!standing.at(static_cast<std::size_t>(player - 1))) {
            continue;
        }
        if (IsOpening(player)) {
            List(player).PassOver(List(player).CurrentRow());
        }
        DropUnplayable(player, QStringLiteral("Die Datei antwortet nicht: "));
    }
    Q_EMIT Message(QStringLiteral("Zwei Sekunden Stille: weiter auf Player %1.").arg(action.player));
    Start(action);
}

bool Mixer::PlayEmergency(int player) {
    DeckData& deck = Deck(player);
    deck.title = emergency_.title;
    if (layer_.LoadHeld(player, emergency_.file) == 0) {
        DropUnplayable(player, QStringLiteral("Der Notfalltitel kann nicht abgespielt werden: "));
        return false;
    }
    ReadyLoaded(player);
    StartStream(player);
    EndHandOver();
    MoveFader(FaderEndOf(player));
    Q_EMIT Message(QStringLiteral("Der Notfalltitel spielt: ") + deck.title.title);
    return true;
}

} // namespace kalvo
