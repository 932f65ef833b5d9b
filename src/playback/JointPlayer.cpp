#include "playback/JointPlayer.h"

#include <algorithm>

namespace kalvo {

namespace {

using audio::Output;

constexpr int kJointPatience = 500; // ms; nothing is read from a disk
const QString kOnAir = QStringLiteral("Es ist Musik auf Sendung: die Hauptausgabe bleibt frei.");

} // namespace

JointPlayer::JointPlayer(Mixer& mixer, QObject* parent)
    : QObject(parent), mixer_(mixer), library_(mixer.Layer().Audio()) {}

JointPlayer::~JointPlayer() {
    Stop();
}

bool JointPlayer::IsMainFree() const {
    return mixer_.OnAirPlayer() == 0 && !mixer_.IsOpening(1) && !mixer_.IsOpening(2);
}

QString JointPlayer::Play(Way way, const audio::HeldFile& file, const OutputChoice& headphones, int volume) {
    Stop();
    if (file == nullptr)
        return QStringLiteral("Dieser Übergang konnte nicht gerechnet werden.");
    return way == Way::Headphones ? PlayOnHeadphones(file, headphones, volume) : PlayOnMain(file);
}

QString JointPlayer::PlayOnHeadphones(const audio::HeldFile& file, const OutputChoice& headphones, int volume) {
    audio::OutputInfo used;
    if (library_.GetInfo(Output::Headphones, used))
        return QStringLiteral("Der Kopfhörerausgang wird gerade benutzt.");
    auto player = std::make_unique<HeadphonePlayer>(mixer_.Layer());
    if (QString refusal = player->Open(headphones); !refusal.isEmpty())
        return refusal;
    connect(player.get(), &HeadphonePlayer::Told, this, &JointPlayer::Told);
    player->SetVolume(volume);
    player->Load(file);
    player->Play();
    phones_ = std::move(player);
    return {};
}

QString JointPlayer::PlayOnMain(const audio::HeldFile& file) {
    if (!IsMainFree())
        return kOnAir;
    stream_ = library_.StreamOpenHeld(Output::Main, file);
    if (stream_ != 0 && library_.StreamAwaitOpen(stream_, kJointPatience) == audio::OpenState::Ready &&
        library_.StreamPlay(stream_, true))
        return {};
    Stop();
    return QStringLiteral("Die Hauptausgabe spielt nicht.");
}

void JointPlayer::Stop() {
    phones_.reset();
    if (stream_ != 0)
        library_.StreamFree(stream_);
    stream_ = 0;
}

void JointPlayer::Seek(double fraction) {
    if (phones_)
        phones_->Seek(fraction);
    if (stream_ != 0) {
        const double length = library_.ChannelBytes2Seconds(stream_, library_.StreamGetLength(stream_));
        library_.ChannelSetPosition(stream_,
                                    library_.ChannelSeconds2Bytes(stream_, std::clamp(fraction, 0.0, 1.0) * length));
    }
}

void JointPlayer::SetVolume(int volume) {
    if (phones_)
        phones_->SetVolume(volume);
}

void JointPlayer::Tick() {
    if (phones_) {
        phones_->Tick();
        if (phones_->Now() == HeadphonePlayer::State::Stop) {
            Stop();
            Q_EMIT Ended();
        }
    } else if (stream_ != 0) {
        TickMain();
    }
}

void JointPlayer::TickMain() {
    if (!IsMainFree()) {
        Stop();
        Q_EMIT Told(kOnAir);
        Q_EMIT Ended();
    } else if (library_.ChannelIsActive(stream_) == audio::Activity::Stopped) {
        Stop();
        Q_EMIT Ended();
    }
}

double JointPlayer::Position() const {
    if (phones_)
        return phones_->Position();
    return stream_ == 0 ? 0 : library_.ChannelBytes2Seconds(stream_, library_.ChannelGetPosition(stream_));
}

} // namespace kalvo
