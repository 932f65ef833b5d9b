#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>

namespace kalvo::audio {

/**
 * The last frames that sounded. The audio thread writes without ever waiting; the control thread copies the newest
 * ones. The ring is twice as long as the longest copy, so that a copy is not overtaken.
 */
class TapRing {
public:
    static constexpr std::size_t kFrames = 8192;
    static constexpr std::size_t kMostRead = kFrames / 2;

    void Write(const float* stereo, std::size_t frames) {
        std::size_t place = written_.load(std::memory_order_relaxed);
        for (std::size_t i = 0; i < frames; ++i, ++place) {
            samples_[2 * (place % kFrames)].store(stereo[2 * i], std::memory_order_relaxed);
            samples_[2 * (place % kFrames) + 1].store(stereo[2 * i + 1], std::memory_order_relaxed);
        }
        written_.store(place, std::memory_order_release);
    }
    /** The newest `frames` frames (at most kMostRead), the newest last; silence before the first one ever written. */
    void ReadNewest(float* stereo, std::size_t frames) const {
        const std::size_t end = written_.load(std::memory_order_acquire) + kFrames;
        for (std::size_t i = 0; i < frames; ++i) {
            const std::size_t place = (end - frames + i) % kFrames;
            stereo[2 * i] = samples_[2 * place].load(std::memory_order_relaxed);
            stereo[2 * i + 1] = samples_[2 * place + 1].load(std::memory_order_relaxed);
        }
    }

private:
    std::array<std::atomic<float>, 2 * kFrames> samples_{};
    std::atomic<std::size_t> written_{0};
};

} // namespace kalvo::audio
