#pragma once

#include "playlists/Playlist.h"

#include <QDateTime>

namespace kalvo {

/** Header caption of list `number`, "Player 1       3. von 17 in Standard". selectedRow: from 0, -1 for none. */
QString ListCaption(int number, int selectedRow, int count, const QString& playlistName);

/** The same while a wish is on the player, "Player 1       gewünscht von: Anna". */
QString WishCaption(int number, const QString& guest);

/** Base name of a ".wil" path, what stands between the last separator and ".wil"; "Standard" without a ".wil". */
QString PlaylistName(const QString& path);

/** Seconds of an entry's duration: "mm:ss", or whole seconds as playlist files tell them; 0 when unknown. */
int DurationSeconds(const QString& duration);

/** Sum of all durations in seconds; unknown ones count nothing. */
qint64 TotalSeconds(const Playlist& list);
/**
 * Durations of the titles that the list will still give, in the order of the next-title rule: the marked ones, then
 * those behind the last of them or behind the red one. What its player has now is not among them.
 */
QList<int> ComingSeconds(const Playlist& list);

/** "00:58:12", hours as many digits as needed. */
QString HoursText(qint64 seconds);
/** "Rest 00:58:12". */
QString RestText(qint64 seconds);
/** "bis 00:39": when that many seconds from `now` on have passed. */
QString UntilText(qint64 seconds, const QDateTime& now);

} // namespace kalvo
