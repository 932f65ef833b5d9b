#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace kalvo {

/** A path that could not be taken, and why, in German. */
struct PassedOver {
    QString path;
    QString reason;
};

enum class ScanMethod {
    Standard,   ///< files while walking
    Alternative ///< all folders first, then the files of each
};

struct ScanProgress {
    QString folder;    ///< being searched
    int folders = 0;   ///< found so far
    QStringList files; ///< found since the last call
};

struct ScanResult {
    bool validRoot = false; ///< false: "Kein gültiger Ordner!", nothing was scanned
    bool cancelled = false;
    QStringList files;            ///< full paths
    QList<PassedOver> passedOver; ///< unreadable folders, names that are no text
};

/** Whether a folder can be scanned: absolute, there, no network path ("//", "\\"). */
bool IsScanRoot(const QString& folder);

/** Whether the import takes a file of this name: its last four characters, lowered, are ".mp3" or ".ogg". */
bool IsMusicFileName(const QString& name);

/**
 * Collects the MP3 and OGG files below a folder: depth first, a folder's own files before its subfolders, names in
 * their byte order; both methods give the same list. Links to folders are followed once, never back into the tree.
 * progress: called for every folder and within large ones, false cancels; what was found after its last call is in the
 * result only. Runs on any thread, on the caller's.
 */
ScanResult ScanFolder(const QString& root, ScanMethod method,
                      const std::function<bool(const ScanProgress&)>& progress = {});

} // namespace kalvo
