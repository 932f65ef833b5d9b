#include "live/Sampler.h"

#include "base/FaderLaw.h"

#include <QFile>

#include <algorithm>
#include <utility>

namespace kalvo {

namespace {

/** ms that a press may wait for a file that is not open yet. */
constexpr int kPadPatience = 10;

} // namespace

Sampler::Sampler(Mixer& mixer, QObject* parent) : QObject(parent), mixer_(mixer), audio_(mixer.Layer().Audio()) {}

Sampler::~Sampler() {
    for (int pad = 1; pad <= kSamplePads; ++pad)
        Close(pad);
}

void Sampler::SetSlots(const SampleSlots& slots) {
    Release();
    for (int pad = 1; pad <= kSamplePads; ++pad)
        Close(pad);
    slots_ = slots;
    KeepReady();
    Q_EMIT SlotsChanged();
}

void Sampler::Close(int pad) {
    if (const audio::Handle stream = std::exchange(Stream(pad), 0); stream != 0)
        audio_.StreamFree(stream);
}

audio::OpenState Sampler::Ready(int pad, int patience) {
    audio::Handle& stream = Stream(pad);
    audio::OpenState state = stream == 0 ? audio::OpenState::Failed : audio_.StreamAwaitOpen(stream, patience);
    const bool isGone = state == audio::OpenState::Failed; // never there, or closed with the output
    if (isGone) {
        const QString& path = slots_.at(static_cast<std::size_t>(pad - 1)).path;
        stream = audio_.StreamOpenFile(audio::Output::Main, QFile::encodeName(path).toStdString());
    }
    if (isGone && stream != 0)
        state = audio_.StreamAwaitOpen(stream, patience);
    if (state == audio::OpenState::Failed)
        stream = 0;
    return state;
}

bool Sampler::Press(int pad) {
    if (!IsAssigned(pad))
        return false;
    if (held_ != 0)
        EndSound();
    held_ = pad;
    started_ = false;
    StartHeld(kPadPatience);
    mixer_.SetDip(mixer_.Fader() < 0 ? 1 : 2, 100 - reduction_);
    Q_EMIT HeldChanged(pad);
    return true;
}

void Sampler::Release(int pad) {
    if (held_ == 0 || held_ != pad)
        return;
    EndSound();
    mixer_.SetDip(0, 100);
    Q_EMIT HeldChanged(0);
}

void Sampler::StartHeld(int patience) {
    if (held_ != 0 && !started_ && Ready(held_, patience) == audio::OpenState::Ready)
        started_ = audio_.StreamPlay(Stream(held_), true);
}

void Sampler::EndSound() {
    const int pad = std::exchange(held_, 0);
    Close(pad);
    Ready(pad, 0);
}

double Sampler::Progress() {
    if (held_ == 0 || !started_)
        return 0;
    const std::uint64_t length = audio_.StreamGetLength(Stream(held_));
    const auto position = static_cast<double>(audio_.ChannelGetPosition(Stream(held_)));
    return length == 0 ? 0 : std::min(1.0, position / static_cast<double>(length));
}

void Sampler::Tick() {
    StartHeld(0);
}

void Sampler::KeepReady() {
    for (int pad = 1; pad <= kSamplePads; ++pad) {
        if (pad != held_ && IsAssigned(pad))
            Ready(pad, 0);
    }
}

} // namespace kalvo
