#pragma once

#include "audio/FrameBuffer.h"
#include "audio/FrameSource.h"
#include "audio/Gate.h"
#include "audio/Resampler.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace kalvo::audio {

/**
 * Takes a source's frames at the playing speed and keeps count of the position.
 *
 * A seek: the control thread closes the gate, moves the source, raises the generation and opens the gate again. The
 * audio thread, which never waits, goes on from the frames that it holds, fades them out and then calls ApplySeek():
 * from there on it reads the new place. So no frame from behind the jump is ever heard in front of it.
 *
 * A file at the bus's own rate goes through bit by bit. With the first other speed the reader crosses over, within 256
 * frames and aligned in time, to the resampler and stays there until the next seek.
 *
 * Threads: Source, Seek and Position belong to the control thread, the others to the audio thread.
 */
class SourceReader {
public:
    /** A playing speed of more than this times the bus rate is not possible. */
    static constexpr int kMostSpeed = 8;
    /** Hz. */
    static constexpr int kLowestFrequency = 1000;

    SourceReader(std::unique_ptr<FrameSource> source, int busRate);

    FrameSource& Source() { return *source_; }
    const FrameSource& Source() const { return *source_; }
    void Seek(std::int64_t frame);
    /** Frames taken from the start on; the target while a seek is under way. */
    std::int64_t Position() const;

    bool SeekPending() const {
        return generation_.load(std::memory_order_acquire) != applied_.load(std::memory_order_relaxed);
    }
    /** Drops what is held; the next frames come from the new place. */
    void ApplySeek();
    /** Enough is there to start; after a starvation more is wanted. True at the end, too. */
    bool Ready(double frequency, bool afterStarvation);
    /** Takes over what the source has; false when the frames in hand will not last beyond the next fade. */
    bool TopUp(double frequency);
    /** Writes up to `frames` frames (one block at most); fewer when there are no more. The speed glides to `frequency`.
     */
    std::size_t Read(float* stereo, std::size_t frames, double frequency);
    /** All of the source has been read. */
    bool AtEnd() const { return ended_ && Remaining() <= kLeast; }
    bool AtStart() const { return position_ <= 0; }

    /** Frames that the source should have ready so that Read() of a block succeeds. */
    std::size_t FramesWanted(double frequency) const;

private:
    enum class Path { Untouched, Direct, Crossing, Resampled };

    /** Less than this of a frame is rounding. */
    static constexpr double kLeast = 1e-4;

    double Remaining() const { return double(buffer_.End()) - position_; }
    std::size_t Playable(std::size_t frames, double ratio) const;
    void ChoosePath(double ratio);
    void CopyDirect(float* stereo, std::size_t frames) const;
    void CrossOver(float* stereo, std::size_t frames);
    void Publish();

    std::unique_ptr<FrameSource> source_;
    double busRate_;
    FrameBuffer buffer_;
    Resampler resampler_;
    Path path_ = Path::Untouched;
    double position_ = 0;
    std::size_t crossed_ = 0; // frames of the cross-over done
    bool ended_ = false;      // the source has nothing beyond the buffer

    Gate gate_;                                // closed while the control thread moves the source
    std::atomic<std::uint32_t> generation_{0}; // of the last seek asked for; control thread
    std::atomic<std::int64_t> target_{0};      // of that seek; control thread
    std::atomic<std::uint32_t> applied_{0};    // of the last seek carried out; audio thread
    std::atomic<std::int64_t> published_{0};   // position_ in whole frames; audio thread
};

} // namespace kalvo::audio
