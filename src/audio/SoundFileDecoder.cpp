#include "audio/SoundFileDecoder.h"

#include "audio/ReadAheadFile.h"
#include "audio/StereoMix.h"

#include <algorithm>
#include <sndfile.h>
#include <vector>

namespace kalvo::audio {

namespace {

constexpr std::size_t kPieceFrames = 1024;

struct FileDeleter {
    void operator()(SNDFILE* file) const { sf_close(file); }
};

ReadAheadFile& File(void* user) {
    return *static_cast<ReadAheadFile*>(user);
}

sf_count_t FileLength(void* user) {
    return File(user).Size();
}
sf_count_t SeekBytes(sf_count_t offset, int whence, void* user) {
    return File(user).Seek(offset, whence);
}
sf_count_t TellBytes(void* user) {
    return File(user).Tell();
}
sf_count_t WriteBytes(const void* /*buffer*/, sf_count_t /*bytes*/, void* /*user*/) {
    return 0;
}
sf_count_t ReadBytes(void* buffer, sf_count_t bytes, void* user) {
    return std::max<std::int64_t>(0, File(user).Read(buffer, static_cast<std::size_t>(bytes)));
}

} // namespace

struct SoundFileDecoder::Stream {
    Stream(ReadAheadFile& bytes, SNDFILE* opened, int channels)
        : source(bytes),
          file(opened),
          mix(channels, StereoMix::Order::Wave),
          samples(kPieceFrames * static_cast<std::size_t>(channels)) {}

    ReadAheadFile& source;
    std::unique_ptr<SNDFILE, FileDeleter> file;
    StereoMix mix;
    std::vector<float> samples;
};

SoundFileDecoder::SoundFileDecoder() = default;
SoundFileDecoder::~SoundFileDecoder() = default;

std::unique_ptr<SoundFileDecoder> SoundFileDecoder::Open(ReadAheadFile& file) {
    if (!file.Seek(0))
        return nullptr;
    SF_VIRTUAL_IO callbacks{&FileLength, &SeekBytes, &ReadBytes, &WriteBytes, &TellBytes};
    SF_INFO info{};
    std::unique_ptr<SNDFILE, FileDeleter> opened(sf_open_virtual(&callbacks, SFM_READ, &info, &file));
    if (opened == nullptr || info.frames <= 0 || info.channels <= 0 || info.samplerate <= 0)
        return nullptr;
    std::unique_ptr<SoundFileDecoder> decoder(new SoundFileDecoder);
    decoder->format_.sampleRate = info.samplerate;
    decoder->format_.channels = info.channels;
    decoder->format_.frames = info.frames;
    decoder->format_.bitrate = std::max(0, sf_current_byterate(opened.get())) / 125;
    decoder->stream_ = std::make_unique<Stream>(file, opened.release(), info.channels);
    return decoder;
}

bool SoundFileDecoder::Seek(std::int64_t frame) {
    return sf_seek(stream_->file.get(), frame, SEEK_SET) == frame;
}

ReadResult SoundFileDecoder::Read(float* stereo, std::size_t frames, std::size_t& got) {
    const auto wanted = static_cast<sf_count_t>(std::min(frames, kPieceFrames));
    const sf_count_t count = sf_readf_float(stream_->file.get(), stream_->samples.data(), wanted);
    got = static_cast<std::size_t>(std::max<sf_count_t>(0, count));
    if (got == 0)
        return stream_->source.Failed() ? ReadResult::Broken : ReadResult::End;
    stream_->mix.MixInterleaved(stream_->samples.data(), got, stereo);
    return ReadResult::Data;
}

} // namespace kalvo::audio
