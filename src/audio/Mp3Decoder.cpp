#include "audio/Mp3Decoder.h"

#include "audio/ReadAheadFile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <mpg123.h>
#include <string_view>

namespace kalvo::audio {

namespace {

/** Garbage up to this many bytes is passed over; more of it is the end. */
constexpr long kResyncLimit = 65536;
/** Reads that neither fail for good nor deliver, in a row, before the rest counts as broken. */
constexpr int kFruitlessReads = 64;
/** With so many frames in a row, a sync by chance is ruled out. */
constexpr std::int64_t kCertainFrames = 20;
/** Up to here a scan takes some milliseconds from a disk. */
constexpr std::int64_t kLongFile = 16 << 20;

struct HandleDeleter {
    void operator()(mpg123_handle* handle) const { mpg123_delete(handle); }
};

bool InitialiseLibrary() {
    static const bool initialised = mpg123_init() == MPG123_OK;
    return initialised;
}

} // namespace

struct Mp3Decoder::Stream {
    ReadAheadFile* file = nullptr;
    std::int64_t start = 0;
    std::unique_ptr<mpg123_handle, HandleDeleter> handle;

    static mpg123_ssize_t ReadBytes(void* self, void* buffer, std::size_t bytes) {
        return static_cast<mpg123_ssize_t>(static_cast<Stream*>(self)->file->Read(buffer, bytes));
    }

    static off_t SeekBytes(void* self, off_t offset, int whence) {
        auto* const stream = static_cast<Stream*>(self);
        const std::int64_t place = stream->file->Seek(whence == SEEK_SET ? stream->start + offset : offset, whence);
        return place < stream->start ? -1 : static_cast<off_t>(place - stream->start);
    }
};

Mp3Decoder::Mp3Decoder() : stream_(std::make_unique<Stream>()) {}
Mp3Decoder::~Mp3Decoder() = default;

std::unique_ptr<Mp3Decoder> Mp3Decoder::Open(ReadAheadFile& file, std::int64_t start, LengthNeed need) {
    if (!InitialiseLibrary() || !file.Seek(start))
        return nullptr;
    std::unique_ptr<Mp3Decoder> decoder(new Mp3Decoder);
    Stream& stream = *decoder->stream_;
    stream.file = &file;
    stream.start = start;
    stream.handle.reset(mpg123_new(nullptr, nullptr));
    const bool usable = stream.handle != nullptr && decoder->Prepare(file.Size() - start, need) && !file.Failed();
    return usable ? std::move(decoder) : nullptr;
}

bool Mp3Decoder::Prepare(std::int64_t size, LengthNeed need) {
    mpg123_handle* const handle = stream_->handle.get();
    const long flags = MPG123_QUIET | MPG123_FORCE_FLOAT | MPG123_FORCE_STEREO | MPG123_SKIP_ID3V2 | MPG123_GAPLESS;
    if (mpg123_param(handle, MPG123_ADD_FLAGS, flags, 0) != MPG123_OK ||
        mpg123_param(handle, MPG123_RESYNC_LIMIT, kResyncLimit, 0) != MPG123_OK ||
        mpg123_replace_reader_handle(handle, &Stream::ReadBytes, &Stream::SeekBytes, nullptr) != MPG123_OK ||
        mpg123_open_handle(handle, stream_.get()) != MPG123_OK)
        return false;
    if (!FixOutputFormat())
        return false;
    return need == LengthNeed::Soon && size >= kLongFile ? Estimate(size) : Scan(size);
}

/** Only the length of such a header is known before the file has been read; everything else would be a guess. */
bool Mp3Decoder::HasLengthHeader() {
    std::array<char, 64> head{};
    ReadAheadFile& file = *stream_->file;
    const std::int64_t back = file.Tell();
    if (file.Seek(stream_->start))
        file.Read(head.data(), head.size());
    file.Seek(back);
    const std::string_view text(head.data(), head.size());
    return text.find("Xing") != std::string_view::npos || text.find("Info") != std::string_view::npos;
}

bool Mp3Decoder::Scan(std::int64_t size) {
    mpg123_handle* const handle = stream_->handle.get();
    format_.toldFrames = HasLengthHeader() ? mpg123_length(handle) : 0;
    if (mpg123_scan(handle) != MPG123_OK || !FindBitrate())
        return false;
    format_.frames = mpg123_length(handle);
    const std::int64_t pieces = mpg123_framelength(handle);
    const double seconds = static_cast<double>(format_.frames) / format_.sampleRate;
    // Few frames are believed only when they make up a good part of the file.
    const bool believable =
        pieces >= kCertainFrames || seconds * format_.bitrate * 125 * 4 >= static_cast<double>(size);
    return format_.frames > 0 && believable;
}

bool Mp3Decoder::Estimate(std::int64_t size) {
    mpg123_handle* const handle = stream_->handle.get();
    for (std::int64_t piece = 0; piece < kCertainFrames; ++piece) {
        if (mpg123_framebyframe_next(handle) != MPG123_OK)
            return false;
    }
    format_.frames = mpg123_length(handle);
    format_.estimated = true;
    const double seconds = static_cast<double>(format_.frames) / format_.sampleRate;
    if (format_.variableRate && seconds > 0)
        format_.bitrate = static_cast<int>(std::lround(static_cast<double>(size) / 125 / seconds));
    return format_.frames > 0 && Seek(0);
}

/** Keeps the first frame's rate for the whole file; pieces of another rate are brought to it. */
bool Mp3Decoder::FixOutputFormat() {
    mpg123_handle* const handle = stream_->handle.get();
    long rate = 0;
    int channels = 0;
    int encoding = 0;
    mpg123_frameinfo info{};
    if (mpg123_getformat(handle, &rate, &channels, &encoding) != MPG123_OK || mpg123_info(handle, &info) != MPG123_OK)
        return false;
    format_.sampleRate = static_cast<int>(rate);
    format_.channels = info.mode == MPG123_M_MONO ? 1 : 2;
    format_.bitrate = info.bitrate;
    format_.variableRate = info.vbr != MPG123_CBR;
    return mpg123_format_none(handle) == MPG123_OK &&
           mpg123_format(handle, rate, MPG123_STEREO, MPG123_ENC_FLOAT_32) == MPG123_OK;
}

/** From the places of the frames, which the scan has noted: needs no header and sees neither tags nor pictures. */
bool Mp3Decoder::FindBitrate() {
    mpg123_handle* const handle = stream_->handle.get();
    off_t* places = nullptr;
    off_t step = 0;
    std::size_t count = 0;
    const int samples = mpg123_spf(handle);
    if (samples <= 0 || mpg123_index(handle, &places, &step, &count) != MPG123_OK)
        return false;
    if (places == nullptr || count < 2 || step <= 0)
        return true;
    const auto spans = static_cast<double>(count - 1);
    const double seconds = spans * static_cast<double>(step) * samples / format_.sampleRate;
    const double rate = static_cast<double>(places[count - 1] - places[0]) * 8 / seconds;
    std::size_t unlike = 0;
    for (std::size_t i = 1; i < count; ++i) {
        const auto span = static_cast<double>(places[i] - places[i - 1]);
        const double expected = format_.bitrate * 125.0 * step * samples / format_.sampleRate;
        unlike += std::abs(span - expected) > 2 ? 1 : 0;
    }
    // A damaged piece or two in an otherwise constant file changes nothing.
    const bool variable = unlike * 10 > count;
    format_.variableRate = format_.variableRate || variable;
    if (format_.variableRate)
        format_.bitrate = static_cast<int>(std::lround(rate / 1000));
    return true;
}

bool Mp3Decoder::Seek(std::int64_t frame) {
    return mpg123_seek(stream_->handle.get(), static_cast<off_t>(frame), SEEK_SET) == static_cast<off_t>(frame);
}

ReadResult Mp3Decoder::Read(float* stereo, std::size_t frames, std::size_t& got) {
    constexpr std::size_t kFrameBytes = 2 * sizeof(float);
    for (int tries = 0; tries < kFruitlessReads; ++tries) {
        std::size_t bytes = 0;
        const int result =
            mpg123_read(stream_->handle.get(), reinterpret_cast<unsigned char*>(stereo), frames * kFrameBytes, &bytes);
        got = bytes / kFrameBytes;
        if (got > 0)
            return ReadResult::Data;
        if (stream_->file->Failed())
            return ReadResult::Broken;
        if (result == MPG123_DONE)
            return ReadResult::End;
    }
    return ReadResult::Broken;
}

} // namespace kalvo::audio
