#pragma once

#include "playlists/Playlist.h"

#include <functional>

namespace kalvo {

/**
 * The next-title rule of a list, one call a title. Removes the played entry where wanted, prefers a play-next mark,
 * passes missing files over (they lose a play-next mark, the last of them becomes red without an icon) until one
 * exists or the list is at its end. An entry that was passed over is not removed by a later call: it was not played.
 * removePlayed: the setting `WlLoeschen`. exists: whether a file is there.
 * Returns the row to load, -1 at the end of the list. Does not make it current: the caller does when it has loaded it.
 */
int TakeNextTitle(Playlist& list, bool removePlayed, const std::function<bool(const QString& path)>& exists);

/** What TakeNextTitle would find, without changing anything. Gives the row as it stands now, or -1. */
int PeekNextTitle(const Playlist& list, const std::function<bool(const QString& path)>& exists,
                  bool removePlayed = false);

} // namespace kalvo
