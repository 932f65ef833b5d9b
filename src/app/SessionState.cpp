#include "app/SessionState.h"

#include "app/Desk.h"

#include <algorithm>

namespace kalvo {

namespace {

SessionPlayer PlayerOf(Mixer& mixer, int player) {
    SessionPlayer result;
    const audio::Activity activity = mixer.Activity(player);
    result.playing = activity == audio::Activity::Playing;
    result.paused = activity == audio::Activity::Paused;
    result.muted = mixer.IsMuted(player);
    result.pitch = mixer.Pitch(player);
    if (result.IsLoaded()) {
        result.title = mixer.Title(player);
        result.second = mixer.PositionSeconds(player);
    }
    return result;
}

SessionList ListOf(const Playlist& list, bool isSaved) {
    SessionList result;
    result.icons.reserve(list.Count());
    for (const PlaylistEntry& entry : list.Entries()) {
        result.icons.append(QChar(u'0' + static_cast<char16_t>(entry.icon)));
    }
    result.red = list.CurrentRow();
    result.redPath = result.red < 0 ? QString() : list.At(result.red).path;
    result.passedOver = list.IsPassedOver();
    if (!isSaved) {
        result.unsaved = list.Entries();
    }
    return result;
}

/** A list that holds something else than at that time keeps its own marks. */
bool Fits(const SessionList& state, const Playlist& list) {
    return state.icons.size() == list.Count() && state.red < list.Count() &&
           (state.red < 0 || list.At(state.red).path == state.redPath);
}

EntryIcon IconOf(QChar digit) {
    return static_cast<EntryIcon>(std::clamp(digit.digitValue(), 0, static_cast<int>(EntryIcon::PlayNextRemoved)));
}

void RestoreMarks(const SessionList& state, Playlist& list) {
    if (!Fits(state, list)) {
        return;
    }
    QList<PlaylistEntry> entries = list.Entries();
    for (qsizetype row = 0; row < entries.size(); ++row) {
        entries[row].icon = IconOf(state.icons.at(row));
    }
    list.Replace(entries);
    if (state.red < 0) {
        return;
    }
    if (state.passedOver) {
        list.PassOver(state.red);
    } else {
        list.SetCurrent(state.red);
    }
    if (entries.at(state.red).icon == EntryIcon::PlayNext) {
        list.MarkPlayNext(state.red);
    }
}

void ResumePlayer(const SessionPlayer& state, Mixer& mixer, int player) {
    mixer.SetPitch(player, state.pitch);
    if (state.muted != mixer.IsMuted(player)) {
        mixer.ToggleMute(player);
    }
    if (state.IsLoaded()) {
        mixer.ResumeTitle(player, state.title, state.second, state.paused);
    }
}

} // namespace

SessionState SessionState::Of(Desk& desk) {
    SessionState state;
    const bool isSaved = desk.keeper.IsSaved();
    for (const int player : {1, 2}) {
        const auto index = static_cast<std::size_t>(player - 1);
        state.players.at(index) = PlayerOf(desk.mixer, player);
        state.lists.at(index) = ListOf(desk.List(player), isSaved);
    }
    const MixState mix = desk.mixer.State();
    state.fader = mix.fader;
    state.fadeTarget = mix.fadeStep == 0 ? 0 : mix.fadeStep < 0 ? 1 : 2;
    state.volume = desk.layer.Audio().GetVolume(audio::Output::Main);
    state.options = desk.mixer.Options();
    return state;
}

int SessionState::OnAirPlayer() const {
    MixState mix;
    mix.fader = fader;
    for (std::size_t index = 0; index < players.size(); ++index) {
        mix.decks.at(index).playing = IsPlaying() ? players.at(index).playing : players.at(index).IsLoaded();
    }
    return OnAir(mix);
}

void SessionState::RestoreEntries(Desk& desk) const {
    for (const int player : {1, 2}) {
        if (const auto& unsaved = lists.at(static_cast<std::size_t>(player - 1)).unsaved) {
            desk.List(player).Replace(*unsaved);
        }
    }
}

void SessionState::Resume(Desk& desk) const {
    for (const int player : {1, 2}) {
        RestoreMarks(lists.at(static_cast<std::size_t>(player - 1)), desk.List(player));
    }
    desk.mixer.SetOptions(options);
    desk.mixer.SetMasterVolume(volume);
    desk.mixer.SetFader(fader);
    for (const int player : {1, 2}) {
        ResumePlayer(players.at(static_cast<std::size_t>(player - 1)), desk.mixer, player);
    }
    if (fadeTarget != 0 && desk.mixer.Activity(fadeTarget) == audio::Activity::Playing) {
        desk.mixer.FadeTo(fadeTarget, -1);
    }
}

} // namespace kalvo
