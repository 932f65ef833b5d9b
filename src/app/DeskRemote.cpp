#include "app/DeskRemote.h"

#include "app/Desk.h"
#include "base/FaderLaw.h"
#include "playlists/NextTitle.h"

#include <algorithm>
#include <cmath>

namespace kalvo {

namespace {

using audio::Activity;

DeskFacts::Activity Seen(Activity activity) {
    return activity == Activity::Playing  ? DeskFacts::Activity::Playing
           : activity == Activity::Paused ? DeskFacts::Activity::Paused
                                          : DeskFacts::Activity::Stopped;
}

} // namespace

DeskRemote::DeskRemote(Desk& desk, QObject* parent) : QObject(parent), desk_(desk) {
    connect(&desk.mixer, &Mixer::TitleStarted, this, [this](int player) {
        if (player == trackPlayer_)
            trackPath_.clear(); // the same title once more is another one on air
    });
}

bool DeskRemote::IsPlaying(int player) const {
    return desk_.mixer.Activity(player) == Activity::Playing;
}

/** Whether the files are there is found out when they are due. */
bool DeskRemote::HasNext(int player) const {
    return PeekNextTitle(
               desk_.List(player), [](const QString&) { return true; }, desk_.mixer.Options().removePlayed) >= 0;
}

bool DeskRemote::IsFading() const {
    return desk_.mixer.State().fadeStep != 0 && IsPlaying(1) && IsPlaying(2);
}

bool DeskRemote::HandsOver() const {
    const MixerOptions& options = desk_.mixer.Options();
    return options.continuous && options.automatic && options.mode == FadeMode::FadeCrossOver;
}

void DeskRemote::LookAtTitle(int player) {
    const QString path = player == 0 ? QString() : desk_.mixer.Title(player).path;
    if (player == trackPlayer_ && path == trackPath_)
        return;
    trackPlayer_ = player;
    trackPath_ = path;
    if (player == 0)
        return;
    ++track_;
    const std::optional<TitleRecord> title = desk_.archive.FindByPath(path);
    album_ = title ? title->Album : QString();
}

DeskFacts DeskRemote::Facts() {
    const Mixer& mixer = desk_.mixer;
    const int onAir = mixer.OnAirPlayer();
    LookAtTitle(onAir);
    DeskFacts facts;
    facts.masterVolume = desk_.layer.Audio().GetVolume(audio::Output::Main);
    facts.canPlay = onAir != 0 || !desk_.list1.IsEmpty() || !desk_.list2.IsEmpty();
    if (onAir == 0)
        return facts;
    facts.activity = Seen(mixer.Activity(onAir));
    facts.track = track_;
    facts.title = mixer.Title(onAir);
    facts.album = album_;
    facts.pitch = mixer.Pitch(onAir);
    facts.hasNext = (HandsOver() && HasNext(OtherPlayer(onAir))) || HasNext(onAir);
    return facts;
}

double DeskRemote::Position() const {
    const int onAir = desk_.mixer.OnAirPlayer();
    return onAir == 0 ? 0 : desk_.mixer.PositionSeconds(onAir);
}

void DeskRemote::Play() {
    Mixer& mixer = desk_.mixer;
    if (IsPlaying(1) || IsPlaying(2))
        return;
    const int onAir = mixer.OnAirPlayer();
    if (onAir != 0) {
        for (const int player : {1, 2}) {
            if (mixer.Activity(player) == Activity::Paused && (player == onAir || paused_.contains(player)))
                mixer.Play(player, -1);
        }
    } else if (const int side = mixer.Fader() <= 0 ? 1 : 2; !desk_.List(side).IsEmpty()) {
        mixer.Play(side, -1);
    } else if (!desk_.List(OtherPlayer(side)).IsEmpty()) {
        mixer.FadeTo(OtherPlayer(side), -1);
    }
    paused_.clear();
}

void DeskRemote::Pause() {
    Mixer& mixer = desk_.mixer;
    if (IsFading())
        mixer.Stop(mixer.State().fadeStep < 0 ? 2 : 1);
    paused_.clear();
    for (const int player : {1, 2}) {
        if (IsPlaying(player)) {
            mixer.Pause(player);
            paused_.insert(player);
        }
    }
}

void DeskRemote::PlayPause() {
    IsPlaying(1) || IsPlaying(2) ? Pause() : Play();
}

void DeskRemote::Stop() {
    for (const int player : {1, 2}) {
        if (desk_.mixer.Activity(player) != Activity::Stopped || desk_.mixer.IsOpening(player))
            desk_.mixer.Stop(player);
    }
}

void DeskRemote::Next() {
    Mixer& mixer = desk_.mixer;
    const int onAir = mixer.OnAirPlayer();
    if (onAir == 0 || !IsPlaying(onAir) || IsFading() || mixer.IsListening())
        return;
    const int other = OtherPlayer(onAir);
    const bool isCued = mixer.Activity(other) != Activity::Stopped;
    if (HandsOver() && (isCued || HasNext(other))) {
        if (!isCued)
            mixer.Next(other);
        if (mixer.Activity(other) != Activity::Stopped || mixer.IsOpening(other))
            mixer.FadeTo(other, -1);
    } else if (HasNext(onAir)) {
        mixer.Next(onAir);
    }
}

void DeskRemote::SeekBy(double seconds) {
    const int onAir = desk_.mixer.OnAirPlayer();
    if (onAir == 0 || desk_.mixer.Title(onAir).length <= 0)
        return;
    const double second = Position() + seconds;
    if (second >= desk_.mixer.Title(onAir).length)
        Next();
    else
        desk_.mixer.SeekSeconds(onAir, std::max(0.0, second));
}

void DeskRemote::SeekTo(int track, double second) {
    const DeskFacts facts = Facts();
    if (facts.track != 0 && track == facts.track && second >= 0 && second < facts.title.length)
        desk_.mixer.SeekSeconds(trackPlayer_, second);
}

void DeskRemote::SetVolume(double volume) {
    if (std::isnan(volume))
        return;
    const int percent = static_cast<int>(std::lround(std::clamp(volume, 0.0, 1.0) * 100));
    desk_.mixer.SetMasterVolume(percent);
    Q_EMIT VolumeChanged(percent);
}

} // namespace kalvo
