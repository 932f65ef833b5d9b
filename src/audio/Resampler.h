#pragma once

#include "audio/FrameBuffer.h"

#include <cstdint>
#include <memory>

struct SRC_STATE_tag;

namespace kalvo::audio {

/**
 * Band-limited conversion of a FrameBuffer's frames to the bus rate at a ratio that may glide; free of delay, since it
 * looks ahead in the buffer. Allocates when constructed only.
 */
class Resampler {
public:
    /** Frames before the position that the filter looks back at, with a margin. */
    static constexpr std::int64_t kHistory = 64;
    /** Frames beyond the position that the filter needs at a ratio of 1 or more; 1/ratio times as many below. */
    static constexpr double kLookAhead = 24;

    Resampler();
    ~Resampler();

    /** Goes on at `position` with what the buffer holds before it as history, at ratio 1 when there is a history. */
    void Start(const FrameBuffer& buffer, std::int64_t position);
    /** Position in the source of the next output frame. */
    double Position() const { return position_; }

    /**
     * Writes `frames` frames (at most one block), the ratio (output rate / source rate) gliding to `ratio` over them.
     * What lies beyond the buffer's end sounds as silence.
     */
    void Process(const FrameBuffer& buffer, float* stereo, std::size_t frames, double ratio);

private:
    std::size_t Feed(const FrameBuffer& buffer, float* stereo, std::size_t frames, double ratio);
    void Account(std::size_t made, std::size_t asked, double ratio);

    struct Deleter {
        void operator()(SRC_STATE_tag* state) const;
    };
    std::unique_ptr<SRC_STATE_tag, Deleter> state_;
    double position_ = 0;
    double ratio_ = 0;      // of the last frame made; 0 = none yet
    std::int64_t next_ = 0; // the frame to be fed next
};

} // namespace kalvo::audio
