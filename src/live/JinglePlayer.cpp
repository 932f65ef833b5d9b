#include "live/JinglePlayer.h"

#include <QFile>

#include <algorithm>
#include <utility>

namespace kalvo {

namespace {

/** Rounds of Tick(): three seconds. */
constexpr int kOpeningRounds = 60;

} // namespace

JinglePlayer::JinglePlayer(Mixer& mixer, QObject* parent)
    : QObject(parent), mixer_(mixer), audio_(mixer.Layer().Audio()) {}

JinglePlayer::~JinglePlayer() {
    for (const std::optional<Entry>& entry : {playing_, next_}) {
        if (entry)
            audio_.StreamFree(entry->stream);
    }
}

void JinglePlayer::Add(const DueJingle& jingle) {
    waiting_.push_back({jingle, jingle.afterTitle ? OnAir() : Heard()});
    Tick();
}

void JinglePlayer::Stop() {
    if (playing_)
        Finish();
}

void JinglePlayer::Tick() {
    TakeNext();
    if (playing_ && audio_.ChannelIsActive(playing_->stream) == audio::Activity::Stopped)
        Finish();
    LookAtNext();
}

JinglePlayer::Heard JinglePlayer::OnAir() {
    const int player = mixer_.OnAirPlayer();
    return player == 0 ? Heard() : Heard{player, mixer_.Title(player).path, mixer_.PositionSeconds(player)};
}

bool JinglePlayer::IsHeard(const Heard& title) const {
    return title.player != 0 && mixer_.Activity(title.player) == audio::Activity::Playing &&
           mixer_.Title(title.player).path == title.path;
}

void JinglePlayer::TakeNext() {
    const auto ready =
        std::find_if(waiting_.begin(), waiting_.end(), [this](const Entry& entry) { return !IsHeard(entry.title); });
    if (next_ || ready == waiting_.end())
        return;
    Entry entry = std::move(*ready);
    waiting_.erase(ready);
    Open(std::move(entry));
}

void JinglePlayer::Open(Entry entry) {
    entry.stream = audio_.StreamOpenFile(audio::Output::Main, QFile::encodeName(entry.jingle.path).toStdString());
    entry.rounds = 0;
    next_ = std::move(entry);
    if (next_->stream == 0)
        DropNext();
}

void JinglePlayer::LookAtNext() {
    if (!next_)
        return;
    switch (audio_.StreamAwaitOpen(next_->stream, 0)) {
    case audio::OpenState::Ready:
        if (!playing_)
            Begin();
        break;
    case audio::OpenState::Opening:
        if (++next_->rounds > kOpeningRounds) {
            audio_.StreamFree(next_->stream);
            DropNext();
        }
        break;
    case audio::OpenState::Failed:
        if (audio_.ErrorGetCode() == audio::ErrorCode::InvalidHandle)
            Open(*std::exchange(next_, {})); // the output has been opened anew
        else
            DropNext();
        break;
    }
}

void JinglePlayer::DropNext() {
    Q_EMIT Failed(std::exchange(next_, {})->jingle.path);
}

void JinglePlayer::Begin() {
    playing_ = std::exchange(next_, {});
    playing_->title = playing_->jingle.afterTitle ? OnAir() : Heard();
    mixer_.SetJingle(true);
    audio_.StreamPlay(playing_->stream, true);
    Q_EMIT Started(playing_->jingle);
}

void JinglePlayer::Finish() {
    const Entry ended = *std::exchange(playing_, {});
    audio_.StreamFree(ended.stream);
    if (IsHeard(ended.title))
        mixer_.SeekSeconds(ended.title.player, ended.title.second);
    LookAtNext();
    if (!playing_) {
        mixer_.SetJingle(false);
        Q_EMIT Ended();
    }
}

double JinglePlayer::Position() {
    return playing_ ? audio_.ChannelBytes2Seconds(playing_->stream, audio_.ChannelGetPosition(playing_->stream)) : 0;
}

double JinglePlayer::Length() {
    return playing_ ? audio_.ChannelBytes2Seconds(playing_->stream, audio_.StreamGetLength(playing_->stream)) : 0;
}

} // namespace kalvo
