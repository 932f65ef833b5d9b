#include "playback/HeadphonePlayer.h"

#include "playback/DeckTitles.h"

#include <QFile>

#include <algorithm>
#include <cmath>

namespace kalvo {

namespace {

using audio::Output;

constexpr int kPhonesRate = 44100;
constexpr int kBufferFrames = 1024;
constexpr int kPhonesPatience = 40; // ms that a start may hold up the window
constexpr double kHalfSpeed = 22000.0 / 44100.0;

double Tenths(double seconds) {
    return std::round(seconds * 10) / 10;
}

} // namespace

HeadphonePlayer::HeadphonePlayer(AudioLayer& layer, QObject* parent)
    : QObject(parent), layer_(layer), library_(layer.Audio()) {}

HeadphonePlayer::~HeadphonePlayer() {
    Free();
    if (open_) {
        library_.Stop(Output::Headphones);
        library_.Free(Output::Headphones);
    }
}

QString HeadphonePlayer::NoCardText() {
    return QStringLiteral("Es ist keine 2.Soundkarte für die Wiedergabe mit dem Kopfhörer ausgewählt, bitte unter "
                          "Einstellungen auswählen!");
}

QString HeadphonePlayer::Open(const OutputChoice& choice) {
    const QStringList names = layer_.DeviceNames();
    const int device = choice.Resolve(names);
    if (device == audio::kNoSound || device == layer_.OutputDevice()) {
        return NoCardText();
    }
    // A card that is gone must not be replaced by whatever has its number now.
    const bool known = choice.name.isEmpty() || names.contains(choice.name);
    if (!known || !library_.Init(Output::Headphones, device, kPhonesRate, kBufferFrames)) {
        return QStringLiteral("Soundkarte existiert an Device: %1 nicht!").arg(device);
    }
    if (IsOnMainCard()) { // under another number
        library_.Free(Output::Headphones);
        return NoCardText();
    }
    audio::OutputInfo info;
    library_.GetInfo(Output::Headphones, info);
    watch_.Begin(info);
    open_ = true;
    return {};
}

bool HeadphonePlayer::IsOnMainCard() const {
    audio::OutputInfo main;
    audio::OutputInfo own;
    return library_.GetInfo(Output::Main, main) && library_.GetInfo(Output::Headphones, own) &&
           main.device != audio::kNoSound && main.deviceName == own.deviceName;
}

// ---- transport

void HeadphonePlayer::Load(const QString& path) {
    Stop();
    path_ = path;
    held_.reset();
}

void HeadphonePlayer::Load(const audio::HeldFile& file) {
    Stop();
    path_.clear();
    held_ = file;
}

void HeadphonePlayer::Play() {
    if (state_ != State::Pause || !HasStream()) {
        Restart();
        return;
    }
    library_.ChannelResume(stream_);
    Become(State::Play);
}

void HeadphonePlayer::PlayFrom(double second) {
    Free();
    if (!open_ || IsOnMainCard()) {
        Become(State::Stop);
        return;
    }
    startAt_ = second;
    stream_ = held_ ? library_.StreamOpenHeld(Output::Headphones, held_)
                    : library_.StreamOpenFile(Output::Headphones, QFile::encodeName(path_).toStdString());
    opening_ = stream_ != 0;
    Become(State::Play);
    AwaitStream(kPhonesPatience);
}

/** What is not open yet starts in a later Tick(). */
void HeadphonePlayer::AwaitStream(int milliseconds) {
    const audio::OpenState answer =
        opening_ ? library_.StreamAwaitOpen(stream_, milliseconds) : audio::OpenState::Failed;
    if (answer == audio::OpenState::Opening) {
        return;
    }
    opening_ = false;
    if (answer == audio::OpenState::Ready) {
        Start();
        return;
    }
    stream_ = 0;
    Become(State::Stop);
    Q_EMIT Told((FileExists(path_) ? QStringLiteral("Die Datei kann nicht abgespielt werden: ")
                                   : QStringLiteral("Datei nicht gefunden: ")) +
                path_);
}

void HeadphonePlayer::Start() {
    if (startAt_ > 0 && startAt_ < Length()) {
        MoveTo(startAt_);
    }
    library_.StreamPlay(stream_, false);
    if (state_ == State::Pause) { // pressed while the file was opening
        library_.ChannelPause(stream_);
    }
    Become(state_);
}

void HeadphonePlayer::Pause() {
    if (state_ == State::Stop) {
        return;
    }
    if (HasStream()) {
        library_.ChannelPause(stream_);
    }
    Become(State::Pause);
}

void HeadphonePlayer::Stop() {
    Free();
    Become(State::Stop);
}

/** Somebody who has opened the output anew meanwhile has taken the stream away: it is not ours to close any more. */
void HeadphonePlayer::Free() {
    if (stream_ != 0) {
        library_.ChannelStop(stream_);
        open_ = library_.StreamFree(stream_) && open_;
    }
    stream_ = 0;
    opening_ = false;
    stepped_.reset();
}

void HeadphonePlayer::Become(State state) {
    state_ = state;
    if (state == State::Play || state == State::HalfSpeed) {
        stepped_.reset();
    }
    Q_EMIT Changed();
}

void HeadphonePlayer::Seek(double fraction) {
    if (!HasStream()) {
        return;
    }
    const double second = std::clamp(fraction, 0.0, 1.0) * Length();
    MoveTo(second);
    if (stepped_) {
        stepped_ = Tenths(second);
    }
}

void HeadphonePlayer::MoveTo(double second) {
    const std::uint64_t wanted = library_.ChannelSeconds2Bytes(stream_, second);
    library_.ChannelSetPosition(stream_, std::min(wanted, library_.StreamGetLength(stream_)));
}

// ---- finding a point

void HeadphonePlayer::BeginSteps() {
    if (HasStream()) {
        stepped_ = Tenths(Position());
        library_.ChannelPause(stream_);
    }
}

void HeadphonePlayer::Step(int direction) {
    if (stepped_) {
        stepped_ = std::clamp(Tenths(*stepped_ + direction * step), 0.0, std::floor(Length() * 10) / 10);
        MoveTo(*stepped_);
    }
}

void HeadphonePlayer::EndSteps() {
    if (stepped_ && state_ != State::Pause) {
        library_.ChannelResume(stream_);
        Become(State::Play);
    }
}

void HeadphonePlayer::BeginHalfSpeed() {
    if (!HasStream()) {
        return;
    }
    SetSpeed(true);
    library_.ChannelResume(stream_);
    Become(State::HalfSpeed);
}

void HeadphonePlayer::EndHalfSpeed() {
    if (state_ != State::HalfSpeed) {
        return;
    }
    library_.ChannelPause(stream_);
    SetSpeed(false);
    Become(State::Pause);
}

void HeadphonePlayer::SetSpeed(bool half) {
    audio::ChannelInfo info;
    if (library_.ChannelGetInfo(stream_, info)) {
        const auto rate = half ? static_cast<int>(std::lround(info.sampleRate * kHalfSpeed)) : info.sampleRate;
        library_.ChannelSetAttributes(stream_, rate, audio::kKeepVolume, audio::kKeepPan);
    }
}

// ---- watching

void HeadphonePlayer::Tick() {
    if (!open_) {
        return;
    }
    if (opening_) {
        AwaitStream(0);
    }
    const bool running = state_ == State::Play || state_ == State::HalfSpeed;
    if (running && !stepped_ && HasStream() && library_.ChannelIsActive(stream_) == audio::Activity::Stopped) {
        Stop();
    }
    WatchCard();
}

void HeadphonePlayer::WatchCard() {
    audio::OutputInfo info;
    if (!library_.GetInfo(Output::Headphones, info)) {
        return;
    }
    if (const std::optional<OutputNews> news = watch_.Look(info)) {
        if (news->IsTrouble()) {
            Pause();
        }
        Q_EMIT Told(news->text);
    }
    const bool shared = IsOnMainCard();
    if (shared && !shared_) { // the music has come here, its own card being gone for example
        Stop();
        Q_EMIT Told(QStringLiteral("Auf dieser Soundkarte läuft jetzt die Musik, der Kopfhörer schweigt."));
    }
    shared_ = shared;
}

QString HeadphonePlayer::StatusText() const {
    if (opening_) {
        return QStringLiteral("lädt");
    }
    switch (state_) {
    case State::Play:
        return QStringLiteral("play");
    case State::Pause:
        return QStringLiteral("pause");
    case State::HalfSpeed:
        return QStringLiteral("0,5 speed");
    case State::Stop:
        break;
    }
    return QStringLiteral("stop");
}

double HeadphonePlayer::Position() const {
    if (stepped_) {
        return *stepped_;
    }
    return HasStream() ? library_.ChannelBytes2Seconds(stream_, library_.ChannelGetPosition(stream_)) : 0;
}

double HeadphonePlayer::Length() const {
    return HasStream() ? library_.ChannelBytes2Seconds(stream_, library_.StreamGetLength(stream_)) : 0;
}

audio::Levels HeadphonePlayer::Level() const {
    return HasStream() ? library_.ChannelGetLevel(stream_) : audio::Levels();
}

void HeadphonePlayer::SetVolume(int volume) {
    if (open_) {
        library_.SetVolume(Output::Headphones, volume);
    }
}

} // namespace kalvo
