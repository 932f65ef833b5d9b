#include "DecodeSupport.h"

#include "audio/OpenDecoder.h"

#include <QFile>
#include <cmath>

namespace kalvo::audio::test {

SoundSpec Spec(double seconds, int rate, int channels, const char* options, int coverBytes) {
    SoundSpec spec;
    spec.seconds = seconds;
    spec.rate = rate;
    spec.channels = channels;
    spec.options = QString::fromLatin1(options).split(u' ', Qt::SkipEmptyParts);
    spec.coverBytes = coverBytes;
    return spec;
}

QByteArray SoundBytes(const char* name, const SoundSpec& spec) {
    const TestFolder folder;
    MakeSound(folder.Path(), QString::fromLatin1(name), spec);
    return folder.Read(QString::fromLatin1(name));
}

OpenedFile::OpenedFile(const QString& path) : OpenedFile(MakeFileSource(QFile::encodeName(path).toStdString())) {}

OpenedFile::OpenedFile(std::unique_ptr<ByteSource> bytes) : file(std::move(bytes)) {
    if (file.WaitUntilOpen())
        decoder = OpenDecoder(file);
}

std::vector<float> DecodeRest(Decoder& decoder, ReadResult* last) {
    std::vector<float> all;
    float piece[2 * 1777];
    std::size_t got = 0;
    ReadResult result = ReadResult::Data;
    while ((result = decoder.Read(piece, 1777, got)) == ReadResult::Data)
        all.insert(all.end(), piece, piece + got * 2);
    if (last != nullptr)
        *last = result;
    return all;
}

float Difference(const std::vector<float>& whole, std::int64_t start, const std::vector<float>& part) {
    const auto offset = static_cast<std::size_t>(start) * 2;
    if (offset + part.size() > whole.size())
        return 9;
    float largest = 0;
    for (std::size_t i = 0; i < part.size(); ++i)
        largest = std::max(largest, std::abs(whole[offset + i] - part[i]));
    return largest;
}

int Waves(const std::vector<float>& stereo, std::size_t from) {
    int waves = 0;
    for (std::size_t frame = from; frame < from + 44100; ++frame)
        waves += stereo.at(frame * 2) < 0 && stereo.at(frame * 2 + 2) >= 0 ? 1 : 0;
    return waves;
}

float Peak(const std::vector<float>& stereo, int side, std::int64_t from, std::int64_t to) {
    float peak = 0;
    for (auto frame = static_cast<std::size_t>(from); frame < static_cast<std::size_t>(to); ++frame)
        peak = std::max(peak, std::abs(stereo.at(frame * 2 + static_cast<std::size_t>(side))));
    return peak;
}

} // namespace kalvo::audio::test
