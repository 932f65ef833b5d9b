#include "audio/OpusDecoder.h"

#include "audio/ReadAheadFile.h"

#include <algorithm>
#include <opusfile.h>

namespace kalvo::audio {

namespace {

/** Frames decoded before the place of a seek: the codec's state needs half a second until no difference is left. */
constexpr std::int64_t kPreRoll = 24000;

struct FileDeleter {
    void operator()(OggOpusFile* file) const { op_free(file); }
};

int ReadBytes(void* file, unsigned char* buffer, int bytes) {
    return static_cast<int>(static_cast<ReadAheadFile*>(file)->Read(buffer, static_cast<std::size_t>(bytes)));
}

int SeekBytes(void* file, opus_int64 offset, int whence) {
    return static_cast<ReadAheadFile*>(file)->Seek(offset, whence) < 0 ? -1 : 0;
}

opus_int64 TellBytes(void* file) {
    return static_cast<ReadAheadFile*>(file)->Tell();
}

} // namespace

struct OpusDecoder::Stream {
    std::unique_ptr<OggOpusFile, FileDeleter> file;
};

OpusDecoder::OpusDecoder() : stream_(std::make_unique<Stream>()) {}
OpusDecoder::~OpusDecoder() = default;

std::unique_ptr<OpusDecoder> OpusDecoder::Open(ReadAheadFile& file) {
    if (!file.Seek(0))
        return nullptr;
    const OpusFileCallbacks callbacks{&ReadBytes, &SeekBytes, &TellBytes, nullptr};
    std::unique_ptr<OpusDecoder> decoder(new OpusDecoder);
    decoder->stream_->file.reset(op_open_callbacks(&file, &callbacks, nullptr, 0, nullptr));
    OggOpusFile* const opus = decoder->stream_->file.get();
    if (opus == nullptr)
        return nullptr;
    SourceFormat& format = decoder->format_;
    format.sampleRate = 48000;
    format.channels = op_channel_count(opus, 0);
    format.frames = op_pcm_total(opus, -1);
    format.bitrate = std::max(0, (op_bitrate(opus, -1) + 500) / 1000);
    format.variableRate = true;
    return format.frames > 0 ? std::move(decoder) : nullptr;
}

bool OpusDecoder::Seek(std::int64_t frame) {
    OggOpusFile* const file = stream_->file.get();
    if (op_pcm_seek(file, std::max<std::int64_t>(0, frame - kPreRoll)) != 0)
        return false;
    float dropped[1024 * 2];
    int count = 1;
    while (count != 0 && op_pcm_tell(file) < frame) {
        const std::int64_t wanted = std::min<std::int64_t>(1024, frame - op_pcm_tell(file));
        count = op_read_float_stereo(file, dropped, static_cast<int>(wanted * 2));
        if (count < 0 && count != OP_HOLE)
            return false;
    }
    return true;
}

ReadResult OpusDecoder::Read(float* stereo, std::size_t frames, std::size_t& got) {
    constexpr std::size_t kMost = 1U << 20;
    got = 0;
    int count = OP_HOLE;
    while (count == OP_HOLE)
        count = op_read_float_stereo(stream_->file.get(), stereo, static_cast<int>(std::min(frames, kMost) * 2));
    if (count < 0)
        return ReadResult::Broken;
    got = static_cast<std::size_t>(count);
    return count == 0 ? ReadResult::End : ReadResult::Data;
}

} // namespace kalvo::audio
