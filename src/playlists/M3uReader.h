#pragma once

#include "playlists/PlaylistEntry.h"

#include <QByteArray>
#include <QList>

namespace kalvo {

/**
 * The titles of an M3U, extended M3U or PLS file, in file order. The kind is told by the content, not by the name.
 * bytes: the whole file, lines in UTF-8, Windows-1252 or, with a byte order mark, UTF-16, ended by CR, LF or both.
 * path: of the file; relative titles lie beside it. Absolute paths, those of other machines too, stay as they are;
 * addresses "file:" become paths. Network streams and everything but ".mp3" and ".ogg" are left out. Durations are as
 * in the file, "0" where it tells none. Empty when there is no usable title.
 */
QList<PlaylistEntry> ReadM3u(const QByteArray& bytes, const QString& path);

/** Whether the name ends like one of the kinds that ReadM3u understands. */
bool IsM3uName(const QString& path);

} // namespace kalvo
