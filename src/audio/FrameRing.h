#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace kalvo::audio {

/**
 * Ring of interleaved stereo frames between one producer and one consumer.
 *
 * Threads: Read() belongs to the consumer, which is never made to wait; Writable(), Commit() and Clear() to the
 * producer; the counts may be asked for by any thread.
 */
class FrameRing {
public:
    /** frames: the capacity, a power of two. */
    explicit FrameRing(std::size_t frames);

    std::size_t Available() const noexcept;
    std::size_t Free() const noexcept { return capacity_ - Available(); }

    /** Takes up to `frames` frames; returns how many there were. */
    std::size_t Read(float* stereo, std::size_t frames) noexcept;

    /** A place for up to `frames` further frames (in and out), to be made valid by Commit(). */
    float* Writable(std::size_t& frames) noexcept;
    void Commit(std::size_t frames) noexcept;
    /** Drops every frame. Waits out a Read() that is under way: at most the copying of one ring. */
    void Clear() noexcept;

private:
    std::size_t capacity_;
    std::vector<float> samples_;            // each frame belongs to the side that the counters give it to
    std::atomic<std::uint64_t> written_{0}; // frames ever committed; stored by the producer
    std::atomic<std::uint64_t> taken_{0};   // frames ever taken; stored by the consumer, by the producer in Clear()
    std::atomic<bool> reading_{false};      // stored by the consumer
    std::atomic<bool> clearing_{false};     // stored by the producer
};

} // namespace kalvo::audio
