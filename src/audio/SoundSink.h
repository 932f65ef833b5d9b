#pragma once

#include "audio/Handle.h"

#include <cstddef>

namespace kalvo::audio {

/** Takes what an output or a stream plays, block by block. */
class SoundSink {
public:
    SoundSink() = default;
    SoundSink(const SoundSink&) = delete;
    SoundSink& operator=(const SoundSink&) = delete;
    virtual ~SoundSink() = default;

    /** Hz; only an output of this rate is accepted. Constant. */
    virtual int SampleRate() const = 0;
    /** Interleaved stereo. Audio thread: must not wait, lock, allocate or touch a file. */
    virtual void Write(const float* stereo, std::size_t frames) noexcept = 0;
    /** Offline rendering only, on its thread: waits until so many frames find room, or never will. */
    virtual void WaitForRoom(std::size_t frames) = 0;
    /** Control thread: the stream or output is gone and has let go of the sink. */
    virtual void SourceGone() = 0;
};

/** What sinks are added to. Control thread. */
class SoundSource {
public:
    SoundSource() = default;
    SoundSource(const SoundSource&) = delete;
    SoundSource& operator=(const SoundSource&) = delete;
    virtual ~SoundSource() = default;

    /**
     * Gives the sink everything that the output plays from now on. False when there is no such output, its rate is
     * another one or it has four sinks. The sink stays when the output is opened anew with the same rate; freeing the
     * output ends it.
     */
    virtual bool AddSink(Output output, SoundSink& sink) = 0;
    /** The same for one stream, with its effects, volume and pan. Freeing the stream ends it. */
    virtual bool AddSink(Handle stream, SoundSink& sink) = 0;
    /** On return the sink is not used any more. Nothing happens when it is not in use. */
    virtual void RemoveSink(SoundSink& sink) = 0;
};

} // namespace kalvo::audio
