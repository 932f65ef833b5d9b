// Titles that are played in place of the music: pre-listening and play-through.

#include "base/FaderLaw.h"
#include "playback/Mixer.h"
#include "playback/PreListenMode.h"

#include <utility>

namespace kalvo {

void Mixer::BeginListening() {
    if (listening_) {
        return;
    }
    musicRan_ = OnAir(StateNow(false)) != 0 && !heldByUser_;
    EndHandOver();
    listening_ = true;
}

bool Mixer::PlayListened(int player, const DeckTitle& title, const QString& status) {
    StopPlayer(player);
    DeckData& deck = Deck(player);
    deck.title = {title.title, title.artist, {}, title.path};
    deck.listenedStatus = status;
    deck.asked = true;
    deck.openingRounds = 0;
    layer_.BeginLoading(player, title.path);
    layer_.Record(player).state = PlayState::Listened;
    switch (layer_.AwaitLoading(player, patience_)) {
    case audio::OpenState::Ready:
        StartLoaded(player);
        return true;
    case audio::OpenState::Opening:
        Q_EMIT PlayerChanged(player);
        return true;
    case audio::OpenState::Failed:
        break;
    }
    DropUnplayable(player, QStringLiteral("Die Datei kann nicht abgespielt werden: "));
    return false;
}

void Mixer::LimitVolume(int player, int volume, int milliseconds) {
    DeckData& deck = Deck(player);
    if (std::exchange(deck.limit, volume) != volume) {
        layer_.SlidePlayerVolume(player, VolumeOf(deck), milliseconds);
    }
}

void Mixer::EndListening(int player) {
    if (!std::exchange(listening_, false)) {
        return;
    }
    if (layer_.Activity(player) != audio::Activity::Stopped || IsOpening(player)) {
        StopPlayer(player);
    }
    Deck(player).title = {};
    const StartAction action = AfterListening(StateNow(true), player, musicRan_);
    heldByUser_ = action.kind == StartKind::Nothing;
    Start(action);
    Q_EMIT PlayerChanged(player);
}

} // namespace kalvo
