#pragma once

#include "base/BackgroundWorker.h"
#include "playlists/PlaylistEntry.h"

#include <QList>
#include <QStringList>

#include <atomic>
#include <memory>

namespace kalvo {

/**
 * What the properties of a list tell. Its files are looked at by a thread, since a share may answer slowly: the figures
 * about them grow until all are done. UI thread.
 */
class PlaylistSums {
public:
    explicit PlaylistSums(const QList<PlaylistEntry>& entries);
    ~PlaylistSums();
    PlaylistSums(const PlaylistSums&) = delete;
    PlaylistSums& operator=(const PlaylistSums&) = delete;

    qsizetype Titles() const { return titles_; }
    /** Sum of the known durations. */
    qint64 Seconds() const { return seconds_; }
    qsizetype UnknownDurations() const { return unknown_; }
    /** Of the files looked at so far. */
    qint64 Bytes() const { return files_->bytes; }
    qsizetype MissingFiles() const { return files_->missing; }
    bool IsDone() const { return files_->looked == titles_; }
    /** Share of the files looked at, 0..100. */
    int Percent() const;

private:
    /** Written by the thread that looks. */
    struct Files {
        std::atomic<qint64> bytes{0};
        std::atomic<qsizetype> missing{0};
        std::atomic<qsizetype> looked{0};
        std::atomic<bool> unwanted{false};
    };
    static void LookAt(const QStringList& paths, Files& files);

    qsizetype titles_;
    qint64 seconds_ = 0;
    qsizetype unknown_ = 0;
    std::shared_ptr<Files> files_ = std::make_shared<Files>();
    BackgroundWorker worker_;
};

/** "12,4 MB", a megabyte of 1,048,576 bytes. */
QString MegabyteText(qint64 bytes);

} // namespace kalvo
