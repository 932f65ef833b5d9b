#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace kalvo::audio {

/**
 * The frames around a voice's playing position, numbered as in the file and contiguous in memory. Allocates when
 * constructed only.
 */
class FrameBuffer {
public:
    explicit FrameBuffer(std::size_t capacityFrames) : samples_(capacityFrames * 2) {}

    std::int64_t Begin() const { return first_; }
    std::int64_t End() const { return first_ + std::int64_t(size_); }
    /** Interleaved stereo; frame must lie in [Begin, End]. */
    const float* At(std::int64_t frame) const { return samples_.data() + (start_ + std::size_t(frame - first_)) * 2; }

    /** Empty, with the next frame numbered so. */
    void Reset(std::int64_t frame) {
        first_ = frame;
        start_ = size_ = 0;
    }
    void DropBefore(std::int64_t frame) {
        if (frame <= first_)
            return;
        const std::size_t dropped = std::min(size_, std::size_t(frame - first_));
        first_ += std::int64_t(dropped);
        start_ += dropped;
        size_ -= dropped;
    }

    /** How many frames the capacity leaves room for. */
    std::size_t Room() const { return samples_.size() / 2 - size_; }
    /** Where `frames` (at most Room()) new frames are to be written; Grow() makes them part of the buffer. */
    float* Tail(std::size_t frames) {
        if ((start_ + size_ + frames) * 2 > samples_.size()) {
            std::copy(samples_.begin() + std::ptrdiff_t(start_ * 2),
                      samples_.begin() + std::ptrdiff_t((start_ + size_) * 2), samples_.begin());
            start_ = 0;
        }
        return samples_.data() + (start_ + size_) * 2;
    }
    void Grow(std::size_t frames) { size_ += frames; }

private:
    std::vector<float> samples_;
    std::int64_t first_ = 0; // number of the oldest frame held
    std::size_t start_ = 0;  // its place, in frames
    std::size_t size_ = 0;
};

} // namespace kalvo::audio
