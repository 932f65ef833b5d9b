#pragma once

#include "audio/Decoder.h"

namespace kalvo::audio {

class ReadAheadFile;

/**
 * MPEG audio, layers I to III. The whole file is scanned once when it is opened: only that makes its length exact. A
 * long file is not when its length is wanted soon: then header or rate tell it, and the format is marked as estimated.
 */
class Mp3Decoder final : public Decoder {
public:
    /**
     * start: where the sound begins, behind tags and padding. The file must outlive the decoder.
     * Null when the bytes are not MPEG audio; a stray sync pattern does not make them so.
     */
    static std::unique_ptr<Mp3Decoder> Open(ReadAheadFile& file, std::int64_t start,
                                            LengthNeed need = LengthNeed::Exact);
    ~Mp3Decoder() override;

    const SourceFormat& Format() const override { return format_; }
    bool Seek(std::int64_t frame) override;
    ReadResult Read(float* stereo, std::size_t frames, std::size_t& got) override;

private:
    Mp3Decoder();
    bool Prepare(std::int64_t size, LengthNeed need);
    bool FixOutputFormat();
    bool HasLengthHeader();
    bool Scan(std::int64_t size);
    bool Estimate(std::int64_t size);
    bool FindBitrate();

    struct Stream;
    std::unique_ptr<Stream> stream_;
    SourceFormat format_;
};

} // namespace kalvo::audio
