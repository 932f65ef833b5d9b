#include "playback/Mixer.h"

#include "playback/DeckTitles.h"
#include "playback/FaderLaw.h"
#include "playlists/CueText.h"
#include "playlists/NextTitle.h"

#include <cmath>

namespace kalvo {

namespace {

int WholeSeconds(double seconds) {
    return static_cast<int>(std::lround(seconds));
}

} // namespace

Mixer::Mixer(AudioLayer& layer, Playlist& list1, Playlist& list2, QObject* parent) : QObject(parent), layer_(layer) {
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
    const int current = deck.list->CurrentRow();
    if (activity == audio::Activity::Paused) {
        EnsurePlaying(player);
    } else if (activity == audio::Activity::Playing && current >= 0) {
        StartRow(player, current, true);
    } else if (selectedRow >= 0 && selectedRow < deck.list->Count()) {
        StartRow(player, selectedRow, true);
    } else if (current >= 0 && !deck.title.prepared) {
        StartRow(player, current, true);
    } else if (!StartNext(player)) {
        TellEnd(player);
    }
}

void Mixer::PlayRow(int player, int row) {
    StartRow(player, row, true);
}

void Mixer::Pause(int player) {
    if (layer_.Activity(player) != audio::Activity::Playing) {
        return;
    }
    layer_.Library().ChannelPause(layer_.Record(player).stream);
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
    StopPlayer(player);
    Deck(player).title = {};
    if (!StartNext(player)) {
        heldByUser_ = !IsAudible(OtherPlayer(player));
        TellEnd(player);
        Q_EMIT PlayerChanged(player);
    }
}

void Mixer::TellEnd(int player) {
    Q_EMIT Message((List(player).IsEmpty() ? QStringLiteral("Wiedergabeliste %1 ist leer.")
                                           : QStringLiteral("Wiedergabeliste %1 ist am Ende."))
                       .arg(player));
}

bool Mixer::IsAudible(int player) const {
    return layer_.Activity(player) == audio::Activity::Playing && VolumeOf(Deck(player)) > 0;
}

void Mixer::ToggleMute(int player) {
    Deck(player).muted = !Deck(player).muted;
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
    layer_.Library().SetVolume(audio::Output::Main, volume);
}

// ---- starting and stopping

bool Mixer::LoadRow(int player, int row) {
    Playlist& list = List(player);
    list.SetCurrent(row);
    const PlaylistEntry entry = list.At(row);
    DeckData& deck = Deck(player);
    deck.title = {entry.title, entry.artist, {}, entry.path, 0, CueText::Read(entry.info).value_or(-1), false};
    const audio::Handle stream = layer_.LoadStream(player, entry.path);
    if (stream == 0) {
        deck.title = {};
        return false;
    }
    audio::ChannelInfo info;
    if (layer_.Library().ChannelGetInfo(stream, info)) {
        deck.title.format = FormatText(entry.path, info);
    }
    deck.title.length = layer_.LengthSeconds(player);
    const auto sync = [&](std::uint32_t type, audio::SyncProcedure procedure) {
        layer_.Library().ChannelSetSync(stream, type, 0, procedure, &deck);
    };
    sync(static_cast<std::uint32_t>(audio::SyncType::End) | audio::kOneTime, &Mixer::OnEnd);
    sync(static_cast<std::uint32_t>(audio::SyncType::DeviceLost), &Mixer::OnDeviceLost);
    return true;
}

bool Mixer::StartRow(int player, int row, bool asked) {
    if (row < 0 || row >= List(player).Count()) {
        return false;
    }
    const QString path = List(player).At(row).path;
    if (!FileExists(path)) {
        if (asked) {
            Q_EMIT FileMissing(path);
        }
        return false;
    }
    if (!LoadRow(player, row)) {
        Q_EMIT Message(QStringLiteral("Die Datei kann nicht abgespielt werden: ") + path);
        Q_EMIT PlayerChanged(player);
        return false;
    }
    StartStream(player);
    Q_EMIT TitleStarted(player, row);
    return true;
}

bool Mixer::StartNext(int player) {
    Playlist& list = List(player);
    if (list.IsEmpty()) {
        return false;
    }
    for (;;) {
        const int row = TakeNextTitle(list, options_.removePlayed, FileExists);
        if (row < 0) {
            return false;
        }
        if (StartRow(player, row, false)) {
            return true;
        }
        list.PassOver(row);
    }
}

bool Mixer::EnsurePlaying(int player) {
    switch (layer_.Activity(player)) {
    case audio::Activity::Playing:
        return true;
    case audio::Activity::Paused:
        ApplyVolumes();
        layer_.Library().ChannelResume(layer_.Record(player).stream);
        NoteStarted(player);
        return true;
    case audio::Activity::Stopped:
        break;
    }
    return StartNext(player);
}

void Mixer::StartStream(int player) {
    ApplyVolumes();
    const double cue = Deck(player).title.cue;
    if (useCuePoints_ && cue > 0 && cue < Deck(player).title.length) {
        layer_.SetPositionSeconds(player, cue);
    }
    layer_.Library().StreamPlay(layer_.Record(player).stream, false);
    layer_.Record(player).state = PlayState::Counted;
    NoteStarted(player);
}

void Mixer::NoteStarted(int player) {
    heldByUser_ = false;
    Deck(player).stoppedByUser = false;
    Q_EMIT PlayerChanged(player);
}

void Mixer::StopPlayer(int player) {
    layer_.FreeStream(player);
    Deck(player).prepareDue = true;
    Q_EMIT PlayerChanged(player);
}

void Mixer::PrepareNext(int player) {
    DeckData& deck = Deck(player);
    if (!deck.prepareDue || layer_.Activity(player) != audio::Activity::Stopped) {
        return;
    }
    deck.prepareDue = false;
    if (!options_.preload) {
        layer_.Prepare(player, {});
        return;
    }
    const int row = PeekNextTitle(*deck.list, FileExists, options_.removePlayed);
    layer_.Prepare(player, row < 0 ? QString() : deck.list->At(row).path);
    if (deck.stoppedByUser) {
        return;
    }
    const PlayerRecord& record = layer_.Record(player);
    deck.title = {};
    if (row >= 0 && record.prepared != 0) {
        const PlaylistEntry& entry = deck.list->At(row);
        audio::ChannelInfo info;
        layer_.Library().ChannelGetInfo(record.prepared, info);
        const double length =
            layer_.Library().ChannelBytes2Seconds(record.prepared, layer_.Library().StreamGetLength(record.prepared));
        deck.title = {entry.title, entry.artist, FormatText(entry.path, info),
                      entry.path,  length,       CueText::Read(entry.info).value_or(-1),
                      true};
    }
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
    ApplyVolumes();
    Q_EMIT FaderMoved(fader_.Position());
}

void Mixer::FadeTo(int player, int selectedRow) {
    if (layer_.Activity(player) != audio::Activity::Playing) {
        Play(player, selectedRow);
    }
    fader_.FadeTowards(player);
}

void Mixer::StepFade() {
    if (fader_.Step() == 0 || faderHeld_) {
        return;
    }
    const int target = fader_.Step() < 0 ? 1 : 2;
    const int before = fader_.Position();
    const bool arrived = fader_.Tick();
    if (fader_.Position() != before) {
        for (const DeckData& deck : decks_) {
            layer_.SlidePlayerVolume(deck.number, VolumeOf(deck), options_.fadeInterval);
        }
        Q_EMIT FaderMoved(fader_.Position());
    }
    if (!arrived) {
        return;
    }
    handOverRunning_ = false;
    const int silent = OtherPlayer(target);
    if (layer_.Activity(target) == audio::Activity::Playing && layer_.Activity(silent) == audio::Activity::Playing) {
        StopPlayer(silent);
    }
}

int Mixer::VolumeOf(const DeckData& deck) const {
    return PlayerVolume(deck.number, fader_.Position(), deck.muted);
}

void Mixer::ApplyVolumes() {
    for (const DeckData& deck : decks_) {
        layer_.SetPlayerVolume(deck.number, VolumeOf(deck));
    }
}

// ---- what timers and events bring

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
    for (const DeckData& data : decks_) {
        DeckState& deck = state.decks.at(static_cast<std::size_t>(data.number - 1));
        const audio::Activity activity = layer_.Activity(data.number);
        deck.playing = activity == audio::Activity::Playing;
        deck.paused = activity == audio::Activity::Paused;
        deck.position = WholeSeconds(layer_.PositionSeconds(data.number));
        deck.length = WholeSeconds(layer_.LengthSeconds(data.number));
        deck.hasNext = withNext && PeekNextTitle(*data.list, FileExists, options_.removePlayed) >= 0;
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
    if (WantsHandOver(state) || silent) {
        state = StateNow(true);
        Start(silent ? SilenceDecision(state) : HandOverDecision(state));
    }
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
    handOverRunning_ = false;
}

void Mixer::TitleEnded(int player) {
    const StartAction action = EndDecision(StateNow(true), player);
    const bool silentNow = layer_.Activity(OtherPlayer(player)) != audio::Activity::Playing;
    StopPlayer(player);
    Start(action);
    if (action.kind == StartKind::Nothing && silentNow && !options_.continuous) {
        heldByUser_ = true;
    }
}

void Mixer::Dispatch() {
    layer_.Library().DispatchEvents();
    TellNewDevice();
}

void Mixer::OnEnd(audio::Handle, audio::Handle channel, std::uint32_t, void* user) {
    const auto* deck = static_cast<DeckData*>(user);
    if (deck->owner->layer_.Record(deck->number).stream == channel) {
        deck->owner->TitleEnded(deck->number);
    }
}

/** Every stream tells it; the one on air is enough. */
void Mixer::OnDeviceLost(audio::Handle, audio::Handle, std::uint32_t, void* user) {
    const auto* deck = static_cast<DeckData*>(user);
    if (deck->owner->OnAirPlayer() == deck->number) {
        deck->owner->DeviceLost();
    }
}

void Mixer::DeviceLost() {
    deviceLost_ = true;
    Q_EMIT Message(QStringLiteral("Soundkarte nicht mehr da."));
}

/** The next device opens a moment after the loss. */
void Mixer::TellNewDevice() {
    audio::OutputInfo info;
    if (!deviceLost_ || !layer_.Library().GetInfo(audio::Output::Main, info) || info.device == audio::kNoSound) {
        return;
    }
    deviceLost_ = false;
    Q_EMIT Message(QStringLiteral("Soundkarte nicht mehr da, Wiedergabe auf: ") +
                   QString::fromStdString(info.deviceName));
}

QString Mixer::StatusText(int player) const {
    if (Deck(player).muted) {
        return QStringLiteral("mute");
    }
    switch (layer_.Activity(player)) {
    case audio::Activity::Playing:
        return QStringLiteral("play");
    case audio::Activity::Paused:
        return QStringLiteral("pause");
    case audio::Activity::Stopped:
        break;
    }
    return QStringLiteral("stop");
}

} // namespace kalvo
