#pragma once

#include "audio/Command.h"
#include "audio/LevelMeter.h"
#include "audio/Limiter.h"
#include "audio/Ramp.h"
#include "audio/SinkSlots.h"
#include "audio/SpscQueue.h"
#include "audio/TapRing.h"
#include "audio/Voice.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace kalvo::audio {

/**
 * Mixes the voices of one output: voices → volume → limiter → level, tap → whoever renders.
 *
 * Threads: one thread at a time renders (a device's callback, the thread of the silent device, the offline caller);
 * Render() never locks, allocates, waits, logs or touches a file. The control thread reaches it by Push() alone and
 * reads the atomics. A voice belongs to the control thread, which keeps it until Retired().
 */
class Bus {
public:
    static constexpr std::size_t kMostVoices = 64;

    explicit Bus(int sampleRate) : sampleRate_(sampleRate), limiter_(sampleRate) {}

    int SampleRate() const { return sampleRate_; }

    // ---- control thread

    /** False when the renderer has stood still for hundreds of commands. */
    bool Push(const Command& command) { return commands_.Push(command); }
    std::uint64_t Blocks() const { return rendered_.load(std::memory_order_relaxed); }
    std::uint64_t Starvations() const { return starvations_.load(std::memory_order_relaxed); }
    /** Buffers that were rendered too late to be heard in time. */
    std::uint64_t Overruns() const { return overruns_.load(std::memory_order_relaxed); }
    /** Mean share of the sound's own time that rendering took. */
    double Load() const { return load_.load(std::memory_order_relaxed); }
    LevelMeter& Meter() { return meter_; }
    const TapRing& Tap() const { return tap_; }
    SinkSlots& Sinks() { return sinks_; }

    // ---- the rendering thread

    /** The next frames as interleaved stereo. */
    void Render(float* stereo, std::size_t frames);
    /** Carries out what has been pushed, without rendering. */
    void ApplyCommands();
    /** Off the audio callback only: waits until every playing voice has frames for its next block. */
    void WaitForSources();
    /** Likewise until every sink has room for the next block. */
    void WaitForSinks();

private:
    void Apply(const Command& command);
    void RenderBlock(float* stereo, std::size_t frames);
    void RetireDone();
    void Measure(double seconds, std::size_t frames);

    int sampleRate_;
    SpscQueue<Command, 1024> commands_;
    std::array<Voice*, 2 * kMostVoices> voices_{}; // half of them may still be fading out after they were freed
    std::size_t voiceCount_ = 0;
    Ramp volume_{1};
    Limiter limiter_;
    SinkSlots sinks_;

    // written by the rendering thread
    std::atomic<std::uint64_t> rendered_{0};
    std::atomic<std::uint64_t> starvations_{0};
    std::atomic<std::uint64_t> overruns_{0};
    std::atomic<double> load_{0};
    LevelMeter meter_;
    TapRing tap_;
};

} // namespace kalvo::audio
