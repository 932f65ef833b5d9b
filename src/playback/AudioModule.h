#pragma once

#include "audio/AudioLibrary.h"
#include "audio/EncoderLibrary.h"
#include "base/ModuleFile.h"

namespace kalvo {

/** The audio library's module. */
class AudioModule : public ModuleFile<audio::AudioLibrary> {
public:
    /** programFolder: the folder of the executable. */
    explicit AudioModule(const QString& programFolder)
        : ModuleFile(programFolder, QStringLiteral("bass.dll"), audio::kFactoryName) {}
};

/** The encoder library's module. */
class EncoderModule : public ModuleFile<audio::EncoderLibrary> {
public:
    explicit EncoderModule(const QString& programFolder)
        : ModuleFile(programFolder, QStringLiteral("BASSenc.dll"), audio::kEncoderFactoryName) {}
};

} // namespace kalvo
