#pragma once

#include "audio/Decoder.h"

#include <vector>

namespace kalvo::audio {

class ReadAheadFile;

/**
 * Vorbis in OGG. A chained file's links may differ in rate and channels: all are brought to the first one's rate, and
 * each delivers exactly the number of frames that Format() counts for it.
 */
class VorbisDecoder final : public Decoder {
public:
    /** Null when the bytes are not Vorbis. The file must outlive the decoder. */
    static std::unique_ptr<VorbisDecoder> Open(ReadAheadFile& file);
    ~VorbisDecoder() override;

    const SourceFormat& Format() const override { return format_; }
    bool Seek(std::int64_t frame) override;
    ReadResult Read(float* stereo, std::size_t frames, std::size_t& got) override;

private:
    struct Link {
        std::int64_t rawStart; ///< in frames at the links' own rates
        std::int64_t start;    ///< in frames at the first link's rate
        std::int64_t frames;   ///< likewise
        int rate;              ///< Hz
        int channels;
    };

    VorbisDecoder();
    bool ListLinks();
    void EnterLink(std::size_t index, std::int64_t offset);
    void LeaveLink();
    ReadResult Fetch();
    void Convert(const float* stereo, std::size_t frames, bool last);

    struct Stream;
    std::unique_ptr<Stream> stream_;
    SourceFormat format_;
    std::vector<Link> links_;
    std::size_t link_ = 0;       // the one being read
    std::int64_t owed_ = 0;      // frames that the link has still to give, when it is being converted
    std::vector<float> ready_;   // decoded stereo at the first link's rate
    std::size_t readyStart_ = 0; // samples of it that have been taken
    std::vector<float> mixed_;   // the last piece, mixed to stereo at its own rate
};

} // namespace kalvo::audio
