#pragma once

#include "base/FixedRecords.h"

#include <QDateTime>
#include <QHash>
#include <QList>

#include <optional>

namespace kalvo {

/** Through what a title was heard. */
enum class PlaySource : quint8 { Player1, Player2, Archive };

/** One title of the charts. */
struct ChartEntry {
    int number = 0;     ///< of its record, from 1
    QString lastPlayed; ///< "21.11.2026, 23:15 Uhr"
    QString path;       ///< may be cut to the record's 200 bytes
    QString title;      ///< at most 50 bytes
    QString artist;     ///< at most 50 bytes
    int total = 0;
    int archive = 0;
    int player1 = 0;
    int player2 = 0;
    QString sortable; ///< "2026.11.21, 23:15"
};

/**
 * The charts file: records of 392 bytes, one for each title that was ever played, found by its path. A play changes its
 * record in place, or appends one, with a single write call. Where each path stands is kept in memory and read anew
 * when another program has changed the file. UI thread.
 */
class ChartsFile {
public:
    /** The clock outlives this. Nothing is read yet. */
    ChartsFile(const QString& path, const Clock& clock);

    /** There is something in the file, but not a single record that names a file. */
    bool IsDamaged() const;
    /** Reads where the paths stand, so that the first play need not. */
    void Prepare();
    /**
     * Counts one play at `when`. A count that has reached 32,767 stays there, and so does the total; the dates go on.
     * A path too long for its field is found again by what fits together with the title. False when the file could not
     * be written; its content is as before then.
     */
    bool Count(PlaySource source, const QString& path, const QString& title, const QString& artist,
               const QDateTime& when);

    /**
     * The file of a title has a new path: its record follows, and takes up one that stands there already. title: of the
     * archive, for paths too long for their field. True also when there is nothing to follow; false when the file could
     * not be written.
     */
    bool Move(const QString& from, const QString& to, const QString& title);

    /** In the file's order; empty when it is missing or cannot be read. */
    QList<ChartEntry> Entries() const;
    /** That of a title; no value when it was never counted. The title tells paths apart that are too long. */
    std::optional<ChartEntry> FindEntry(const QString& path, const QString& title);
    /** Whether the entry's path may be the beginning of a longer one. */
    static bool MayBeCut(const ChartEntry& entry);
    /** Whether a title of this path would be counted in this entry; both are compared as far as their fields reach. */
    static bool IsRecordOf(const ChartEntry& entry, const QString& path, const QString& title);
    /** Titles in the file. */
    int Size() const { return records_.Count(); }
    /** Rewrites the file without these records. False when that failed; the file is as before then. */
    bool Remove(const QList<int>& numbers);
    bool Clear();

private:
    struct Version {
        qint64 size = -1;
        QDateTime modified;
        bool operator==(const Version&) const = default;
    };

    Version VersionNow() const;
    /** Number of the record, 0 when there is none. */
    int Find(const QString& path, const QString& title) const;

    QString path_;
    FixedRecords records_;
    QMultiHash<size_t, int> places_; ///< record numbers by the hash of their path
    Version known_;                  ///< of the file that places_ was read from
};

} // namespace kalvo
