#include "playback/Mixer.h"

#include "playback/DeckTitles.h"
#include "playback/FaderLaw.h"
#include "playlists/CueText.h"
#include "playlists/NextTitle.h"

#include <algorithm>

namespace kalvo {

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
    layer_.Audio().SetVolume(audio::Output::Main, volume);
}

// ---- starting and stopping

bool Mixer::LoadRow(int player, int row) {
    Playlist& list = List(player);
    list.SetCurrent(row);
    const PlaylistEntry entry = list.At(row);
    return LoadTitle(player,
                     {entry.title, entry.artist, {}, entry.path, 0, CueText::Read(entry.info).value_or(-1), false});
}

bool Mixer::LoadTitle(int player, const DeckTitle& title) {
    DeckData& deck = Deck(player);
    deck.title = title;
    const audio::Handle stream = layer_.LoadStream(player, title.path);
    if (stream == 0) {
        deck.title = {};
        return false;
    }
    audio::ChannelInfo info;
    if (layer_.Audio().ChannelGetInfo(stream, info)) {
        deck.title.format = FormatText(title.path, info);
    }
    deck.title.length = layer_.LengthSeconds(player);
    const auto sync = [&](std::uint32_t type, audio::SyncProcedure procedure) {
        layer_.Audio().ChannelSetSync(stream, type, 0, procedure, &deck);
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

bool Mixer::ResumeTitle(int player, const DeckTitle& title, double second, bool paused) {
    if (!FileExists(title.path) || !LoadTitle(player, title)) {
        Q_EMIT Message(QStringLiteral("Die Datei kann nicht abgespielt werden: ") + title.path);
        return false;
    }
    ApplyVolumes();
    if (paused) {
        layer_.SetPlayerVolume(player, 0); // what gets out before it stands; resuming sets the volume again
    }
    layer_.SetPositionSeconds(player, second);
    layer_.Audio().StreamPlay(layer_.Record(player).stream, false);
    layer_.Record(player).state = PlayState::Counted;
    if (paused) {
        layer_.Audio().ChannelPause(layer_.Record(player).stream);
        Q_EMIT PlayerChanged(player);
    } else {
        NoteStarted(player);
    }
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
        layer_.Audio().ChannelResume(layer_.Record(player).stream);
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
    layer_.Audio().StreamPlay(layer_.Record(player).stream, false);
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
        layer_.Audio().ChannelGetInfo(record.prepared, info);
        const double length =
            layer_.Audio().ChannelBytes2Seconds(record.prepared, layer_.Audio().StreamGetLength(record.prepared));
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

} // namespace kalvo
