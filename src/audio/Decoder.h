#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace kalvo::audio {

/** What a file holds, as found when it was opened. */
struct SourceFormat {
    int sampleRate = 0;      ///< Hz
    int channels = 0;        ///< of the file; Read() delivers stereo always
    std::int64_t frames = 0; ///< exact length in frames
    int bitrate = 0;         ///< kbit/s, the average; 0 = unknown
    bool variableRate = false;
    bool estimated = false;      ///< length and rate are still a guess
    std::int64_t toldFrames = 0; ///< what the file's own header says, whatever is there; 0: nothing
};

/** Whether a length is worth reading a long file to its end before anything else. */
enum class LengthNeed : std::uint8_t { Exact, Soon };

enum class ReadResult : std::uint8_t { Data, End, Broken };

/**
 * Turns one open file into frames. Used by one thread at a time (the voice's decoder thread).
 * Frames are interleaved stereo floats, -1..1 (lossy formats may exceed it a little); mono comes on both sides.
 */
class Decoder {
public:
    Decoder() = default;
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;
    virtual ~Decoder() = default;

    virtual const SourceFormat& Format() const = 0;
    /** The next Read() starts at this frame, exactly. False when the file cannot be positioned. */
    virtual bool Seek(std::int64_t frame) = 0;
    /** Up to `frames` frames; `got` is 0 unless the result is Data. Damaged pieces inside a file are passed over. */
    virtual ReadResult Read(float* stereo, std::size_t frames, std::size_t& got) = 0;
};

} // namespace kalvo::audio
