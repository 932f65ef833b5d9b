#pragma once

#include "audio/AudioLibrary.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstddef>

namespace kalvo::audio {

/** Peaks between two looks: written by the audio thread, taken by the control thread. */
class LevelMeter {
public:
    void Write(const float* stereo, std::size_t frames) {
        float left = 0;
        float right = 0;
        for (std::size_t i = 0; i < frames; ++i) {
            left = std::max(left, std::fabs(stereo[2 * i]));
            right = std::max(right, std::fabs(stereo[2 * i + 1]));
        }
        Raise(left_, left);
        Raise(right_, right);
    }
    /** The peaks since the last call, 0..1. */
    Levels Take() {
        return {std::min(1.0F, left_.exchange(0, std::memory_order_relaxed)),
                std::min(1.0F, right_.exchange(0, std::memory_order_relaxed))};
    }

private:
    static void Raise(std::atomic<float>& peak, float value) {
        if (value > peak.load(std::memory_order_relaxed))
            peak.store(value, std::memory_order_relaxed);
    }

    std::atomic<float> left_{0};
    std::atomic<float> right_{0};
};

} // namespace kalvo::audio
