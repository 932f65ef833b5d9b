#pragma once

#include "playlists/PlaylistEntry.h"

#include <QByteArray>
#include <QList>

#include <functional>
#include <optional>

namespace kalvo {

/** Length of a title's file in seconds, 0 when it cannot be played; no value ends the writing. */
using TitleLength = std::function<std::optional<double>(const QString& path)>;

/**
 * An extended M3U file, lines ended by CR LF: Windows-1252, a line that this cannot hold in UTF-8; `utf8` (".m3u8")
 * writes all lines so. Lengths are whole seconds, halves to the even one, at most 32767; where the file cannot be
 * opened the one that the entry tells, else -1. Empty when a length had no value.
 */
QByteArray WriteM3u(const QList<PlaylistEntry>& entries, const TitleLength& length, bool utf8);

} // namespace kalvo
