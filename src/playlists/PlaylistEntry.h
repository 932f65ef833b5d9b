#pragma once

#include <QString>

namespace kalvo {

/** The small picture in front of an entry; the numbers are the given ones. */
enum class EntryIcon : quint8 {
    None = 0,
    Played = 1,         ///< has been loaded by its player
    PlayNext = 2,       ///< comes before the list's order
    PlayNextRemoved = 3 ///< the mark was taken back
};

/** One row of a playlist. */
struct PlaylistEntry {
    QString title;
    QString artist;
    QString duration;   ///< "mm:ss" as shown in the archive; "0" when unknown
    QString shuffleKey; ///< "1" to "10000"
    QString info;       ///< comment of the archive, or a cue point in seconds with exactly one decimal
    QString path;       ///< full path of the file: the entry's identity
    EntryIcon icon = EntryIcon::None;
};

} // namespace kalvo

Q_DECLARE_TYPEINFO(kalvo::PlaylistEntry, Q_RELOCATABLE_TYPE);
