#include "playback/LengthCache.h"

#include "audio/OpenDecoder.h"
#include "audio/ReadAheadFile.h"

#include <QFile>

#include <exception>
#include <memory>

namespace kalvo {

namespace {

double Read(const std::string& path) try {
    audio::ReadAheadFile file(audio::MakeFileSource(path));
    if (!file.WaitUntilOpen())
        return 0;
    const std::unique_ptr<audio::Decoder> decoder = audio::OpenDecoder(file);
    if (decoder == nullptr || decoder->Format().sampleRate <= 0)
        return 0;
    return static_cast<double>(decoder->Format().frames) / decoder->Format().sampleRate;
} catch (const std::exception&) { // no memory, no thread
    return 0;
}

} // namespace

double LengthCache::Of(const std::string& path) {
    const FileStamp stamp = FileStamp::Of(QFile::decodeName(QByteArray::fromStdString(path)));
    auto& [knownStamp, seconds] = known_[path];
    if (knownStamp != stamp) {
        knownStamp = stamp;
        seconds = Read(path);
    }
    return seconds;
}

} // namespace kalvo
