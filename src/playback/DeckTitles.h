#pragma once

#include "audio/AudioLibrary.h"

#include <QString>

namespace kalvo {

/** What a player shows of its title. */
struct DeckTitle {
    QString title;
    QString artist;
    QString format; ///< "MP3 320 kbit/s", empty while unknown
    QString path;
    double length = 0;     ///< seconds, 0 = unknown
    double cue = -1;       ///< seconds, negative = none
    bool prepared = false; ///< opened ahead and silent: what a hand-over would take
};

/** "MP3 320 kbit/s": the kind by the file's extension, the rate where it is known. */
QString FormatText(const QString& path, const audio::ChannelInfo& info);

/** Whether there is such a file (a folder is none). */
bool FileExists(const QString& path);

} // namespace kalvo
