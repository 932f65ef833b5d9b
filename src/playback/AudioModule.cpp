#include "playback/AudioModule.h"

#include <QDir>
#include <QFileInfo>

namespace kalvo {

AudioModule::AudioModule(const QString& programFolder)
    : path_(QDir(programFolder).filePath(QStringLiteral("bass.dll"))), library_(path_) {}

bool AudioModule::Exists() const {
    return QFileInfo(path_).isFile();
}

std::unique_ptr<audio::AudioLibrary> AudioModule::Create() {
    if (!Exists()) {
        return nullptr;
    }
    const auto factory = reinterpret_cast<audio::Factory>(library_.resolve(audio::kFactoryName));
    return std::unique_ptr<audio::AudioLibrary>(factory == nullptr ? nullptr : factory());
}

QString VersionText(std::uint32_t version) {
    return QStringLiteral("%1.%2").arg(version & 0xFFFFU).arg(version >> 16U);
}

} // namespace kalvo
