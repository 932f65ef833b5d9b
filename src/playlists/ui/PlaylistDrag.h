#pragma once

#include "playlists/PlaylistActions.h"

#include <memory>
#include <optional>

class QMimeData;

namespace kalvo {

/** How entries of the lists and titles of the archive travel by drag and drop. */
namespace PlaylistDrag {

struct Entries {
    QList<DraggedEntry> dragged;
    int source = 0; ///< number of their list
};

/** rows: of the list, in its order. */
std::unique_ptr<QMimeData> Pack(const Playlist& list, const QList<int>& rows);

std::optional<Entries> TakeEntries(const QMimeData* data);
std::optional<QList<TitleRecord>> TakeTitles(const QMimeData* data);
/** Local paths of dragged files and folders. */
QStringList TakePaths(const QMimeData* data);

/** Whether one of the three is in it. */
bool IsWelcome(const QMimeData* data);

} // namespace PlaylistDrag

} // namespace kalvo
