#pragma once

#include <QString>

#include <array>

namespace kalvo {

/** The layout file "\mp3tabelle.dll": one line of twelve values. */
struct LayoutFile {
    std::array<int, 8> columnWidths = {}; ///< of grid columns 0 to 7, twips; 0 = not stored
    double rowHeight = 0;                 ///< twips; 0 = not stored
    QString archivePath;                  ///< empty = not stored
    QString playlistPath;

    /** A missing file gives the empty layout; missing or broken values stay at theirs. */
    static LayoutFile Read(const QString& path);
    /** Replaces the file atomically; false when it could not be written. */
    bool Write(const QString& path) const;
};

} // namespace kalvo
