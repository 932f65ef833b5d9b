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

/** Who put an entry into its list; told by the history of what was played. */
enum class EntryOrigin : quint8 { Player, Wish, Automatic };

/** One row of a playlist. */
struct PlaylistEntry {
    QString title;
    QString artist;
    QString duration;   ///< "mm:ss" as shown in the archive; "0" when unknown
    QString shuffleKey; ///< "1" to "10000"
    QString info;       ///< comment of the archive, or a cue point in seconds with exactly one decimal
    QString path;       ///< full path of the file: the entry's identity
    EntryIcon icon = EntryIcon::None;
    EntryOrigin origin = EntryOrigin::Player; ///< not kept in files
    quint64 id = 0; ///< given by the list that holds the entry, different from all others it has ever held

    bool operator==(const PlaylistEntry&) const = default;
};

} // namespace kalvo

Q_DECLARE_TYPEINFO(kalvo::PlaylistEntry, Q_RELOCATABLE_TYPE);
