#include "audio/Channel.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kalvo::audio {

namespace {

constexpr float kMostGain = 24; // dB

bool Within(float value, float least, float most) {
    return value >= least && value <= most;
}

bool Usable(EffectType type, const EffectParameters& p, int sampleRate) {
    if (type == EffectType::Reverb)
        return Within(p.reverbMix, -96, 0) && Within(p.reverbTime, 1, 3000);
    return Within(p.centre, 10, float(sampleRate) / 2) && Within(p.bandwidth, 0.1F, 120) && Within(p.gain, -15, 15);
}

} // namespace

Channel::Channel(Output output, OutputPort& port, std::unique_ptr<FrameSource> source)
    : output_(output),
      format_(source->Format()),
      port_(port),
      voice_(std::make_unique<Voice>(std::move(source), port.TheBus().SampleRate())) {
    attributes_.frequency = Format().sampleRate;
}

Channel::~Channel() {
    if (!voice_)
        return;
    voice_->Sinks().Release();
    Send(MakeCommand(Command::Kind::Free));
    port_.Keep(std::move(voice_));
}

Command Channel::MakeCommand(Command::Kind kind) const {
    Command command;
    command.kind = kind;
    command.voice = voice_.get();
    return command;
}

ErrorCode Channel::Join() {
    const ErrorCode error = Send(MakeCommand(Command::Kind::Add));
    if (error != ErrorCode::None)
        voice_.reset();
    return error;
}

ErrorCode Channel::Start() {
    Command command = MakeCommand(Command::Kind::Play);
    command.number = start_;
    return Send(command);
}

ErrorCode Channel::Play(bool fromStart) {
    const bool ended = start_ > 0 && voice_->EndedStart() == start_;
    if ((fromStart || ended) && Position() != 0)
        voice_->Reader().Seek(0);
    ++start_;
    wanted_ = Activity::Playing;
    return Start();
}

ErrorCode Channel::Pause() {
    if (Active() != Activity::Playing)
        return ErrorCode::Argument;
    wanted_ = Activity::Paused;
    return Send(MakeCommand(Command::Kind::Halt));
}

ErrorCode Channel::Resume() {
    if (Active() != Activity::Paused)
        return ErrorCode::Argument;
    wanted_ = Activity::Playing;
    return Start();
}

ErrorCode Channel::Stop() {
    wanted_ = Activity::Stopped;
    return Send(MakeCommand(Command::Kind::Halt));
}

Activity Channel::Active() const {
    return start_ > 0 && voice_->EndedStart() == start_ ? Activity::Stopped : wanted_;
}

ErrorCode Channel::Seek(std::uint64_t frame) {
    if (frame > std::uint64_t(Frames()))
        return ErrorCode::Argument;
    voice_->Reader().Seek(std::int64_t(frame));
    return ErrorCode::None;
}

bool Channel::Attributable(int frequency, int volume, int pan) const {
    const int highest = SourceReader::kMostSpeed * port_.TheBus().SampleRate();
    return (frequency == kKeepFrequency || (frequency >= SourceReader::kLowestFrequency && frequency <= highest)) &&
           (volume == kKeepVolume || (volume >= 0 && volume <= 100)) &&
           (pan == kKeepPan || (pan >= -100 && pan <= 100));
}

void Channel::Note(int frequency, int volume, int pan) {
    if (frequency != kKeepFrequency)
        attributes_.frequency = frequency;
    if (volume != kKeepVolume)
        attributes_.volume = volume;
    if (pan != kKeepPan)
        attributes_.pan = pan;
}

ErrorCode Channel::SetAttributes(int frequency, int volume, int pan) {
    return SlideAttributes(frequency, volume, pan, 0);
}

ErrorCode Channel::SlideAttributes(int frequency, int volume, int pan, int milliseconds) {
    if (milliseconds < 0 || !Attributable(frequency, volume, pan))
        return ErrorCode::Argument;
    Command command = MakeCommand(milliseconds > 0 ? Command::Kind::Slide : Command::Kind::Set);
    command.number = std::uint64_t(milliseconds) * std::uint64_t(port_.TheBus().SampleRate()) / 1000;
    command.frequency = frequency;
    command.volume = volume;
    command.pan = pan;
    if (milliseconds > 0)
        command.slide = ++slide_;
    Note(frequency, volume, pan);
    return Send(command);
}

ErrorCode Channel::SetGain(float decibel) {
    if (!Within(decibel, -kMostGain, kMostGain))
        return ErrorCode::Argument;
    Command command = MakeCommand(Command::Kind::Gain);
    command.parameters.gain = decibel;
    return Send(command);
}

Attributes Channel::GetAttributes() const {
    return voice_->FinishedSlide() == slide_ ? attributes_ : voice_->Current();
}

ErrorCode Channel::AddSync(Handle handle, std::uint32_t type, SyncProcedure procedure, void* user) {
    const auto kind = SyncType(type & ~kOneTime);
    const bool known = kind == SyncType::End || kind == SyncType::SlideEnd || kind == SyncType::DeviceLost;
    if (!known || procedure == nullptr)
        return ErrorCode::Argument;
    syncs_.push_back({handle, kind, (type & kOneTime) != 0, procedure, user});
    return ErrorCode::None;
}

bool Channel::RemoveSync(Handle handle) {
    return std::erase_if(syncs_, [handle](const Sync& sync) { return sync.handle == handle; }) > 0;
}

std::vector<DueSync> Channel::TakeDueSyncs(bool deviceLost) {
    std::vector<DueSync> due;
    for (const std::uint32_t slideEnds = voice_->SlideEnds(); slideEndsSeen_ != slideEnds; ++slideEndsSeen_)
        TakeDue(SyncType::SlideEnd, due);
    for (const std::uint32_t ends = voice_->Ends(); endsSeen_ != ends; ++endsSeen_)
        TakeDue(SyncType::End, due);
    if (deviceLost)
        TakeDue(SyncType::DeviceLost, due);
    return due;
}

void Channel::TakeDue(SyncType type, std::vector<DueSync>& due) {
    for (const Sync& sync : syncs_) {
        if (sync.type == type)
            due.push_back({sync.handle, sync.procedure, sync.user});
    }
    std::erase_if(syncs_, [type](const Sync& sync) { return sync.type == type && sync.oneTime; });
}

bool Channel::FreeBand(std::size_t& band) const {
    std::array<bool, Equaliser::kBands> taken{};
    for (const Effect& effect : effects_) {
        if (effect.type == EffectType::EqualiserBand)
            taken[effect.band] = true;
    }
    band = std::size_t(std::find(taken.begin(), taken.end(), false) - taken.begin());
    return band < taken.size();
}

ErrorCode Channel::AddEffect(Handle handle, EffectType type) {
    Effect effect{handle, type, 0, {}};
    if (type == EffectType::EqualiserBand) {
        if (!FreeBand(effect.band))
            return ErrorCode::Argument;
    } else if (type == EffectType::Reverb) {
        if (std::any_of(effects_.begin(), effects_.end(), [](const Effect& e) { return e.type == EffectType::Reverb; }))
            return ErrorCode::Argument;
        Command command = MakeCommand(Command::Kind::AddReverb);
        command.reverb = voice_->MakeReverb();
        if (Send(command) != ErrorCode::None)
            return ErrorCode::Device;
    } else {
        return ErrorCode::Argument;
    }
    effects_.push_back(effect);
    return ErrorCode::None;
}

ErrorCode Channel::RemoveEffect(Handle handle) {
    const auto effect = Find(handle);
    if (effect == effects_.end())
        return ErrorCode::InvalidHandle;
    const ErrorCode error = SendParameters(*effect, EffectParameters{}); // flat and dry
    if (error == ErrorCode::None)
        effects_.erase(effect);
    return error;
}

ErrorCode Channel::SetParameters(Handle handle, const EffectParameters& parameters) {
    const auto effect = Find(handle);
    if (effect == effects_.end())
        return ErrorCode::InvalidHandle;
    if (!Usable(effect->type, parameters, port_.TheBus().SampleRate()))
        return ErrorCode::Argument;
    const ErrorCode error = SendParameters(*effect, parameters);
    if (error == ErrorCode::None)
        effect->parameters = parameters;
    return error;
}

ErrorCode Channel::SendParameters(const Effect& effect, const EffectParameters& parameters) {
    Command command = MakeCommand(effect.type == EffectType::Reverb ? Command::Kind::SetReverb : Command::Kind::Band);
    command.number = effect.band;
    command.parameters = parameters;
    return Send(command);
}

bool Channel::GetParameters(Handle handle, EffectParameters& parameters) const {
    for (const Effect& effect : effects_) {
        if (effect.handle == handle) {
            parameters = effect.parameters;
            return true;
        }
    }
    return false;
}

std::vector<Channel::Effect>::iterator Channel::Find(Handle effect) {
    return std::find_if(effects_.begin(), effects_.end(), [effect](const Effect& e) { return e.handle == effect; });
}

} // namespace kalvo::audio
