#pragma once

#include "playlists/PlaylistEntry.h"

#include <QList>
#include <QSet>
#include <QStringList>

#include <atomic>

namespace kalvo {

/** How far a job with many files is. Written by the thread that does it, cancelled by the UI thread. */
struct FileProgress {
    std::atomic<int> done{0};
    std::atomic<int> total{0}; ///< 0 until it is known
    std::atomic<bool> cancelled{false};
};

/** What files, folders and playlists that were dropped or chosen hold. */
struct GatheredFiles {
    QList<PlaylistEntry> entries; ///< in the order of the paths
    QStringList playlists;        ///< M3U and PLS files that were read
    QStringList unusable;         ///< those without a usable title
};

/**
 * Reads playlists, walks folders (all below them, in the order of their names) and takes music files; everything else
 * is passed over. Titles of files that are no playlist's get their duration from the file; with takesTexts all titles
 * get name and artist from their tags, where these hold a name. A cancelled job ends early with what it has. Any
 * thread; may wait for a disk.
 */
GatheredFiles GatherFiles(const QStringList& paths, bool takesTexts, FileProgress& progress);

/** Those of the paths at which there is no file (a folder is none). Any thread; may wait for a disk. */
QSet<QString> MissingFiles(const QStringList& paths, FileProgress& progress);

} // namespace kalvo
