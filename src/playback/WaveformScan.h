#pragma once

#include "audio/Decoder.h"
#include "audio/ReadAheadFile.h"
#include "base/Waveform.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <vector>

namespace kalvo {

/**
 * Measures a title's waveform with a decoder of its own, a piece at a time, so that what is known can be shown early
 * and a title that has gone is left at once.
 *
 * Threads: Cancel() from any thread; everything else from the one that works.
 */
class WaveformScan {
public:
    enum class State : unsigned char {
        Running,
        Complete,
        Broken ///< no sound, cancelled, or it ends before its end: what is known may be shown but not be kept
    };

    /** Starts opening. Throws std::system_error when there can be no further thread. */
    explicit WaveformScan(const QString& path);
    ~WaveformScan();
    WaveformScan(const WaveformScan&) = delete;
    WaveformScan& operator=(const WaveformScan&) = delete;

    /** Decodes half a minute of sound; waits for the file. */
    State Step();
    /** Makes a Step() that waits, and every later one, end at once. */
    void Cancel() noexcept;

    const Waveform& Result() const { return waveform_; }

private:
    State Open();
    void Take(const float* stereo, std::size_t frames);
    void EndColumn();

    audio::ReadAheadFile file_;
    std::unique_ptr<audio::Decoder> decoder_;
    std::vector<float> piece_;
    Waveform waveform_;
    std::int64_t frame_ = 0;     ///< the next one
    std::int64_t columnEnd_ = 0; ///< the frame at which the column in hand ends
    std::int64_t frames_ = 0;    ///< in the column in hand
    float peak_ = 0;
    double squares_ = 0;
};

} // namespace kalvo
