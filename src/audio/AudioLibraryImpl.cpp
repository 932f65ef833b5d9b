#include "audio/AudioLibraryImpl.h"

#include "audio/Spectrum.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace kalvo::audio {

namespace {

constexpr std::uint64_t kBytesPerFrame = 4;
constexpr const char* kSilentName = "Kein Ton";
constexpr const char* kDefaultName = "Standardausgabe";
constexpr int kFirstNamed = 2;

} // namespace

AudioLibraryImpl::AudioLibraryImpl(SourceOpener opener) : opener_(std::move(opener)) {}

AudioLibraryImpl::~AudioLibraryImpl() {
    Free(Output::Main);
    Free(Output::Headphones);
}

bool AudioLibraryImpl::Report(ErrorCode error) const {
    error_ = error;
    return error == ErrorCode::None;
}

Handle AudioLibraryImpl::Refuse(ErrorCode error) const {
    error_ = error;
    return 0;
}

OutputPort* AudioLibraryImpl::Find(Output output) const {
    OutputPort* port = Slot(output).port.get();
    Report(port != nullptr ? ErrorCode::None : ErrorCode::NotInitialised);
    return port;
}

Channel* AudioLibraryImpl::Find(Handle stream) {
    const auto found = channels_.find(stream);
    Report(found != channels_.end() ? ErrorCode::None : ErrorCode::InvalidHandle);
    return found != channels_.end() ? found->second.get() : nullptr;
}

// ---- outputs

const DeviceNames& AudioLibraryImpl::Names() {
    if (!names_)
        names_ = audio_.Enumerate();
    return *names_;
}

std::string AudioLibraryImpl::GetDeviceDescription(int device) {
    if (device == kNoSound) {
        names_.reset();
        Names();
        return kSilentName;
    }
    if (device == kDefaultDevice)
        return kDefaultName;
    return DeviceName(device).value_or(std::string());
}

// The name to open; empty: the system's choice. None for a number that does not exist.
std::optional<std::string> AudioLibraryImpl::DeviceName(int device) {
    const auto& names = Names();
    if (device == kDefaultDevice)
        return names.standard;
    if (device < kFirstNamed || std::size_t(device - kFirstNamed) >= names.devices.size())
        return std::nullopt;
    return names.devices[std::size_t(device - kFirstNamed)];
}

int AudioLibraryImpl::DeviceNumber(const OutputSlot& slot, const std::string& name) const {
    if (slot.device == kDefaultDevice && slot.port->OnWantedDevice())
        return kDefaultDevice;
    if (!names_)
        return kDefaultDevice;
    const auto found = std::find(names_->devices.begin(), names_->devices.end(), name);
    return kFirstNamed + int(found - names_->devices.begin());
}

bool AudioLibraryImpl::Init(Output output, int device, int sampleRate, int bufferFrames) {
    const bool buffersExist = bufferFrames == 512 || bufferFrames == 1024 || bufferFrames == 2048;
    if (!buffersExist || sampleRate < SourceReader::kLowestFrequency || sampleRate > 192000)
        return Report(ErrorCode::Argument);
    Close(output);
    OutputSlot& slot = Slot(output);
    auto port = std::make_unique<OutputPort>(audio_, sampleRate, bufferFrames);
    if (device != kOffline && !OpenDevice(*port, output, device))
        return Report(ErrorCode::Device);
    slot.port = std::move(port);
    slot.device = device;
    TakeSinksAlong(slot);
    return SendVolume(slot);
}

bool AudioLibraryImpl::OpenDevice(OutputPort& port, Output output, int device) {
    if (device == kNoSound) {
        port.OpenSilent();
        return true;
    }
    if (device == kDefaultDevice)
        names_.reset(); // the standard may have changed, or the sound server come up, since the last look
    const auto name = DeviceName(device);
    return name && port.OpenDevice(*name, output == Output::Main);
}

bool AudioLibraryImpl::Free(Output output) {
    OutputSlot& slot = Slot(output);
    const bool opened = slot.port != nullptr;
    Close(output);
    for (SoundSink* sink : std::exchange(slot.sinks, {}))
        sink->SourceGone();
    return Report(opened ? ErrorCode::None : ErrorCode::NotInitialised);
}

void AudioLibraryImpl::Close(Output output) {
    OutputSlot& slot = Slot(output);
    if (!slot.port)
        return;
    slot.port->Silence();
    for (auto channel = channels_.begin(); channel != channels_.end();) {
        if (channel->second->TheOutput() == output) {
            const Handle stream = channel->first;
            std::erase_if(effects_, [stream](const auto& effect) { return effect.second == stream; });
            channel = channels_.erase(channel);
        } else {
            ++channel;
        }
    }
    slot.port.reset();
}

bool AudioLibraryImpl::GetInfo(Output output, OutputInfo& info) const {
    const OutputPort* port = Find(output);
    if (port == nullptr)
        return false;
    const OutputSlot& slot = Slot(output);
    info = OutputInfo();
    info.deviceName = kSilentName;
    if (port->Offline()) {
        info.device = kOffline;
        info.deviceName.clear();
    } else if (std::string name; port->DeviceName(name)) {
        info.device = DeviceNumber(slot, name);
        info.deviceName = name.empty() ? kDefaultName : name;
    }
    info.sampleRate = port->TheBus().SampleRate();
    info.bufferFrames = port->BufferFrames();
    info.callbacks = port->TheBus().Blocks();
    info.starvations = port->TheBus().Starvations();
    info.load = port->TheBus().Load();
    return true;
}

bool AudioLibraryImpl::SetVolume(Output output, int volume) {
    if (Find(output) == nullptr)
        return false;
    if (volume < 0 || volume > 100)
        return Report(ErrorCode::Argument);
    Slot(output).volume = volume;
    return SendVolume(Slot(output));
}

bool AudioLibraryImpl::SendVolume(OutputSlot& slot) {
    Command command;
    command.kind = Command::Kind::BusVolume;
    command.volume = slot.volume;
    return Report(slot.port->Send(command) ? ErrorCode::None : ErrorCode::Device);
}

int AudioLibraryImpl::GetVolume(Output output) const {
    return Slot(output).volume;
}

bool AudioLibraryImpl::Stop(Output output) {
    if (Find(output) == nullptr)
        return false;
    for (const auto& [handle, channel] : channels_) {
        if (channel->TheOutput() == output)
            channel->Stop();
    }
    return true;
}

bool AudioLibraryImpl::Render(Output output, float* stereo, std::size_t frames) {
    OutputPort* port = Find(output);
    if (port == nullptr)
        return false;
    if (!port->Offline())
        return Report(ErrorCode::Device);
    for (std::size_t done = 0; done < frames;) {
        const std::size_t block = std::min(kBlockFrames, frames - done);
        port->TheBus().WaitForSources();
        port->TheBus().WaitForSinks();
        port->TheBus().Render(stereo + 2 * done, block);
        done += block;
    }
    return true;
}

Levels AudioLibraryImpl::GetOutputLevels(Output output) {
    OutputPort* port = Find(output);
    return port != nullptr ? port->TheBus().Meter().Take() : Levels();
}

std::size_t AudioLibraryImpl::GetOutputData(Output output, DataKind kind, float* values, std::size_t count) {
    const OutputPort* port = Find(output);
    return port != nullptr ? ReadTap(port->TheBus().Tap(), kind, values, count) : 0;
}

// ---- streams

bool AudioLibraryImpl::RoomFor(Output output) {
    std::size_t living = 0;
    for (const auto& [handle, channel] : channels_)
        living += std::size_t(channel->TheOutput() == output);
    OutputPort& port = *Slot(output).port;
    port.DropRetired();
    return living < Bus::kMostVoices && living + port.Leaving() < 2 * Bus::kMostVoices;
}

Handle AudioLibraryImpl::StreamCreateFile(Output output, const std::string& path) {
    OutputPort* port = Find(output);
    if (port == nullptr)
        return 0;
    if (!RoomFor(output))
        return Refuse(ErrorCode::Argument);
    ErrorCode error = ErrorCode::File;
    auto source = opener_(path, error);
    if (!source)
        return Refuse(error);
    const int rate = source->Format().sampleRate;
    if (rate < SourceReader::kLowestFrequency || rate > SourceReader::kMostSpeed * port->TheBus().SampleRate())
        return Refuse(ErrorCode::Format);
    auto channel = std::make_unique<Channel>(output, *port, std::move(source));
    if (!Report(channel->Join()))
        return 0;
    channels_.emplace(++lastHandle_, std::move(channel));
    return lastHandle_;
}

bool AudioLibraryImpl::StreamPlay(Handle stream, bool fromStart) {
    return Do(stream, &Channel::Play, fromStart);
}

bool AudioLibraryImpl::StreamFree(Handle stream) {
    std::erase_if(effects_, [stream](const auto& effect) { return effect.second == stream; });
    return Report(channels_.erase(stream) > 0 ? ErrorCode::None : ErrorCode::InvalidHandle);
}

std::uint64_t AudioLibraryImpl::StreamGetLength(Handle stream) {
    const Channel* channel = Find(stream);
    return channel != nullptr ? std::uint64_t(channel->Format().frames) * kBytesPerFrame : 0;
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
    info = {format.sampleRate, format.channels, format.variableRate, format.bitrate,
            Slot(channel->TheOutput()).port->TheBus().SampleRate()};
    return true;
}

bool AudioLibraryImpl::ChannelSetAttributes(Handle stream, int frequency, int volume, int pan) {
    return Do(stream, &Channel::SetAttributes, frequency, volume, pan);
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
