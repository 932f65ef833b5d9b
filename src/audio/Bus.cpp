#include "audio/Bus.h"

#include "audio/DenormalGuard.h"

#include <algorithm>
#include <chrono>

namespace kalvo::audio {

namespace {
constexpr auto kSourceTimeout = std::chrono::seconds(5);
constexpr double kLoadShare = 0.02; // of a new buffer in the mean load
} // namespace

void Bus::Render(float* stereo, std::size_t frames) {
    const DenormalGuard guard;
    const auto begin = std::chrono::steady_clock::now();
    for (std::size_t done = 0; done < frames;) {
        const std::size_t block = std::min(kBlockFrames, frames - done);
        RenderBlock(stereo + done * 2, block);
        done += block;
    }
    Measure(std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count(), frames);
}

void Bus::RenderBlock(float* stereo, std::size_t frames) {
    ApplyCommands();
    std::fill_n(stereo, frames * 2, 0.0F);
    unsigned starved = 0;
    for (std::size_t i = 0; i < voiceCount_; ++i)
        starved += voices_[i]->Render(stereo, frames);
    if (starved > 0)
        starvations_.fetch_add(starved, std::memory_order_relaxed);
    RetireDone();
    if (volume_.Moving() || volume_.Value() != 1) {
        for (std::size_t i = 0; i < frames; ++i) {
            const auto gain = float(volume_.Next());
            stereo[2 * i] *= gain;
            stereo[2 * i + 1] *= gain;
        }
    }
    limiter_.Process(stereo, frames);
    meter_.Write(stereo, frames);
    tap_.Write(stereo, frames);
    sinks_.Write(stereo, frames);
}

void Bus::ApplyCommands() {
    Command command;
    while (commands_.Pop(command))
        Apply(command);
}

void Bus::Apply(const Command& command) {
    if (command.kind == Command::Kind::Add)
        voices_[voiceCount_++] = command.voice;
    else if (command.kind == Command::Kind::BusVolume)
        volume_.GlideTo(command.volume / 100.0);
    else
        command.voice->Apply(command);
}

void Bus::RetireDone() {
    for (std::size_t i = 0; i < voiceCount_;) {
        if (!voices_[i]->Done()) {
            ++i;
            continue;
        }
        Voice* voice = voices_[i];
        voices_[i] = voices_[--voiceCount_];
        voice->Retire();
    }
}

void Bus::WaitForSources() {
    ApplyCommands();
    for (std::size_t i = 0; i < voiceCount_; ++i) {
        if (voices_[i]->WantsToPlay())
            voices_[i]->Reader().Source().WaitFor(voices_[i]->FramesWanted(), kSourceTimeout);
    }
}

void Bus::WaitForSinks() {
    sinks_.WaitForRoom(kBlockFrames);
    for (std::size_t i = 0; i < voiceCount_; ++i)
        voices_[i]->Sinks().WaitForRoom(kBlockFrames);
}

void Bus::Measure(double seconds, std::size_t frames) {
    rendered_.fetch_add(1, std::memory_order_relaxed);
    if (frames == 0)
        return;
    const double share = seconds * sampleRate_ / double(frames);
    if (share > 1)
        overruns_.fetch_add(1, std::memory_order_relaxed);
    const double load = load_.load(std::memory_order_relaxed);
    load_.store(load + (share - load) * kLoadShare, std::memory_order_relaxed);
}

} // namespace kalvo::audio
