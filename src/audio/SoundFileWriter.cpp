#include "audio/SoundFileWriter.h"

#include <algorithm>
#include <sndfile.h>
#include <utility>

namespace kalvo::audio {

namespace {

constexpr int kLeastBitrate = 64; // kbit/s; below it the encoder changes the sample rate
constexpr int kMostBitrate = 320;

bool Lossy(EncodeFormat format) {
    return format == EncodeFormat::Ogg || format == EncodeFormat::Mp3;
}

int PcmFormat(int bits) {
    return bits == 16 ? SF_FORMAT_PCM_16 : bits == 24 ? SF_FORMAT_PCM_24 : SF_FORMAT_FLOAT;
}

int FileFormat(const EncodeSettings& settings) {
    switch (settings.format) {
    case EncodeFormat::Wav:
        return SF_FORMAT_WAV | PcmFormat(settings.bits);
    case EncodeFormat::Flac:
        return SF_FORMAT_FLAC | PcmFormat(settings.bits);
    case EncodeFormat::Ogg:
        return SF_FORMAT_OGG | SF_FORMAT_VORBIS;
    case EncodeFormat::Mp3:
        return SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III;
    }
    return 0;
}

} // namespace

bool Usable(const EncodeSettings& settings) {
    const bool wav = settings.format == EncodeFormat::Wav;
    const bool bitsExist = settings.bits == 16 || settings.bits == 24 || (wav && settings.bits == 32);
    const bool rateExists = settings.bitrate >= kLeastBitrate && settings.bitrate <= kMostBitrate;
    return settings.format <= EncodeFormat::Mp3 && (Lossy(settings.format) || bitsExist) &&
           (settings.bitrate == 0 || (settings.format == EncodeFormat::Mp3 && rateExists)) && settings.quality >= 0 &&
           settings.quality <= 1;
}

struct SoundFileWriter::Private {
    std::unique_ptr<ByteSink> bytes;
    std::int64_t position = 0;
    EncodeError error = EncodeError::None; // the first one
    EncodeFormat format = EncodeFormat::Wav;
    SNDFILE* file = nullptr;

    bool Healthy() const { return file != nullptr && error == EncodeError::None; }
    EncodeError Note(EncodeError next) {
        if (error == EncodeError::None)
            error = next;
        return error;
    }
    bool Open(const EncodeSettings& settings, int rate);
    void SetQuality(const EncodeSettings& settings);
};

namespace {

template<class Private>
SF_VIRTUAL_IO Callbacks() {
    SF_VIRTUAL_IO io{};
    io.get_filelen = [](void* user) -> sf_count_t { return static_cast<Private*>(user)->bytes->Size(); };
    io.tell = [](void* user) -> sf_count_t { return static_cast<Private*>(user)->position; };
    io.read = [](void*, sf_count_t, void*) -> sf_count_t { return 0; };
    io.seek = [](sf_count_t offset, int whence, void* user) -> sf_count_t {
        auto& d = *static_cast<Private*>(user);
        const std::int64_t base = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? d.position : d.bytes->Size();
        return d.position = base + offset;
    };
    io.write = [](const void* from, sf_count_t count, void* user) -> sf_count_t {
        auto& d = *static_cast<Private*>(user);
        if (const EncodeError error = d.bytes->WriteAt(d.position, from, std::size_t(count));
            error != EncodeError::None) {
            d.Note(error);
            return 0;
        }
        d.position += count;
        return count;
    };
    return io;
}

} // namespace

bool SoundFileWriter::Private::Open(const EncodeSettings& settings, int rate) {
    SF_VIRTUAL_IO io = Callbacks<Private>();
    SF_INFO info{};
    info.samplerate = rate;
    info.channels = 2;
    info.format = FileFormat(settings);
    file = sf_open_virtual(&io, SFM_WRITE, &info, this);
    if (file == nullptr)
        return false;
    format = settings.format;
    sf_command(file, SFC_SET_CLIPPING, nullptr, SF_TRUE);
    SetQuality(settings);
    if (!settings.title.empty())
        sf_set_string(file, SF_STR_TITLE, settings.title.c_str());
    if (!settings.artist.empty())
        sf_set_string(file, SF_STR_ARTIST, settings.artist.c_str());
    return true;
}

void SoundFileWriter::Private::SetQuality(const EncodeSettings& settings) {
    if (!Lossy(format))
        return;
    double compression = std::min(0.99, 1 - settings.quality);
    if (format == EncodeFormat::Mp3) {
        int mode = settings.bitrate > 0 ? SF_BITRATE_MODE_CONSTANT : SF_BITRATE_MODE_VARIABLE;
        sf_command(file, SFC_SET_BITRATE_MODE, &mode, sizeof mode);
        // libsndfile spreads its whole range, 320 down to 32 kbit/s, over 0..1.
        if (settings.bitrate > 0)
            compression = (kMostBitrate - settings.bitrate) / 288.0;
    }
    sf_command(file, SFC_SET_COMPRESSION_LEVEL, &compression, sizeof compression);
}

SoundFileWriter::SoundFileWriter(std::unique_ptr<Private> d) : d_(std::move(d)) {}

SoundFileWriter::~SoundFileWriter() {
    Close();
}

std::unique_ptr<SoundFileWriter> SoundFileWriter::Create(std::unique_ptr<ByteSink> bytes,
                                                         const EncodeSettings& settings, int rate, EncodeError& error) {
    auto d = std::make_unique<Private>();
    d->bytes = std::move(bytes);
    const bool opened = d->Open(settings, rate);
    error = d->error;
    if (!opened && error == EncodeError::None)
        error = EncodeError::Format;
    std::unique_ptr<SoundFileWriter> writer(new SoundFileWriter(std::move(d)));
    if (error == EncodeError::None)
        return writer;
    writer->d_->bytes->Discard();
    return nullptr;
}

EncodeError SoundFileWriter::Write(const float* stereo, std::size_t frames) {
    if (!d_->Healthy())
        return d_->Note(EncodeError::File);
    const auto wanted = static_cast<sf_count_t>(frames);
    if (sf_writef_float(d_->file, stereo, wanted) != wanted)
        d_->Note(EncodeError::File);
    return d_->error;
}

EncodeError SoundFileWriter::KeepPlayable(bool toDisk) {
    // Only this header counts what follows it; the other formats' would be written a second time.
    if (d_->format == EncodeFormat::Wav && d_->file != nullptr)
        sf_command(d_->file, SFC_UPDATE_HEADER_NOW, nullptr, 0);
    if (toDisk && d_->Healthy())
        d_->Note(d_->bytes->Sync());
    return d_->error;
}

EncodeError SoundFileWriter::Close() {
    if (d_->file == nullptr)
        return d_->error;
    if (sf_close(std::exchange(d_->file, nullptr)) != 0)
        d_->Note(EncodeError::File);
    return d_->Note(d_->bytes->Sync());
}

void SoundFileWriter::Discard() {
    d_->bytes->Discard();
}

std::uint64_t SoundFileWriter::Bytes() const {
    return std::uint64_t(d_->bytes->Size());
}

} // namespace kalvo::audio
