#include "playback/Mixer.h"

#include "base/FaderLaw.h"

#include <algorithm>

namespace kalvo {

namespace {

/** ms that the volumes of a fade are on their way ahead of it: steps that come late do not bend their line. */
constexpr int kFadeAhead = 250;
constexpr int kFullVolume = 100;

/** The entry that Play starts; -1: what is prepared, or the next title. */
int RowToPlay(const DeckData& deck, bool plays, int selectedRow) {
    const int current = deck.list->CurrentRow();
    const bool isSelected = selectedRow >= 0 && selectedRow < deck.list->Count();
    if (isSelected && !(plays && current >= 0)) {
        return selectedRow;
    }
    return plays || !deck.title.prepared ? current : -1;
}

} // namespace

Mixer::Mixer(AudioLayer& layer, Playlist& list1, Playlist& list2, QObject* parent)
    : MixerSignals(parent), layer_(layer) {
    const std::array<Playlist*, 2> lists{&list1, &list2};
    for (const int player : {1, 2}) {
        DeckData& deck = Deck(player);
        deck.owner = this;
        deck.number = player;
        deck.list = lists.at(static_cast<std::size_t>(player - 1));
        connect(deck.list, &Playlist::Changed, this, [&deck] { deck.prepareDue = true; });
        connect(deck.list, &Playlist::CurrentChanged, this, [&deck] { deck.prepareDue = true; });
    }
}

Mixer::~Mixer() {
    layer_.FreeStream(1);
    layer_.FreeStream(2);
}

void Mixer::SetOptions(const MixerOptions& options) {
    options_ = options;
    for (DeckData& deck : decks_) {
        deck.prepareDue = true;
    }
    Q_EMIT OptionsChanged();
}

// ---- transport

void Mixer::Play(int player, int selectedRow) {
    const audio::Activity activity = layer_.Activity(player);
    DeckData& deck = Deck(player);
    const int row = RowToPlay(deck, activity == audio::Activity::Playing, selectedRow);
    if (deck.limit < kFullVolume && activity == audio::Activity::Playing) {
        Q_EMIT WantedBack(player);
    } else if (activity == audio::Activity::Paused) {
        EnsurePlaying(player);
    } else if (IsOpening(player) && (selectedRow < 0 || selectedRow == deck.list->CurrentRow())) {
        return; // under way
    } else if (row >= 0) {
        PlayRow(player, row);
    } else if (!StartNext(player)) {
        TellEnd(player);
        PassOn(player);
    }
}

void Mixer::PlayRow(int player, int row) {
    if (!StartRow(player, row, true)) {
        PassOn(player);
    }
}

void Mixer::Pause(int player) {
    if (layer_.Activity(player) != audio::Activity::Playing) {
        return;
    }
    layer_.Audio().ChannelPause(layer_.Record(player).stream);
    heldByUser_ = !IsAudible(OtherPlayer(player));
    Q_EMIT PlayerChanged(player);
}

void Mixer::Stop(int player) {
    Deck(player).stoppedByUser = true;
    heldByUser_ = !IsAudible(OtherPlayer(player));
    StopPlayer(player);
}

void Mixer::Next(int player) {
    if (List(player).IsEmpty()) {
        return;
    }
    const bool goesOn = options_.continuous && IsAudible(player); // then the other list has the word
    StopPlayer(player);
    Deck(player).title = {};
    if (!StartNext(player)) {
        heldByUser_ = !goesOn && !IsAudible(OtherPlayer(player));
        TellEnd(player);
        PassOn(player);
        Q_EMIT PlayerChanged(player);
    }
}

void Mixer::TellEnd(int player) {
    const QString text = List(player).IsEmpty() ? QStringLiteral("Wiedergabeliste %1 ist leer.")
                         : HasFailed(player)
                             ? QStringLiteral("In Wiedergabeliste %1 lässt sich kein weiterer Titel abspielen.")
                             : QStringLiteral("Wiedergabeliste %1 ist am Ende.");
    Q_EMIT Message(text.arg(player));
}

bool Mixer::IsAudible(int player) const {
    return layer_.Activity(player) == audio::Activity::Playing &&
           PlayerVolume(player, fader_.Position(), Deck(player).muted) > 0; // a jingle is no silence of the player's
}

void Mixer::ToggleMute(int player) {
    Deck(player).muted = !Deck(player).muted;
    live_.full.at(player == 1 ? 0 : 1) = false;
    ApplyVolumes();
    Q_EMIT PlayerChanged(player);
}

void Mixer::SetPitch(int player, int pitch) {
    layer_.SetPitch(player, pitch);
}

void Mixer::SeekSeconds(int player, double seconds) {
    layer_.SetPositionSeconds(player, seconds);
}

void Mixer::ToStart(int player) {
    SeekSeconds(player, std::max(0.0, Deck(player).title.cue));
}

void Mixer::SetMasterVolume(int volume) {
    layer_.Audio().SetVolume(audio::Output::Main, volume);
}

void Mixer::SetPatience(std::chrono::milliseconds patience) {
    patience_ = static_cast<int>(patience.count());
    files_.SetPatience(patience);
}

void Mixer::StopPlayer(int player) {
    layer_.FreeStream(player);
    Deck(player).prepareDue = true;
    Q_EMIT PlayerChanged(player);
}

// ---- fader

void Mixer::SetFader(int position) {
    MoveFader(position);
}

void Mixer::MoveFader(int position) {
    if (position == fader_.Position()) {
        return;
    }
    fader_.SetPosition(position);
    live_.full = {};
    ApplyVolumes();
    Q_EMIT FaderMoved(fader_.Position());
}

void Mixer::FadeTo(int player, int selectedRow) {
    if (layer_.Activity(player) != audio::Activity::Playing) {
        Play(player, selectedRow);
        const bool started = layer_.Activity(player) != audio::Activity::Stopped || IsOpening(player);
        if (!started && !List(player).IsEmpty() && IsAudible(OtherPlayer(player))) {
            Q_EMIT Message(
                QStringLiteral("Keine Überblendung: auf Player %1 lässt sich kein Titel abspielen.").arg(player));
            return; // nobody wants silence because a disk is gone
        }
    }
    fadesOut_ = layer_.Activity(player) != audio::Activity::Playing && !IsOpening(player);
    if (!fadesOut_) {
        heldByUser_ = false; // who fades to it wants to hear it
    }
    fader_.FadeTowards(player);
    Q_EMIT FadedTo(player);
}

void Mixer::StepFade() {
    const int target = FadeTarget();
    if (target == 0) {
        return;
    }
    if (faderHeld_ || IsOpening(target)) {
        ApplyVolumes(); // they were on their way
        return;
    }
    const int silent = OtherPlayer(target);
    if (!fadesOut_ && layer_.Activity(target) != audio::Activity::Playing &&
        layer_.Activity(silent) == audio::Activity::Playing) {
        fader_.FadeTowards(silent); // the target was stopped, was paused or broke, or the other has just been started
        return;
    }
    const int before = fader_.Position();
    const bool arrived = fader_.Tick();
    if (fader_.Position() != before) {
        live_.full = {};
        SlideVolumes();
        Q_EMIT FaderMoved(fader_.Position());
    }
    if (!arrived) {
        return;
    }
    handOverRunning_ = false;
    if (layer_.Activity(target) == audio::Activity::Playing && layer_.Activity(silent) == audio::Activity::Playing) {
        StopPlayer(silent);
    }
}

int Mixer::VolumeOf(const DeckData& deck) const {
    return std::min(deck.limit, PlayerVolume(deck.number, fader_.Position(), deck.muted, live_));
}

void Mixer::SlideVolumes() {
    const int steps = std::min(fader_.StepsToBend(), std::max(1, kFadeAhead / options_.fadeInterval));
    if (steps == 0) {
        ApplyVolumes();
        return;
    }
    const int ahead = fader_.Position() + steps * fader_.Step();
    for (const DeckData& deck : decks_) {
        layer_.SlidePlayerVolume(deck.number, PlayerVolume(deck.number, ahead, deck.muted, live_),
                                 steps * options_.fadeInterval);
    }
}

void Mixer::SetJingle(bool plays) {
    live_.full.fill(live_.jingle && !plays);
    live_.jingle = plays;
    ApplyVolumes();
}

void Mixer::SetDip(int player, int volume) {
    live_.dipped = player;
    live_.dip = volume;
    ApplyVolumes();
}

void Mixer::ApplyVolumes() {
    for (const DeckData& deck : decks_) {
        layer_.SetPlayerVolume(deck.number, VolumeOf(deck));
    }
}

} // namespace kalvo
