// How titles get from the lists onto the players: at once, when their file opens, or ahead.

#include "playback/Mixer.h"
#include "playlists/CueText.h"
#include "playlists/NextTitle.h"

#include <utility>

namespace kalvo {

namespace {

/** Rounds of Dispatch: three seconds. */
constexpr int kOpeningRounds = 60;

} // namespace

bool Mixer::StartRow(int player, int row, bool asked) {
    Playlist& list = List(player);
    if (row < 0 || row >= list.Count()) {
        return false;
    }
    const PlaylistEntry entry = list.At(row);
    if (!files_.Exists(entry.path)) {
        if (asked) {
            Q_EMIT FileMissing(entry.path);
        }
        return false;
    }
    list.SetCurrent(row);
    DeckData& deck = Deck(player);
    deck.title = {entry.title, entry.artist, {}, entry.path, 0, CueText::Read(entry.info).value_or(-1), false};
    deck.asked = asked;
    deck.openingRounds = 0;
    layer_.BeginLoading(player, entry.path);
    switch (layer_.AwaitLoading(player, patience_)) {
    case audio::OpenState::Ready:
        StartLoaded(player);
        return true;
    case audio::OpenState::Opening:
        Q_EMIT Message(QStringLiteral("Die Datei wird geöffnet: ") + entry.path);
        Q_EMIT PlayerChanged(player);
        return true;
    case audio::OpenState::Failed:
        break;
    }
    DropUnplayable(player, QStringLiteral("Die Datei kann nicht abgespielt werden: "));
    return false;
}

void Mixer::ReadyLoaded(int player) {
    ReadLength(player);
    layer_.SetGain(player, titleGain_(Deck(player).title.path));
    const auto sync = [&](std::uint32_t type, audio::SyncProcedure procedure) {
        layer_.Audio().ChannelSetSync(layer_.Record(player).stream, type, 0, procedure, &Deck(player));
    };
    sync(static_cast<std::uint32_t>(audio::SyncType::End) | audio::kOneTime, &Mixer::OnEnd);
    sync(static_cast<std::uint32_t>(audio::SyncType::DeviceLost) | audio::kOneTime, &Mixer::OnDeviceLost);
}

void Mixer::StartLoaded(int player) {
    DeckData& deck = Deck(player);
    ReadyLoaded(player);
    StartStream(player);
    if (IsListened(player)) {
        return; // no entry's start, and nothing that counts
    }
    if (const int row = deck.list->CurrentRow(); row >= 0) { // it may have been removed while the file opened
        Q_EMIT TitleStarted(player, row, deck.asked);
    }
}

bool Mixer::ResumeTitle(int player, const DeckTitle& title, double second, bool paused) {
    Deck(player).title = title;
    if (!files_.Exists(title.path) || layer_.LoadStream(player, title.path) == 0) {
        DropUnplayable(player, QStringLiteral("Die Datei kann nicht abgespielt werden: "));
        return false;
    }
    ReadyLoaded(player);
    ApplyVolumes();
    if (paused) {
        layer_.SetPlayerVolume(player, 0); // what gets out before it stands; resuming sets the volume again
    }
    layer_.SetPositionSeconds(player, second);
    layer_.Audio().StreamPlay(layer_.Record(player).stream, false);
    layer_.Record(player).state = PlayState::Counted; // when it was first started
    if (paused) {
        layer_.Audio().ChannelPause(layer_.Record(player).stream);
        Q_EMIT PlayerChanged(player);
    } else {
        NoteStarted(player);
    }
    return true;
}

void Mixer::FollowMove(const QString& from, const QString& to) {
    for (DeckData& deck : decks_) {
        if (deck.title.path == from) {
            deck.title.path = to;
            Q_EMIT PlayerChanged(deck.number);
        }
    }
}

void Mixer::FollowTexts(const QString& path, const QString& title, const QString& artist) {
    for (DeckData& deck : decks_) {
        if (deck.title.path == path) {
            deck.title.title = title;
            deck.title.artist = artist;
            Q_EMIT PlayerChanged(deck.number);
        }
    }
}

/** Of a long title both are known for certain only a while after it has been opened. */
void Mixer::ReadLength(int player) {
    DeckTitle& title = Deck(player).title;
    audio::ChannelInfo info;
    if (layer_.Audio().ChannelGetInfo(layer_.Record(player).stream, info)) {
        title.format = FormatText(title.path, info);
    }
    title.length = layer_.LengthSeconds(player);
}

void Mixer::DropUnplayable(int player, const QString& why) {
    layer_.FreeStream(player);
    Q_EMIT Message(why + std::exchange(Deck(player).title, {}).path);
    Q_EMIT PlayerChanged(player);
}

void Mixer::WatchOpening(int player) {
    if (!IsOpening(player)) {
        if (layer_.Activity(player) == audio::Activity::Playing &&
            layer_.LengthSeconds(player) != Deck(player).title.length) {
            ReadLength(player);
        }
        return;
    }
    switch (layer_.AwaitLoading(player, 0)) {
    case audio::OpenState::Ready:
        StartLoaded(player);
        break;
    case audio::OpenState::Opening:
        if (++Deck(player).openingRounds > kOpeningRounds) {
            GiveUpOpening(player, QStringLiteral("Die Datei antwortet nicht: "));
        }
        break;
    case audio::OpenState::Failed:
        GiveUpOpening(player, QStringLiteral("Die Datei kann nicht abgespielt werden: "));
        break;
    }
}

/** What has been started by itself goes on with the next title; a fade to a player without sound ends. */
void Mixer::GiveUpOpening(int player, const QString& why) {
    DropUnplayable(player, why);
    DeckData& deck = Deck(player);
    if (!deck.asked) {
        deck.list->PassOver(deck.list->CurrentRow());
        if (StartNext(player)) {
            return;
        }
    }
    deck.prepareDue = true;
    if (FadeTarget() == player) {
        EndHandOver();
    }
}

bool Mixer::StartNext(int player) {
    Playlist& list = List(player);
    if (list.IsEmpty()) {
        return false;
    }
    for (;;) {
        const int row = TakeNextTitle(list, options_.removePlayed, exists_);
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
        live_.full = {};
        ApplyVolumes();
        layer_.Audio().ChannelResume(layer_.Record(player).stream);
        NoteStarted(player);
        return true;
    case audio::Activity::Stopped:
        break;
    }
    return IsOpening(player) || StartNext(player);
}

void Mixer::StartStream(int player) {
    live_.full = {}; // or a hand-over would begin at full volume
    ApplyVolumes();
    const double cue = Deck(player).title.cue;
    if (useCuePoints_ && cue > 0 && cue < Deck(player).title.length) {
        layer_.SetPositionSeconds(player, cue);
    }
    layer_.Audio().StreamPlay(layer_.Record(player).stream, false);
    NoteStarted(player);
}

void Mixer::NoteStarted(int player) {
    heldByUser_ = false;
    fadesOut_ = false;
    Deck(player).stoppedByUser = false;
    Q_EMIT PlayerChanged(player);
}

// ---- ahead

void Mixer::PrepareNext(int player) {
    DeckData& deck = Deck(player);
    if (layer_.Activity(player) != audio::Activity::Stopped || IsOpening(player)) {
        return;
    }
    if (deck.prepareDue) {
        deck.prepareDue = false;
        deck.preparedRow = options_.preload ? PeekNextTitle(*deck.list, exists_, options_.removePlayed) : -1;
        layer_.Prepare(player, deck.preparedRow < 0 ? QString() : deck.list->At(deck.preparedRow).path);
        deck.preparing = options_.preload;
    }
    if (deck.preparing) {
        ShowPrepared(player);
    }
}

/** A player that was stopped by hand goes on showing its title. */
void Mixer::ShowPrepared(int player) {
    DeckData& deck = Deck(player);
    const audio::OpenState state = layer_.Prepared(player);
    deck.preparing = state == audio::OpenState::Opening;
    if (deck.preparing || deck.stoppedByUser) {
        return;
    }
    deck.title = {};
    if (state == audio::OpenState::Ready) {
        const PlaylistEntry& entry = deck.list->At(deck.preparedRow);
        const audio::Handle stream = layer_.Record(player).prepared;
        audio::ChannelInfo info;
        layer_.Audio().ChannelGetInfo(stream, info);
        const double length = layer_.Audio().ChannelBytes2Seconds(stream, layer_.Audio().StreamGetLength(stream));
        deck.title = {entry.title, entry.artist, FormatText(entry.path, info),
                      entry.path,  length,       CueText::Read(entry.info).value_or(-1),
                      true};
    }
    Q_EMIT PlayerChanged(player);
}

} // namespace kalvo
