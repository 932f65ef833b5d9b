// What timers and the audio library's events bring to the mixer.

#include "base/FaderLaw.h"
#include "playback/Mixer.h"
#include "playlists/NextTitle.h"

#include <cmath>

namespace kalvo {

namespace {

int WholeSeconds(double seconds) {
    return static_cast<int>(std::lround(seconds));
}

} // namespace

MixState Mixer::StateNow(bool withNext) const {
    MixState state;
    state.continuous = options_.continuous;
    state.automatic = options_.automatic;
    state.mode = options_.mode;
    state.switchOver = options_.switchOver;
    state.fader = fader_.Position();
    state.fadeStep = fader_.Step();
    state.handOverRunning = handOverRunning_;
    state.heldByUser = heldByUser_;
    state.lastOnAir = lastOnAir_;
    state.emergency = emergency_.IsThere();
    state.emergencyAtEnd = emergency_.atListEnd;
    for (const DeckData& data : decks_) {
        DeckState& deck = state.decks.at(static_cast<std::size_t>(data.number - 1));
        const audio::Activity activity = layer_.Activity(data.number);
        deck.playing = activity == audio::Activity::Playing;
        deck.paused = activity == audio::Activity::Paused;
        deck.position = WholeSeconds(layer_.PositionSeconds(data.number));
        deck.length = WholeSeconds(layer_.LengthSeconds(data.number));
        deck.hasNext = withNext && PeekNextTitle(*data.list, exists_, options_.removePlayed) >= 0;
        deck.failed = withNext && !deck.hasNext && HasFailed(data.number);
        deck.opening = IsOpening(data.number);
    }
    return state;
}

void Mixer::CheckHandOver() {
    MixState state = StateNow(false);
    if (OnAir(state) != 0) {
        lastOnAir_ = OnAir(state);
    }
    heldByUser_ = heldByUser_ && !IsAudible(1) && !IsAudible(2);
    const bool silent = OnAir(state) == 0 && !heldByUser_;
    if (!listening_ && (WantsHandOver(state) || silent)) {
        state = StateNow(true);
        Start(silent ? SilenceDecision(state) : HandOverDecision(state));
    }
    WatchStandstill();
    PrepareNext(1);
    PrepareNext(2);
}

bool Mixer::Start(const StartAction& action) {
    switch (action.kind) {
    case StartKind::Nothing:
        return true;
    case StartKind::Fade:
        if (!EnsurePlaying(action.player)) {
            return false;
        }
        handOverRunning_ = true;
        fader_.FadeTowards(action.player);
        Q_EMIT HandOverBegan(action.player);
        return true;
    case StartKind::Jump:
        if (!EnsurePlaying(action.player)) {
            return false;
        }
        EndHandOver();
        MoveFader(FaderEndOf(action.player));
        return true;
    case StartKind::Continue:
        return StartNext(action.player);
    case StartKind::FadeBack:
        fader_.FadeTowards(action.player);
        return true;
    case StartKind::Emergency:
        return PlayEmergency(action.player) || Start({StartKind::AllEnded, 0});
    case StartKind::AllEnded:
        heldByUser_ = true;
        EndHandOver();
        Q_EMIT Message(QStringLiteral("Beide Wiedergabelisten sind am Ende."));
        Q_EMIT Finished();
        return true;
    }
    return false;
}

void Mixer::EndHandOver() {
    fader_.EndFade();
    ApplyVolumes();
    handOverRunning_ = false;
}

void Mixer::TitleEnded(int player) {
    if (listening_) {
        const bool listened = IsListened(player);
        StopPlayer(player);
        if (listened) {
            Q_EMIT ListenedToEnd(player);
        }
        return;
    }
    const StartAction action = EndDecision(StateNow(true), player);
    const bool silentNow = layer_.Activity(OtherPlayer(player)) != audio::Activity::Playing;
    StopPlayer(player);
    Start(action);
    if (action.kind == StartKind::Nothing && silentNow && !options_.continuous) {
        heldByUser_ = true;
    }
}

void Mixer::Dispatch() {
    layer_.Audio().DispatchEvents();
    WatchOpening(1);
    WatchOpening(2);
    LookAtOutput();
}

void Mixer::OnEnd(audio::Handle, audio::Handle channel, std::uint32_t, void* user) {
    const auto* deck = static_cast<DeckData*>(user);
    if (deck->owner->layer_.Record(deck->number).stream == channel) {
        deck->owner->TitleEnded(deck->number);
    }
}

void Mixer::OnDeviceLost(audio::Handle, audio::Handle, std::uint32_t, void* user) {
    static_cast<DeckData*>(user)->owner->LookAtOutput();
}

void Mixer::LookAtOutput() {
    if (const std::optional<OutputNews> news = layer_.LookAtOutput()) {
        Q_EMIT Message(news->text);
        Q_EMIT OutputChanged(*news);
    }
}

QString Mixer::StatusText(int player) const {
    if (Deck(player).muted) {
        return QStringLiteral("mute");
    }
    if (IsOpening(player)) {
        return QStringLiteral("lädt");
    }
    switch (layer_.Activity(player)) {
    case audio::Activity::Playing:
        return IsListened(player) ? Deck(player).listenedStatus : QStringLiteral("play");
    case audio::Activity::Paused:
        return QStringLiteral("pause");
    case audio::Activity::Stopped:
        break;
    }
    return QStringLiteral("stop");
}

} // namespace kalvo
