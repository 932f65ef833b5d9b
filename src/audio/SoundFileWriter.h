#pragma once

#include "audio/ByteSink.h"
#include "audio/EncoderLibrary.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace kalvo::audio {

/** Encodes stereo into a byte sink by libsndfile. One thread at a time. */
class SoundFileWriter {
public:
    /** rate: Hz. Null with the reason; the sink's file is removed then. */
    static std::unique_ptr<SoundFileWriter> Create(std::unique_ptr<ByteSink> bytes, const EncodeSettings& settings,
                                                   int rate, EncodeError& error);
    /** Closes the file as it is. */
    ~SoundFileWriter();
    SoundFileWriter(const SoundFileWriter&) = delete;
    SoundFileWriter& operator=(const SoundFileWriter&) = delete;

    /** Interleaved stereo; beyond -1..1 it is clipped, except in floating point. After a failure nothing is written. */
    EncodeError Write(const float* stereo, std::size_t frames);
    /** Makes the file playable as it is now; `toDisk` also after a power cut. */
    EncodeError KeepPlayable(bool toDisk);
    /** Writes what the encoder still holds, then the final header. */
    EncodeError Close();

    /** Removes the file. */
    void Discard();

    /** Size of the file. */
    std::uint64_t Bytes() const;

private:
    struct Private;
    explicit SoundFileWriter(std::unique_ptr<Private> d);
    std::unique_ptr<Private> d_;
};

/** Whether the values are ones that the format knows. */
bool Usable(const EncodeSettings& settings);

} // namespace kalvo::audio
