#include "audio/OutputPort.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace kalvo::audio {

namespace {
constexpr auto kFirstOpening = std::chrono::seconds(5);
constexpr auto kSilenceAfter = std::chrono::milliseconds(500);
constexpr auto kSearchEvery = std::chrono::seconds(1);
constexpr int kSendTries = 100; // of a millisecond each
} // namespace

OutputPort::OutputPort(SdlAudio& audio, int sampleRate, int bufferFrames)
    : audio_(audio), bus_(sampleRate), bufferFrames_(bufferFrames) {}

OutputPort::~OutputPort() {
    Silence();
}

void OutputPort::Silence() {
    wanting_ = Wanting::Nothing;
    silent_.reset();
    if (opening_)
        audio_.Abandon(std::exchange(opening_, nullptr));
    if (device_) {
        device_->Detach();
        audio_.Close(std::exchange(device_, nullptr));
    }
    if (dead_)
        audio_.Close(std::exchange(dead_, nullptr));
}

bool OutputPort::OpenDevice(const std::string& name, bool mayFallBack) {
    wantedName_ = name;
    DeviceRequest request = Request();
    request.startAnew = true; // the sound server may have come up since the last try
    auto opening = audio_.Open(request);
    const bool answered = opening->WaitFor(kFirstOpening);
    const auto device = answered ? opening->Device() : nullptr;
    if (!device) {
        audio_.Abandon(std::move(opening));
        return false;
    }
    wanting_ = Wanting::Device;
    mayFallBack_ = mayFallBack;
    Attach(device);
    return true;
}

void OutputPort::OpenSilent() {
    wanting_ = Wanting::Silence;
    silent_ = std::make_unique<PacedDevice>(bus_, std::size_t(bufferFrames_));
}

bool OutputPort::DeviceName(std::string& name) const {
    if (!device_)
        return false;
    name = device_->Name();
    return true;
}

bool OutputPort::Send(const Command& command) {
    for (int i = 0; i < kSendTries; ++i) {
        if (bus_.Push(command))
            return true;
        if (device_ || silent_)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        else
            bus_.ApplyCommands(); // nobody else renders now
    }
    return false;
}

void OutputPort::DropRetired() {
    leaving_.erase(std::remove_if(leaving_.begin(), leaving_.end(), [](const auto& voice) { return voice->Retired(); }),
                   leaving_.end());
}

bool OutputPort::Watch() {
    if (wanting_ != Wanting::Device)
        return false;
    bool lostNow = false;
    if (device_ && device_->Lost()) {
        device_->Detach();
        if (opening_)
            audio_.Abandon(std::exchange(opening_, nullptr));
        dead_ = std::exchange(device_, nullptr);
        lost_ = Clock::now();
        lostNow = true;
        StartSearch(true);
    }
    TakeAnswer();
    if (!opening_ && !OnWantedDevice() && Clock::now() >= nextSearch_)
        StartSearch(!device_);
    if (!device_ && !silent_ && Clock::now() - lost_ > kSilenceAfter)
        silent_ = std::make_unique<PacedDevice>(bus_, std::size_t(bufferFrames_));
    return lostNow;
}

DeviceRequest OutputPort::Request() {
    DeviceRequest request;
    request.bus = &bus_;
    request.name = wantedName_;
    request.sampleRate = bus_.SampleRate();
    request.bufferFrames = bufferFrames_;
    return request;
}

// Everything: anything that sounds; otherwise only the wanted device is looked for.
void OutputPort::StartSearch(bool everything) {
    DeviceRequest request = Request();
    request.onlyIfListed = true;
    request.othersToo = everything && mayFallBack_;
    request.startAnew = everything;
    if (everything)
        request.replaced = std::exchange(dead_, nullptr);
    opening_ = audio_.Open(request);
    nextSearch_ = Clock::now() + kSearchEvery;
}

void OutputPort::TakeAnswer() {
    if (!opening_ || !opening_->WaitFor(std::chrono::milliseconds(0)))
        return;
    auto device = opening_->Device();
    opening_.reset();
    if (device)
        Attach(std::move(device));
}

void OutputPort::Attach(std::shared_ptr<SdlDevice> device) {
    silent_.reset();
    if (device_) {
        device_->Detach();
        audio_.Close(std::move(device_));
    }
    device_ = std::move(device);
    device_->Attach();
}

} // namespace kalvo::audio
