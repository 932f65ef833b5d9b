#pragma once

#include "audio/AudioLibrary.h"

#include <QLibrary>
#include <QString>

#include <memory>

namespace kalvo {

/** The audio library's module, loaded from a folder at run time. Must outlive everything made by its library. */
class AudioModule {
public:
    /** programFolder: the folder of the executable. */
    explicit AudioModule(const QString& programFolder);

    /** Whether the file is there at all. */
    bool Exists() const;
    /** Null when the file is missing or is no audio library. */
    std::unique_ptr<audio::AudioLibrary> Create();

private:
    QString path_;
    QLibrary library_;
};

/** "2.0": the low word, a dot, the high word of the library's version number. */
QString VersionText(std::uint32_t version);

} // namespace kalvo
