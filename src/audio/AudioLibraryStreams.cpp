// Streams, their events and effects; the outputs are in AudioLibraryImpl.cpp.

#include "audio/AudioLibraryImpl.h"
#include "audio/Spectrum.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace kalvo::audio {

namespace {

constexpr std::uint64_t kBytesPerFrame = 4;
constexpr int kOpenPatience = 3000; // ms
constexpr std::chrono::minutes kMeasurePatience{1};

} // namespace

bool AudioLibraryImpl::RoomFor(Output output) {
    auto living = std::size_t(std::count_if(openings_.begin(), openings_.end(),
                                            [output](const auto& opening) { return opening.second.output == output; }));
    for (const auto& [handle, channel] : channels_)
        living += std::size_t(channel->TheOutput() == output);
    OutputPort& port = *Slot(output).port;
    port.DropRetired();
    return living < Bus::kMostVoices && living + port.Leaving() < 2 * Bus::kMostVoices;
}

Handle AudioLibraryImpl::StreamCreateFile(Output output, const std::string& path) {
    const Handle stream = StreamOpenFile(output, path);
    if (stream == 0)
        return 0;
    const OpenState state = StreamAwaitOpen(stream, kOpenPatience);
    if (state == OpenState::Opening) {
        StreamFree(stream);
        return Refuse(ErrorCode::Timeout);
    }
    return state == OpenState::Ready ? stream : 0;
}

Handle AudioLibraryImpl::StreamOpenFile(Output output, const std::string& path) {
    return Open(output, opener_, path);
}

Handle AudioLibraryImpl::StreamOpenHeld(Output output, const HeldFile& file) {
    if (!file)
        return Refuse(ErrorCode::Argument);
    const auto opener = [&file](const std::string&, ErrorCode& error) { return OpenHeldSource(file, error); };
    return Open(output, opener, {});
}

Handle AudioLibraryImpl::Open(Output output, const SourceOpener& opener, const std::string& path) {
    if (Find(output) == nullptr)
        return 0;
    if (!RoomFor(output))
        return Refuse(ErrorCode::Argument);
    ErrorCode error = ErrorCode::File;
    auto source = opener(path, error);
    if (!source)
        return Refuse(error);
    openings_.emplace(++lastHandle_, Opening{output, std::move(source)});
    return lastHandle_;
}

OpenState AudioLibraryImpl::StreamAwaitOpen(Handle stream, int milliseconds) {
    const auto found = openings_.find(stream);
    if (found == openings_.end())
        return Find(stream) != nullptr ? OpenState::Ready : OpenState::Failed;
    ErrorCode error = found->second.source->AwaitOpen(std::chrono::milliseconds(milliseconds));
    if (error == ErrorCode::Timeout) {
        Report(error);
        return OpenState::Opening;
    }
    Opening opening = std::move(found->second);
    openings_.erase(found);
    if (error == ErrorCode::None)
        error = MakeChannel(stream, std::move(opening));
    return Report(error) ? OpenState::Ready : OpenState::Failed;
}

ErrorCode AudioLibraryImpl::MakeChannel(Handle stream, Opening opening) {
    OutputPort& port = *Slot(opening.output).port;
    const int rate = opening.source->Format().sampleRate;
    if (rate < SourceReader::kLowestFrequency || rate > SourceReader::kMostSpeed * port.TheBus().SampleRate())
        return ErrorCode::Format;
    if (port.Offline()) // its time is faster than the measuring
        opening.source->AwaitLength(kMeasurePatience);
    auto channel = std::make_unique<Channel>(opening.output, port, std::move(opening.source));
    const ErrorCode error = channel->Join();
    if (error == ErrorCode::None)
        channels_.emplace(stream, std::move(channel));
    return error;
}

bool AudioLibraryImpl::StreamPlay(Handle stream, bool fromStart) {
    return Do(stream, &Channel::Play, fromStart);
}

bool AudioLibraryImpl::StreamFree(Handle stream) {
    std::erase_if(effects_, [stream](const auto& effect) { return effect.second == stream; });
    return Report(channels_.erase(stream) + openings_.erase(stream) > 0 ? ErrorCode::None : ErrorCode::InvalidHandle);
}

std::uint64_t AudioLibraryImpl::StreamGetLength(Handle stream) {
    const Channel* channel = Find(stream);
    return channel != nullptr ? std::uint64_t(channel->Frames()) * kBytesPerFrame : 0;
}

double AudioLibraryImpl::ChannelBytes2Seconds(Handle stream, std::uint64_t bytes) {
    const Channel* channel = Find(stream);
    return channel != nullptr ? double(bytes) / double(kBytesPerFrame) / channel->Format().sampleRate : 0;
}

std::uint64_t AudioLibraryImpl::ChannelSeconds2Bytes(Handle stream, double seconds) {
    const Channel* channel = Find(stream);
    if (channel == nullptr || !(seconds > 0))
        return 0;
    return std::uint64_t(std::llround(seconds * channel->Format().sampleRate)) * kBytesPerFrame;
}

std::uint64_t AudioLibraryImpl::ChannelGetPosition(Handle stream) {
    const Channel* channel = Find(stream);
    return channel != nullptr ? std::uint64_t(channel->Position()) * kBytesPerFrame : 0;
}

bool AudioLibraryImpl::ChannelSetPosition(Handle stream, std::uint64_t bytes) {
    return Do(stream, &Channel::Seek, bytes / kBytesPerFrame);
}

Activity AudioLibraryImpl::ChannelIsActive(Handle stream) {
    const Channel* channel = Find(stream);
    return channel != nullptr ? channel->Active() : Activity::Stopped;
}

bool AudioLibraryImpl::ChannelPause(Handle stream) {
    return Do(stream, &Channel::Pause);
}

bool AudioLibraryImpl::ChannelResume(Handle stream) {
    return Do(stream, &Channel::Resume);
}

bool AudioLibraryImpl::ChannelStop(Handle stream) {
    return Do(stream, &Channel::Stop);
}

bool AudioLibraryImpl::ChannelGetInfo(Handle stream, ChannelInfo& info) {
    const Channel* channel = Find(stream);
    if (channel == nullptr)
        return false;
    const SourceFormat& format = channel->Format();
    info = {format.sampleRate, format.channels, format.variableRate, channel->Bitrate(),
            Slot(channel->TheOutput()).port->TheBus().SampleRate()};
    return true;
}

bool AudioLibraryImpl::ChannelSetAttributes(Handle stream, int frequency, int volume, int pan) {
    return Do(stream, &Channel::SetAttributes, frequency, volume, pan);
}

bool AudioLibraryImpl::ChannelSetGain(Handle stream, float decibel) {
    return Do(stream, &Channel::SetGain, decibel);
}

bool AudioLibraryImpl::ChannelGetAttributes(Handle stream, Attributes& attributes) {
    const Channel* channel = Find(stream);
    if (channel == nullptr)
        return false;
    attributes = channel->GetAttributes();
    return true;
}

bool AudioLibraryImpl::ChannelSlideAttributes(Handle stream, int frequency, int volume, int pan, int milliseconds) {
    return Do(stream, &Channel::SlideAttributes, frequency, volume, pan, milliseconds);
}

Levels AudioLibraryImpl::ChannelGetLevel(Handle stream) {
    Channel* channel = Find(stream);
    return channel != nullptr ? channel->TheVoice().Meter().Take() : Levels();
}

std::size_t AudioLibraryImpl::ChannelGetData(Handle stream, DataKind kind, float* values, std::size_t count) {
    Channel* channel = Find(stream);
    if (channel == nullptr || channel->Active() != Activity::Playing)
        return 0;
    return ReadTap(channel->TheVoice().Tap(), kind, values, count);
}

// ---- syncs

Handle AudioLibraryImpl::ChannelSetSync(Handle stream, std::uint32_t type, std::uint64_t /*parameter*/,
                                        SyncProcedure procedure, void* user) {
    Channel* channel = Find(stream);
    if (channel == nullptr || !Report(channel->AddSync(lastHandle_ + 1, type, procedure, user)))
        return 0;
    return ++lastHandle_;
}

bool AudioLibraryImpl::ChannelRemoveSync(Handle stream, Handle sync) {
    Channel* channel = Find(stream);
    return channel != nullptr && Report(channel->RemoveSync(sync) ? ErrorCode::None : ErrorCode::InvalidHandle);
}

void AudioLibraryImpl::DispatchEvents() {
    std::array<bool, 2> lost{};
    for (std::size_t i = 0; i < outputs_.size(); ++i) {
        if (outputs_[i].port) {
            outputs_[i].port->DropRetired();
            lost[i] = outputs_[i].port->Watch();
        }
    }
    std::vector<std::pair<Handle, bool>> streams;
    for (const auto& [handle, channel] : channels_)
        streams.emplace_back(handle, lost[std::size_t(channel->TheOutput())]);
    for (const auto& [stream, deviceLost] : streams)
        Dispatch(stream, deviceLost);
}

// A procedure may free its stream, others too, or make new ones.
void AudioLibraryImpl::Dispatch(Handle stream, bool deviceLost) {
    const auto found = channels_.find(stream);
    if (found == channels_.end())
        return;
    for (const DueSync& due : found->second->TakeDueSyncs(deviceLost)) {
        due.procedure(due.sync, stream, 0, due.user);
        if (channels_.count(stream) == 0)
            return;
    }
}

// ---- effects

Handle AudioLibraryImpl::ChannelSetFX(Handle stream, EffectType type) {
    Channel* channel = Find(stream);
    if (channel == nullptr || !Report(channel->AddEffect(lastHandle_ + 1, type)))
        return 0;
    effects_.emplace(++lastHandle_, stream);
    return lastHandle_;
}

bool AudioLibraryImpl::ChannelRemoveFX(Handle stream, Handle effect) {
    Channel* channel = Find(stream);
    if (channel == nullptr || !Report(channel->RemoveEffect(effect)))
        return false;
    effects_.erase(effect);
    return true;
}

bool AudioLibraryImpl::FXSetParameters(Handle effect, const EffectParameters& parameters) {
    const auto found = effects_.find(effect);
    Channel* channel = Find(found != effects_.end() ? found->second : 0);
    return channel != nullptr && Report(channel->SetParameters(effect, parameters));
}

bool AudioLibraryImpl::FXGetParameters(Handle effect, EffectParameters& parameters) {
    const auto found = effects_.find(effect);
    Channel* channel = Find(found != effects_.end() ? found->second : 0);
    return channel != nullptr && channel->GetParameters(effect, parameters);
}

} // namespace kalvo::audio
