#pragma once

#include "audio/AudioLibrary.h"
#include "audio/ByteSource.h"
#include "audio/Decoder.h"

#include <chrono>
#include <memory>

namespace kalvo::audio {

/**
 * One file being played: its bytes are read ahead, its frames decoded ahead into a ring, both off the audio thread.
 *
 * Threads: Open, Seek and the destructor belong to the control thread; Read, Available and AtEnd to the one thread that
 * renders (the audio callback: none of the three locks, allocates or waits); reading and decoding have threads of their
 * own inside.
 */
class StreamSource {
public:
    /** Starts opening and reading ahead, returns at once. Null when there can be no further thread. */
    static std::unique_ptr<StreamSource> Begin(std::unique_ptr<ByteSource> bytes);
    /** Waits for the opening: None when the file plays, Timeout while it is still to come, else why it does not. */
    ErrorCode AwaitOpen(std::chrono::milliseconds timeout);

    /**
     * Opens and starts reading ahead. Waits at most `timeout` for the file; a file that comes later is closed unused.
     * Null on failure with the reason in `error`.
     */
    static std::unique_ptr<StreamSource> Open(const std::string& path, std::chrono::milliseconds timeout,
                                              ErrorCode& error);
    /** The same for bytes from elsewhere. */
    static std::unique_ptr<StreamSource> Open(std::unique_ptr<ByteSource> bytes, std::chrono::milliseconds timeout,
                                              ErrorCode& error);
    /** Joins its threads unless the file system hangs; then they end by themselves. */
    ~StreamSource();

    // What follows needs an open file.

    /** As found when the file was opened. */
    const SourceFormat& Format() const;
    /** Length in frames and average rate in kbit/s: of a long file an estimate until it has been measured. */
    std::int64_t Frames() const;
    int Bitrate() const;
    /** Waits until the file has been measured, where that is under way. */
    void AwaitLength(std::chrono::milliseconds timeout);

    /** Drops what is decoded and goes on at this frame; returns at once. */
    void Seek(std::int64_t frame);

    /** Takes up to `frames` frames of interleaved stereo; returns how many there were. */
    std::size_t Read(float* stereo, std::size_t frames);
    /** Frames that Read() would deliver now. 0 while a seek is under way. */
    std::size_t Available() const;
    /** True when every frame has been taken and the decoder has nothing more. A broken rest counts as the end. */
    bool AtEnd() const;
    /** Off the audio thread: waits until `frames` are available or the end is near; false after the timeout. */
    bool WaitFor(std::size_t frames, std::chrono::milliseconds timeout);

private:
    StreamSource();
    struct Shared;
    std::unique_ptr<Shared> shared_;
};

} // namespace kalvo::audio
