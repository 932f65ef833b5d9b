#include "audio/Voice.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace kalvo::audio {

namespace {
constexpr unsigned kFrequencyBit = 1;
constexpr unsigned kVolumeBit = 2;
constexpr unsigned kPanBit = 4;
} // namespace

Voice::Voice(std::unique_ptr<FrameSource> source, int busRate)
    : reader_(std::move(source), busRate),
      frequency_(reader_.Source().Format().sampleRate),
      equaliser_(busRate),
      currentFrequency_(frequency_.Value()) {}

Reverb* Voice::MakeReverb() {
    if (!ownedReverb_)
        ownedReverb_ = std::make_unique<Reverb>(equaliser_.SampleRate());
    return ownedReverb_.get();
}

Attributes Voice::Current() const {
    return {int(std::lround(currentFrequency_.load(std::memory_order_relaxed))),
            int(std::lround(currentVolume_.load(std::memory_order_relaxed) * 100)),
            int(std::lround(currentPan_.load(std::memory_order_relaxed) * 100))};
}

void Voice::Apply(const Command& command) {
    switch (command.kind) {
    case Command::Kind::Free:
        freeing_ = true;
        break;
    case Command::Kind::Play:
        wanted_ = true;
        start_ = command.number;
        break;
    case Command::Kind::Halt:
        wanted_ = false;
        break;
    case Command::Kind::Set:
        ApplySet(command);
        break;
    case Command::Kind::Slide:
        ApplySlide(command);
        break;
    case Command::Kind::Gain:
        Move(gain_, std::pow(10.0, double(command.parameters.gain) / 20));
        break;
    case Command::Kind::Band:
        equaliser_.SetBand(std::size_t(command.number), command.parameters, !running_);
        break;
    case Command::Kind::AddReverb:
        reverb_ = command.reverb;
        break;
    case Command::Kind::SetReverb:
        if (reverb_ != nullptr)
            reverb_->SetParameters(command.parameters);
        break;
    case Command::Kind::Add:
    case Command::Kind::BusVolume:
        break;
    }
    PublishAttributes();
}

void Voice::Move(Ramp& ramp, double value) const {
    running_ ? ramp.GlideTo(value) : ramp.Set(value);
}

void Voice::ApplySet(const Command& command) {
    if (command.frequency != kKeepFrequency) {
        // A speed has no step to hide, a straight line will do; the reader glides within the block.
        frequency_.SlideTo(command.frequency, running_ ? kBlockFrames : 0);
        sliding_ &= ~kFrequencyBit;
    }
    if (command.volume != kKeepVolume) {
        Move(volume_, command.volume / 100.0);
        sliding_ &= ~kVolumeBit;
    }
    if (command.pan != kKeepPan) {
        Move(pan_, command.pan / 100.0);
        sliding_ &= ~kPanBit;
    }
    if (sliding_ == 0)
        finishedSlide_.store(slide_, std::memory_order_release);
}

void Voice::ApplySlide(const Command& command) {
    sliding_ = 0;
    if (command.frequency != kKeepFrequency) {
        frequency_.SlideTo(command.frequency, command.number);
        sliding_ |= kFrequencyBit;
    }
    if (command.volume != kKeepVolume) {
        volume_.SlideTo(command.volume / 100.0, command.number);
        sliding_ |= kVolumeBit;
    }
    if (command.pan != kKeepPan) {
        pan_.SlideTo(command.pan / 100.0, command.number);
        sliding_ |= kPanBit;
    }
    slideLeft_ = command.number;
    slide_ = command.slide;
}

unsigned Voice::Render(float* bus, std::size_t frames) {
    bool starved = false;
    int idle = 0; // a jump may take one turn without a frame, a source that gives nothing must not take more
    for (std::size_t done = 0; done < frames;) {
        if (!running_)
            TryStart();
        if (!running_ || idle > 2) {
            PassTime(frames - done);
            break;
        }
        const std::size_t before = done;
        starved |= RenderPiece(bus + done * 2, frames - done, done);
        idle += done == before ? 1 : 0;
    }
    PublishAttributes();
    return starved ? 1 : 0;
}

void Voice::TryStart() {
    if (reader_.SeekPending())
        reader_.ApplySeek();
    if (!GoingOn() || !reader_.Ready(FastestFrequency(), starving_))
        return;
    running_ = true;
    fade_.Set(reader_.AtStart() ? 1 : 0);
    fade_.GlideTo(1);
    starving_ = false;
}

// Up to the end of the block, of the fade or of the source, whatever comes first.
bool Voice::RenderPiece(float* bus, std::size_t frames, std::size_t& done) {
    bool starved = false;
    if (!reader_.TopUp(FastestFrequency()) && GoingOn() && !starving_)
        starved = starving_ = true;
    SteerFade();
    std::size_t piece = frames;
    if (fade_.Target() == 0)
        piece = std::min<std::size_t>(piece, std::size_t(fade_.FramesLeft()));
    frequency_.Advance(piece);
    const std::size_t got = reader_.Read(sound_.data(), piece, frequency_.Value());
    equaliser_.Process(sound_.data(), got);
    if (reverb_ != nullptr)
        reverb_->Process(sound_.data(), got);
    Mix(bus, sound_.data(), got);
    CountSlide(got);
    done += got;

    if (reader_.AtEnd() && !reader_.SeekPending())
        FinishAtEnd();
    else if (got < piece || (fade_.Target() == 0 && !fade_.Moving()))
        running_ = false;
    return starved;
}

void Voice::SteerFade() {
    // A starvation fades out to the end before it comes back, so that the source can gain a lead.
    fade_.GlideTo(GoingOn() && !starving_ ? 1 : 0);
}

void Voice::Mix(float* bus, const float* sound, std::size_t frames) {
    std::array<float, kBlockFrames * 2> out;
    for (std::size_t i = 0; i < frames; ++i) {
        const double gain = fade_.Next() * volume_.Next() * gain_.Next();
        const double pan = pan_.Next();
        out[2 * i] = sound[2 * i] * float(gain * std::min(1.0, 1 - pan));
        out[2 * i + 1] = sound[2 * i + 1] * float(gain * std::min(1.0, 1 + pan));
    }
    for (std::size_t i = 0; i < frames * 2; ++i)
        bus[i] += out[i];
    meter_.Write(out.data(), frames);
    tap_.Write(out.data(), frames);
    sinks_.Write(out.data(), frames);
}

// Slides go on while nothing sounds.
void Voice::PassTime(std::size_t frames) {
    frequency_.Advance(frames);
    volume_.Advance(frames);
    gain_.Advance(frames);
    pan_.Advance(frames);
    CountSlide(frames);
}

void Voice::CountSlide(std::size_t frames) {
    if (sliding_ == 0)
        return;
    slideLeft_ -= std::min<std::uint64_t>(slideLeft_, frames);
    if (slideLeft_ > 0)
        return;
    sliding_ = 0;
    PublishAttributes();
    finishedSlide_.store(slide_, std::memory_order_release);
    slideEnds_.fetch_add(1, std::memory_order_release);
}

void Voice::FinishAtEnd() {
    running_ = false;
    if (!wanted_)
        return;
    wanted_ = false;
    endedStart_.store(start_, std::memory_order_release);
    ends_.fetch_add(1, std::memory_order_release);
}

void Voice::PublishAttributes() {
    currentFrequency_.store(frequency_.Value(), std::memory_order_relaxed);
    currentVolume_.store(volume_.Value(), std::memory_order_relaxed);
    currentPan_.store(pan_.Value(), std::memory_order_relaxed);
}

} // namespace kalvo::audio
