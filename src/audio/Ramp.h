#pragma once

#include "audio/BlockSize.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace kalvo::audio {

/** Steps 1..256 of a raised cosine from 0 to 1; a straight ramp of this length would leave audible splatter. */
const std::array<double, kBlockFrames>& RaisedCosine();

/** A value that moves to its target frame by frame. Used by one thread. */
class Ramp {
public:
    explicit Ramp(double value) : value_(value), start_(value), target_(value) {}

    double Value() const { return value_; }
    double Target() const { return target_; }
    bool Moving() const { return left_ > 0; }
    /** Frames until the target is reached. */
    std::uint64_t FramesLeft() const { return left_; }

    /** At once. */
    void Set(double value);
    /** Raised cosine over 256 frames from the present value; nothing new when it is already on its way there. */
    void GlideTo(double target);
    /** A straight line over `frames` frames. */
    void SlideTo(double target, std::uint64_t frames);

    /** The value for the next frame. */
    double Next() {
        if (left_ > 0)
            Step();
        return value_;
    }
    /** As many calls of Next(), in one. */
    void Advance(std::uint64_t frames);

private:
    void Step();
    void Place();

    double value_;
    double start_;
    double target_;
    std::uint64_t length_ = 0;
    std::uint64_t left_ = 0;
    bool curved_ = false;
    const std::array<double, kBlockFrames>* curve_ = &RaisedCosine();
};

} // namespace kalvo::audio
