#include "audio/PacedDevice.h"

#include "audio/Bus.h"
#include "audio/TimedWait.h"

#include <chrono>
#include <vector>

namespace kalvo::audio {

PacedDevice::PacedDevice(Bus& bus, std::size_t bufferFrames)
    : bus_(bus), bufferFrames_(bufferFrames), thread_([this] { Run(); }) {}

PacedDevice::~PacedDevice() {
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    ended_.notify_all();
    thread_.join();
}

void PacedDevice::Run() {
    using Clock = std::chrono::steady_clock;
    const auto period = std::chrono::duration_cast<Clock::duration>(
        std::chrono::duration<double>(double(bufferFrames_) / bus_.SampleRate()));
    std::vector<float> thrownAway(bufferFrames_ * 2);
    auto due = Clock::now();
    std::unique_lock lock(mutex_);
    for (;;) {
        const auto pause = std::chrono::ceil<std::chrono::milliseconds>(due - Clock::now());
        if (TimedWait(ended_, lock, pause, [this] { return ending_; }))
            return;
        lock.unlock();
        bus_.Render(thrownAway.data(), bufferFrames_);
        due += period;
        if (Clock::now() - due > std::chrono::milliseconds(500))
            due = Clock::now();
        lock.lock();
    }
}

} // namespace kalvo::audio
