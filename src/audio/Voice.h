#pragma once

#include "audio/Command.h"
#include "audio/Equaliser.h"
#include "audio/LevelMeter.h"
#include "audio/Ramp.h"
#include "audio/Reverb.h"
#include "audio/SinkSlots.h"
#include "audio/SourceReader.h"
#include "audio/TapRing.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <memory>

namespace kalvo::audio {

/**
 * One stream inside the mixer: source → speed → equaliser → reverb → fade, volume, gain, pan → bus. Owned by the
 * control thread; while it is on a bus, Apply() and Render() belong to the audio thread.
 *
 * Starting at the file's first frame needs no fade and gets none, so that the first sample is exact; every other start
 * and stop, a seek and a starvation fade over 256 frames.
 */
class Voice {
public:
    Voice(std::unique_ptr<FrameSource> source, int busRate);

    // ---- control thread

    SourceReader& Reader() { return reader_; }
    const SourceReader& Reader() const { return reader_; }
    /** Creates the reverberation (once); the audio thread gets it by a command. */
    Reverb* MakeReverb();
    /** Number of the last start that has been played to the end; 0 = none. */
    std::uint64_t EndedStart() const { return endedStart_.load(std::memory_order_acquire); }
    /** How many ends and slides have come to their end so far. */
    std::uint32_t Ends() const { return ends_.load(std::memory_order_acquire); }
    std::uint32_t SlideEnds() const { return slideEnds_.load(std::memory_order_acquire); }
    /** Number of the last slide that has arrived or was ended by other values. */
    std::uint32_t FinishedSlide() const { return finishedSlide_.load(std::memory_order_acquire); }
    /** The values as they are now, in the middle of a slide, too. */
    Attributes Current() const;
    /** The audio thread will never touch the voice again. */
    bool Retired() const { return retired_.load(std::memory_order_acquire); }
    LevelMeter& Meter() { return meter_; }
    const TapRing& Tap() const { return tap_; }
    SinkSlots& Sinks() { return sinks_; }

    // ---- audio thread

    void Apply(const Command& command);
    /** Adds at most one block to the bus; returns how often it starved in it (0 or 1). */
    unsigned Render(float* bus, std::size_t frames);
    bool WantsToPlay() const { return wanted_; }
    /** Frames that its source should have ready for the next block. */
    std::size_t FramesWanted() const { return reader_.FramesWanted(FastestFrequency()); }
    /** Freed and faded out. */
    bool Done() const { return freeing_ && !running_; }
    void Retire() { retired_.store(true, std::memory_order_release); }

private:
    /** Without a click when it sounds. */
    void Move(Ramp& ramp, double value) const;
    void ApplySet(const Command& command);
    void ApplySlide(const Command& command);
    double FastestFrequency() const { return std::max(frequency_.Value(), frequency_.Target()); }
    bool GoingOn() const { return wanted_ && !freeing_ && !reader_.SeekPending(); }
    void TryStart();
    bool RenderPiece(float* bus, std::size_t frames, std::size_t& done);
    void SteerFade();
    void Mix(float* bus, const float* sound, std::size_t frames);
    void PassTime(std::size_t frames);
    void CountSlide(std::size_t frames);
    void FinishAtEnd();
    void PublishAttributes();

    SourceReader reader_;
    std::unique_ptr<Reverb> ownedReverb_; // control thread; reverb_ is the audio thread's view of it

    bool wanted_ = false;   // is to sound
    bool running_ = false;  // sounds, fades included
    bool starving_ = false; // fades out or waits because the source did not keep up
    bool freeing_ = false;
    std::uint64_t start_ = 0; // number of the last Play
    Ramp fade_{0};
    Ramp volume_{1};
    Ramp gain_{1};
    Ramp pan_{0};
    Ramp frequency_; // Hz
    std::uint64_t slideLeft_ = 0;
    std::uint32_t slide_ = 0; // its number
    unsigned sliding_ = 0;    // attributes that the running slide moves, one bit each
    Equaliser equaliser_;
    Reverb* reverb_ = nullptr;
    std::array<float, kBlockFrames * 2> sound_{};

    // written by the audio thread
    std::atomic<std::uint64_t> endedStart_{0};
    std::atomic<std::uint32_t> ends_{0};
    std::atomic<std::uint32_t> slideEnds_{0};
    std::atomic<std::uint32_t> finishedSlide_{0};
    std::atomic<double> currentFrequency_;
    std::atomic<double> currentVolume_{1};
    std::atomic<double> currentPan_{0};
    std::atomic<bool> retired_{false};
    LevelMeter meter_;
    TapRing tap_;
    SinkSlots sinks_;
};

} // namespace kalvo::audio
