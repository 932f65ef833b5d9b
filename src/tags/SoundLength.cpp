#include "tags/SoundLength.h"

#include "audio/OpenDecoder.h"
#include "audio/ReadAheadFile.h"

#include <QFile>

#include <cstdint>
#include <oggpageheader.h>
#include <xingheader.h>

namespace kalvo::SoundLength {

namespace {

using TagLib::ByteVector;

/** Bytes per second that no sound goes below; a length that says so comes from a damaged header. */
constexpr double kFewestBytes = 250;
/** The same of what was scanned: silence can be very short. */
constexpr double kFewestScanned = 10;
/** Places of a file at which its bit rate is looked at. */
constexpr int kProbes = 16;

bool IsPlausible(double seconds, std::int64_t bytes, double fewest = kFewestBytes) {
    return seconds > 0 && seconds * fewest < static_cast<double>(bytes);
}

double Scanned(const QString& path) {
    audio::ReadAheadFile file(audio::MakeFileSource(QFile::encodeName(path).toStdString()));
    if (!file.WaitUntilOpen())
        return 0;
    const std::unique_ptr<audio::Decoder> decoder = audio::OpenDecoder(file);
    if (decoder == nullptr || decoder->Format().sampleRate <= 0)
        return 0;
    const double seconds = static_cast<double>(decoder->Format().frames) / decoder->Format().sampleRate;
    return IsPlausible(seconds, file.Size(), kFewestScanned) ? seconds : 0;
}

ByteVector BlockAt(TagLib::File& file, long position, unsigned long length) {
    file.seek(position);
    return file.readBlock(length);
}

/** Samples that the encoder has put before and behind the sound, as its header tells; 0 where it tells nothing. */
int EncoderSamples(TagLib::MPEG::File& file, long firstFrame) {
    constexpr unsigned gapAt = 141; // from the header's name on
    const ByteVector frame = BlockAt(file, firstFrame, 256);
    int name = frame.find("Xing");
    if (name < 0)
        name = frame.find("Info");
    const unsigned gap = static_cast<unsigned>(name) + gapAt;
    if (name < 0 || gap + 3 > frame.size() || frame[gap - 21] == 0)
        return 0;
    const unsigned both = frame.toUInt(gap, 3U);
    return static_cast<int>((both >> 12) + (both & 0xFFF));
}

double FromHeader(TagLib::MPEG::File& file, const TagLib::MPEG::XingHeader& xing, long first, long end) {
    const TagLib::MPEG::Header frame(&file, first, false);
    const auto told = static_cast<long>(xing.totalSize());
    const bool cut = told <= 0 || end - first < told - 2L * frame.frameLength();
    if (!frame.isValid() || frame.sampleRate() <= 0 || cut || file.nextFrameOffset(first + told) >= 0)
        return 0;
    const double samples = static_cast<double>(xing.totalFrames()) * frame.samplesPerFrame();
    const double seconds = (samples - EncoderSamples(file, first)) / frame.sampleRate();
    return IsPlausible(seconds, file.length()) ? seconds : 0;
}

double FromConstantRate(TagLib::MPEG::File& file, long first, long last) {
    const TagLib::MPEG::Header start(&file, first, true);
    const TagLib::MPEG::Header end(&file, last, false);
    if (!start.isValid() || !end.isValid() || start.bitrate() <= 0 || last <= first)
        return 0;
    const auto alike = [&start](const TagLib::MPEG::Header& other) {
        return other.isValid() && other.bitrate() == start.bitrate() && other.sampleRate() == start.sampleRate() &&
               other.layer() == start.layer();
    };
    for (int probe = 1; probe < kProbes; ++probe) {
        const long place = file.nextFrameOffset(first + (last - first) / kProbes * probe);
        if (place < 0 || !alike(TagLib::MPEG::Header(&file, place, true)))
            return 0;
    }
    return alike(end) ? static_cast<double>(last + end.frameLength() - first) * 8 / (start.bitrate() * 1000.0) : 0;
}

} // namespace

double OfMpeg(TagLib::MPEG::File& file, const QString& path) {
    const TagLib::MPEG::Properties* properties = file.audioProperties();
    if (properties == nullptr)
        return 0;
    const long first = file.firstFrameOffset();
    double seconds = 0;
    if (first >= 0) {
        const TagLib::MPEG::XingHeader* xing = properties->xingHeader();
        const long end = file.hasID3v1Tag() ? file.length() - 128 : file.length();
        seconds = xing != nullptr && xing->isValid() ? FromHeader(file, *xing, first, end)
                                                     : FromConstantRate(file, first, file.lastFrameOffset());
    }
    return seconds > 0 ? seconds : Scanned(path);
}

double OfOgg(TagLib::Ogg::File& file, double seconds, const QString& path) {
    const long lastPage = file.rfind("OggS");
    const TagLib::Ogg::PageHeader* first = file.firstPageHeader();
    const TagLib::Ogg::PageHeader last(&file, lastPage);
    const bool whole = last.isValid() && lastPage + last.size() + last.dataSize() <= file.length();
    const bool oneStream = first != nullptr && first->streamSerialNumber() == last.streamSerialNumber();
    return whole && oneStream && IsPlausible(seconds, file.length()) && last.absoluteGranularPosition() > 0
               ? seconds
               : Scanned(path);
}

} // namespace kalvo::SoundLength
