#pragma once

#include "playlists/PlaylistEntry.h"

#include <QList>

namespace kalvo {

/**
 * What the properties of a list tell. Its files are looked at a few at a time, since a share may answer slowly: call
 * Step() until it says that all is done.
 */
class PlaylistSums {
public:
    explicit PlaylistSums(QList<PlaylistEntry> entries);

    /** Looks at the next files for about this long. Whether all are done. */
    bool Step(int milliseconds);

    qsizetype Titles() const { return entries_.size(); }
    /** Sum of the known durations. */
    qint64 Seconds() const { return seconds_; }
    qsizetype UnknownDurations() const { return unknown_; }
    /** Of the files looked at so far. */
    qint64 Bytes() const { return bytes_; }
    qsizetype MissingFiles() const { return missing_; }
    /** Share of the files looked at, 0..100. */
    int Percent() const;

private:
    QList<PlaylistEntry> entries_;
    qsizetype next_ = 0;
    qint64 seconds_ = 0;
    qsizetype unknown_ = 0;
    qint64 bytes_ = 0;
    qsizetype missing_ = 0;
};

/** "12,4 MB", a megabyte of 1,048,576 bytes. */
QString MegabyteText(qint64 bytes);

} // namespace kalvo
