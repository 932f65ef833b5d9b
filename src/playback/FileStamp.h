#pragma once

#include <QString>

namespace kalvo {

/** Tells whether a file is still the one that was looked at. */
struct FileStamp {
    qint64 size = -1; ///< bytes; -1: there is no file
    qint64 time = 0;  ///< of its last change, ms since 1970

    /** Asks the file system, which may take long. */
    static FileStamp Of(const QString& path);
    bool operator==(const FileStamp&) const = default;
};

} // namespace kalvo
