#include "audio/AudioLibraryImpl.h"

#include "audio/Spectrum.h"

#include <algorithm>
#include <utility>

namespace kalvo::audio {

namespace {

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
    std::erase_if(openings_, [output](const auto& opening) { return opening.second.output == output; });
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
    info.overruns = port->TheBus().Overruns();
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

} // namespace kalvo::audio
