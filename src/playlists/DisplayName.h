#pragma once

#include "playlists/PlaylistEntry.h"

namespace kalvo {

/**
 * Title and artist from a shown name, "Artist - Title": split at the first "-", blanks around the parts and a ".mp3" or
 * ".ogg" at the end removed. Without a "-" the whole name is the title.
 */
void SetFromDisplayName(PlaylistEntry& entry, const QString& name);

/** An entry for a file: named after it, duration "0". */
PlaylistEntry EntryFromFile(const QString& path);

} // namespace kalvo
