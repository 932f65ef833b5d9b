#pragma once

#include "audio/ByteSink.h"
#include "audio/EncoderLibrary.h"
#include "audio/SoundSink.h"

#include <chrono>
#include <memory>
#include <string>

namespace kalvo::audio {

/**
 * One recording: audio thread → ring (twelve seconds at 44100 Hz) → writer thread → file.
 *
 * The writer looks into the ring every 20 ms, encodes what is there, renews the header every 250 ms and has everything
 * put on the disk every five seconds. When the ring is full, frames are lost and counted. After an error the ring is
 * emptied without writing, so that nothing waits for it.
 *
 * Threads: Write() on the audio thread, everything else on the control thread. What both share with the writer lives as
 * long as the last of them: a disk that hangs for good keeps its thread and nothing else.
 */
class Encoder final : public SoundSink {
public:
    static constexpr std::size_t kRingFrames = 524288;

    /** Creates the file; waits two seconds at most. Null with the reason; then no file stays. settings: Usable(). */
    static std::unique_ptr<Encoder> Start(const SinkOpener& opener, const std::string& path,
                                          const EncodeSettings& settings, int sampleRate, EncodeError& error);
    /** Does not wait: call Finish() and AwaitEnd() before. */
    ~Encoder() override;

    int SampleRate() const override { return sampleRate_; }
    void Write(const float* stereo, std::size_t frames) noexcept override;
    void WaitForRoom(std::size_t frames) override;
    void SourceGone() override;

    bool IsSourceGone() const { return sourceGone_; }
    /** No frames come any more: the writer empties the ring and closes the file. */
    void Finish();
    /** Ends it and removes the file. */
    void Discard();
    /** False when the file is not closed within the time. */
    bool AwaitEnd(std::chrono::milliseconds timeout);
    EncodeState State() const;

private:
    class Writer;
    Encoder(std::shared_ptr<Writer> writer, int sampleRate);

    std::shared_ptr<Writer> writer_;
    int sampleRate_;
    bool sourceGone_ = false;
};

} // namespace kalvo::audio
