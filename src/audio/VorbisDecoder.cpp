#include "audio/VorbisDecoder.h"

#include "audio/ReadAheadFile.h"
#include "audio/StereoMix.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <samplerate.h>

#define OV_EXCLUDE_STATIC_CALLBACKS
#include <vorbis/vorbisfile.h>

namespace kalvo::audio {

namespace {

constexpr int kPieceFrames = 4096;
constexpr std::size_t kConvertFrames = 1024;

std::size_t ReadBytes(void* buffer, std::size_t size, std::size_t count, void* file) {
    const std::int64_t got = static_cast<ReadAheadFile*>(file)->Read(buffer, size * count);
    errno = got < 0 ? EIO : 0; // how vorbisfile tells a failure from the end
    return got < 0 ? 0 : static_cast<std::size_t>(got) / size;
}

int SeekBytes(void* file, ogg_int64_t offset, int whence) {
    return static_cast<ReadAheadFile*>(file)->Seek(offset, whence) < 0 ? -1 : 0;
}

long TellBytes(void* file) {
    return static_cast<long>(static_cast<ReadAheadFile*>(file)->Tell());
}

struct ConverterDeleter {
    void operator()(SRC_STATE* state) const { src_delete(state); }
};

} // namespace

struct VorbisDecoder::Stream {
    OggVorbis_File file{};
    bool opened = false;
    std::unique_ptr<SRC_STATE, ConverterDeleter> converter;
    StereoMix mix{2, StereoMix::Order::Vorbis};

    ~Stream() {
        if (opened)
            ov_clear(&file);
    }
};

VorbisDecoder::VorbisDecoder() : stream_(std::make_unique<Stream>()) {}
VorbisDecoder::~VorbisDecoder() = default;

std::unique_ptr<VorbisDecoder> VorbisDecoder::Open(ReadAheadFile& file) {
    if (!file.Seek(0))
        return nullptr;
    std::unique_ptr<VorbisDecoder> decoder(new VorbisDecoder);
    Stream& stream = *decoder->stream_;
    const ov_callbacks callbacks{&ReadBytes, &SeekBytes, nullptr, &TellBytes};
    stream.opened = ov_open_callbacks(&file, &stream.file, nullptr, 0, callbacks) == 0;
    if (!stream.opened || !decoder->ListLinks())
        return nullptr;
    SourceFormat& format = decoder->format_;
    if (format.bitrate == 0) // a sound that fits into one page
        format.bitrate = static_cast<int>(file.Size() * format.sampleRate / format.frames / 125);
    return decoder;
}

bool VorbisDecoder::ListLinks() {
    OggVorbis_File* const file = &stream_->file;
    std::int64_t rawStart = 0;
    bool constant = true;
    for (int index = 0; index < ov_streams(file); ++index) {
        const vorbis_info* const info = ov_info(file, index);
        const std::int64_t rawFrames = ov_pcm_total(file, index);
        if (info == nullptr || info->rate <= 0 || info->channels <= 0 || rawFrames < 0)
            return false;
        if (index == 0)
            format_ = {static_cast<int>(info->rate), info->channels, 0, 0, false};
        const double scale = static_cast<double>(format_.sampleRate) / static_cast<double>(info->rate);
        const std::int64_t frames = std::llround(static_cast<double>(rawFrames) * scale);
        links_.push_back({rawStart, format_.frames, frames, static_cast<int>(info->rate), info->channels});
        rawStart += rawFrames;
        format_.frames += frames;
        constant = constant && info->bitrate_lower > 0 && info->bitrate_lower == info->bitrate_upper;
    }
    if (format_.frames <= 0)
        return false;
    format_.bitrate = static_cast<int>(std::max(0L, (ov_bitrate(file, -1) + 500) / 1000));
    format_.variableRate = !constant;
    EnterLink(0, 0);
    return true;
}

/** offset: frames of the link, at the first link's rate, that are skipped. */
void VorbisDecoder::EnterLink(std::size_t index, std::int64_t offset) {
    link_ = index;
    const Link& link = links_[index];
    owed_ = link.frames - offset;
    stream_->mix = StereoMix(link.channels, StereoMix::Order::Vorbis);
    stream_->converter.reset();
    if (link.rate != format_.sampleRate)
        stream_->converter.reset(src_new(SRC_SINC_FASTEST, 2, nullptr));
}

/** What the converter still holds, brought to the exact length. */
void VorbisDecoder::LeaveLink() {
    if (!stream_->converter)
        return;
    Convert(nullptr, 0, true);
    ready_.resize(ready_.size() + static_cast<std::size_t>(owed_) * 2, 0.0F);
    owed_ = 0;
    stream_->converter.reset();
}

void VorbisDecoder::Convert(const float* stereo, std::size_t frames, bool last) {
    constexpr float kNoInput[2] = {0, 0};
    float output[kConvertFrames * 2];
    SRC_DATA data{};
    data.data_in = stereo != nullptr ? stereo : kNoInput;
    data.input_frames = static_cast<long>(frames);
    data.data_out = output;
    data.output_frames = static_cast<long>(kConvertFrames);
    data.end_of_input = last ? 1 : 0;
    data.src_ratio = static_cast<double>(format_.sampleRate) / links_[link_].rate;
    while (src_process(stream_->converter.get(), &data) == 0 &&
           (data.input_frames_used > 0 || data.output_frames_gen > 0)) {
        const std::int64_t taken = std::min<std::int64_t>(owed_, data.output_frames_gen);
        ready_.insert(ready_.end(), output, output + taken * 2);
        owed_ -= taken;
        data.data_in += data.input_frames_used * 2;
        data.input_frames -= data.input_frames_used;
    }
}

/** Decodes one piece into the empty ready_; may leave it empty. */
ReadResult VorbisDecoder::Fetch() {
    ready_.clear();
    readyStart_ = 0;
    float** planes = nullptr;
    int index = static_cast<int>(link_);
    const long count = ov_read_float(&stream_->file, &planes, kPieceFrames, &index);
    if (count == OV_HOLE)
        return ReadResult::Data;
    if (count <= 0) {
        LeaveLink();
        const ReadResult rest = count == 0 ? ReadResult::End : ReadResult::Broken;
        return ready_.empty() ? rest : ReadResult::Data;
    }
    if (static_cast<std::size_t>(index) != link_) {
        LeaveLink();
        EnterLink(static_cast<std::size_t>(index), 0);
    }
    const auto frames = static_cast<std::size_t>(count);
    mixed_.resize(frames * 2);
    stream_->mix.MixPlanes(planes, frames, mixed_.data());
    if (stream_->converter)
        Convert(mixed_.data(), frames, false);
    else
        ready_.insert(ready_.end(), mixed_.begin(), mixed_.end());
    return ReadResult::Data;
}

ReadResult VorbisDecoder::Read(float* stereo, std::size_t frames, std::size_t& got) {
    got = 0;
    while (readyStart_ == ready_.size()) {
        const ReadResult result = Fetch();
        if (result != ReadResult::Data)
            return result;
    }
    got = std::min(frames, (ready_.size() - readyStart_) / 2);
    std::copy_n(ready_.data() + readyStart_, got * 2, stereo);
    readyStart_ += got * 2;
    return ReadResult::Data;
}

bool VorbisDecoder::Seek(std::int64_t frame) {
    ready_.clear();
    readyStart_ = 0;
    std::size_t index = links_.size() - 1;
    while (index > 0 && links_[index].start > frame)
        --index;
    const Link& link = links_[index];
    const std::int64_t offset = frame - link.start;
    const double scale = static_cast<double>(link.rate) / format_.sampleRate;
    const std::int64_t raw = link.rawStart + std::llround(static_cast<double>(offset) * scale);
    if (ov_pcm_seek(&stream_->file, std::min(raw, ov_pcm_total(&stream_->file, -1))) != 0)
        return false;
    EnterLink(index, offset);
    return true;
}

} // namespace kalvo::audio
