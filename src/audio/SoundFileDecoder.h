#pragma once

#include "audio/Decoder.h"

namespace kalvo::audio {

class ReadAheadFile;

/** WAV in all sample formats of libsndfile. */
class SoundFileDecoder final : public Decoder {
public:
    /** Null when the bytes are no such file. The file must outlive the decoder. */
    static std::unique_ptr<SoundFileDecoder> Open(ReadAheadFile& file);
    ~SoundFileDecoder() override;

    const SourceFormat& Format() const override { return format_; }
    bool Seek(std::int64_t frame) override;
    ReadResult Read(float* stereo, std::size_t frames, std::size_t& got) override;

private:
    SoundFileDecoder();

    struct Stream;
    std::unique_ptr<Stream> stream_;
    SourceFormat format_;
};

} // namespace kalvo::audio
