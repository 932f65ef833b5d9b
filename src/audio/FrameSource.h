#pragma once

#include "audio/StreamSource.h"

#include <functional>

namespace kalvo::audio {

/** What a voice plays from. The same contract as StreamSource, which is behind it except in tests. */
class FrameSource {
public:
    FrameSource() = default;
    FrameSource(const FrameSource&) = delete;
    FrameSource& operator=(const FrameSource&) = delete;
    virtual ~FrameSource() = default;

    /** A source that is open already answers None at once. */
    virtual ErrorCode AwaitOpen(std::chrono::milliseconds /*timeout*/) { return ErrorCode::None; }
    virtual const SourceFormat& Format() const = 0;
    virtual std::int64_t Frames() const { return Format().frames; }
    virtual int Bitrate() const { return Format().bitrate; }
    virtual void AwaitLength(std::chrono::milliseconds /*timeout*/) {}
    virtual void Seek(std::int64_t frame) = 0;
    virtual std::size_t Read(float* stereo, std::size_t frames) = 0;
    virtual std::size_t Available() const = 0;
    virtual bool AtEnd() const = 0;
    virtual bool WaitFor(std::size_t frames, std::chrono::milliseconds timeout) = 0;
};

/** Starts opening a stream's file; null with the reason in `error`. AwaitOpen() tells when it can be used. */
using SourceOpener = std::function<std::unique_ptr<FrameSource>(const std::string& path, ErrorCode& error)>;

/** Opens sound files; returns at once. */
std::unique_ptr<FrameSource> OpenFileSource(const std::string& path, ErrorCode& error);
/** The same for a file in memory. */
std::unique_ptr<FrameSource> OpenHeldSource(HeldFile file, ErrorCode& error);

} // namespace kalvo::audio
