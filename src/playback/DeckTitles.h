#pragma once

#include "audio/AudioLibrary.h"
#include "playlists/PlaylistEntry.h"

#include <optional>

namespace kalvo {

/** Seconds of an entry's cue point; only a number with exactly one decimal is one ("8.4", "0.0"). */
std::optional<double> CuePoint(const QString& info);

/** "MP3 320 kbit/s": the kind by the file's extension, the rate where it is known. */
QString FormatText(const QString& path, const audio::ChannelInfo& info);

/** Whether there is such a file (a folder is none). */
bool FileExists(const QString& path);

} // namespace kalvo
