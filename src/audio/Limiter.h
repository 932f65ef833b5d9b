#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace kalvo::audio {

/**
 * Look-ahead peak limiter, both sides by the same gain. What stays below the ceiling passes bit by bit; nothing comes
 * out above it. The gain needed in the next kDelay frames is held at its minimum and averaged over as many frames, so
 * that it arrives smoothly and in time. Audio thread; never allocates.
 */
class Limiter {
public:
    /** Frames by which the sound comes later: 2.2 ms at 44,100 Hz. */
    static constexpr std::size_t kDelay = 96;
    /** -0.3 dBFS. */
    static constexpr float kCeiling = 0.966F;

    explicit Limiter(int sampleRate);

    /** Interleaved stereo in place. */
    void Process(float* stereo, std::size_t frames);

private:
    static constexpr std::size_t kWindow = kDelay + 1;
    static constexpr std::size_t kRing = 128; // a power of two above the window

    /** The lowest of the last kWindow needed gains, the new one included. */
    float LowestOfWindow(float needed);
    /** Follows the lowest gain down at once, up again after a hold, slowly. */
    float Release(float lowest);
    /** Mean of the last kWindow gains; exactly 1 when all of them are. */
    float Smooth(float gain);

    struct Candidate {
        std::uint64_t frame = 0;
        float gain = 1;
    };

    double releaseFactor_;
    std::uint64_t holdFrames_;
    std::array<float, 2 * kRing> delayed_{};
    std::array<Candidate, kRing> candidates_{}; // gains rising from head to tail, frames too
    std::uint64_t candidatesHead_ = 0;
    std::uint64_t candidatesTail_ = 0;
    std::array<float, kRing> gains_;
    double gainSum_ = double(kWindow);
    std::size_t reduced_ = 0; // how many of the window's gains are below 1
    double envelope_ = 1;
    std::uint64_t holdLeft_ = 0;
    std::uint64_t frame_ = kRing;
};

} // namespace kalvo::audio
