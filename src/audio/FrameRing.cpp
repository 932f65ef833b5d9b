#include "audio/FrameRing.h"

#include <algorithm>
#include <thread>

namespace kalvo::audio {

FrameRing::FrameRing(std::size_t frames) : capacity_(frames), samples_(frames * 2) {}

std::size_t FrameRing::Available() const noexcept {
    const std::uint64_t taken = taken_.load(std::memory_order_acquire);
    const std::uint64_t written = written_.load(std::memory_order_acquire);
    // A third thread may see a younger `written`.
    return std::min(static_cast<std::size_t>(written - taken), capacity_);
}

std::size_t FrameRing::Read(float* stereo, std::size_t frames) noexcept {
    // Either Clear() sees reading_ and waits, or this sees clearing_ and goes: both sides store first, then look.
    reading_.store(true, std::memory_order_seq_cst);
    std::size_t got = 0;
    if (!clearing_.load(std::memory_order_seq_cst)) {
        const std::uint64_t taken = taken_.load(std::memory_order_acquire);
        got = std::min(frames, static_cast<std::size_t>(written_.load(std::memory_order_acquire) - taken));
        const std::size_t start = static_cast<std::size_t>(taken) & (capacity_ - 1);
        const std::size_t straight = std::min(got, capacity_ - start);
        std::copy_n(samples_.data() + start * 2, straight * 2, stereo);
        std::copy_n(samples_.data(), (got - straight) * 2, stereo + straight * 2);
        taken_.store(taken + got, std::memory_order_release);
    }
    reading_.store(false, std::memory_order_release);
    return got;
}

float* FrameRing::Writable(std::size_t& frames) noexcept {
    const std::size_t start = static_cast<std::size_t>(written_.load(std::memory_order_relaxed)) & (capacity_ - 1);
    frames = std::min({frames, Free(), capacity_ - start});
    return samples_.data() + start * 2;
}

void FrameRing::Commit(std::size_t frames) noexcept {
    written_.store(written_.load(std::memory_order_relaxed) + frames, std::memory_order_release);
}

void FrameRing::Clear() noexcept {
    clearing_.store(true, std::memory_order_seq_cst);
    while (reading_.load(std::memory_order_seq_cst))
        std::this_thread::yield();
    taken_.store(written_.load(std::memory_order_relaxed), std::memory_order_release);
    clearing_.store(false, std::memory_order_seq_cst);
}

} // namespace kalvo::audio
