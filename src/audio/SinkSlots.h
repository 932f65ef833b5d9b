#pragma once

#include "audio/Gate.h"
#include "audio/SoundSink.h"

#include <array>
#include <atomic>
#include <cstddef>

namespace kalvo::audio {

/**
 * The sinks of one bus or voice. Each has a gate of its own, so that adding one never costs another a block.
 *
 * Threads: Write() belongs to the audio thread and never waits; WaitForRoom() to an offline caller; everything else to
 * the control thread. A sink is the control thread's to add and to remove; the audio thread uses it inside its gate.
 */
class SinkSlots {
public:
    static constexpr std::size_t kMost = 4;

    /** False when all places are taken. */
    bool Add(SoundSink& sink);
    /** On return the audio thread is done with the sink. Nothing happens when it is none of these. */
    void Remove(const SoundSink& sink);
    /** Lets go of all and tells them that their source is gone. */
    void Release();

    void Write(const float* stereo, std::size_t frames) noexcept;
    void WaitForRoom(std::size_t frames);

private:
    struct Slot {
        Gate gate;
        SoundSink* sink = nullptr;
    };

    void Put(Slot& slot, SoundSink* sink);

    std::array<Slot, kMost> slots_;
    std::atomic<unsigned> used_{0}; // written by the control thread; spares the audio thread the gates when 0
};

} // namespace kalvo::audio
