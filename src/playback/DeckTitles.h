#pragma once

#include "audio/AudioLibrary.h"

#include <QString>

namespace kalvo {

/** "MP3 320 kbit/s": the kind by the file's extension, the rate where it is known. */
QString FormatText(const QString& path, const audio::ChannelInfo& info);

/** Whether there is such a file (a folder is none). */
bool FileExists(const QString& path);

} // namespace kalvo
