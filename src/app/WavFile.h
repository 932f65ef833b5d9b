#pragma once

#include <QString>

#include <cstddef>
#include <memory>

namespace kalvo {

/** A stereo WAV file of 16 bits at 44100 Hz, being written. */
class WavFile {
public:
    /** Replaces an existing file only when it is finished: it grows beside it. */
    explicit WavFile(const QString& path);
    ~WavFile();
    WavFile(const WavFile&) = delete;
    WavFile& operator=(const WavFile&) = delete;

    bool IsOpen() const;
    /** Interleaved stereo, -1..1. */
    bool Write(const float* stereo, std::size_t frames);
    /** Puts the file in its place. False when something could not be written; then nothing is replaced. */
    bool Finish();

private:
    struct Private;
    std::unique_ptr<Private> d_;
};

} // namespace kalvo
