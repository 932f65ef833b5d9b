#pragma once

#include "audio/Decoder.h"

namespace kalvo::audio {

class ReadAheadFile;

/** Opus in OGG, always at 48 kHz. */
class OpusDecoder final : public Decoder {
public:
    /** Null when the bytes are not Opus. The file must outlive the decoder. */
    static std::unique_ptr<OpusDecoder> Open(ReadAheadFile& file);
    ~OpusDecoder() override;

    const SourceFormat& Format() const override { return format_; }
    bool Seek(std::int64_t frame) override;
    ReadResult Read(float* stereo, std::size_t frames, std::size_t& got) override;

private:
    OpusDecoder();

    struct Stream;
    std::unique_ptr<Stream> stream_;
    SourceFormat format_;
};

} // namespace kalvo::audio
