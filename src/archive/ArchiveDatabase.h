#pragma once

#include "archive/LastPlayed.h"
#include "archive/LayoutFile.h"
#include "archive/SqliteDatabase.h"
#include "base/Clock.h"
#include "tags/TitleRecord.h"

#include <QList>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace kalvo {

/** Outcome of a write; `reason` is a German text for the user where it failed. */
struct WriteResult {
    bool done = false;
    QString reason;

    explicit operator bool() const { return done; }
};

/**
 * The archive file with its table "Daten". One writer, on the UI thread. Write-ahead log, synced at every commit: what
 * was committed survives a power cut.
 */
class ArchiveDatabase {
public:
    /** The clock outlives the database. */
    explicit ArchiveDatabase(const Clock& clock);
    ~ArchiveDatabase();
    ArchiveDatabase(const ArchiveDatabase&) = delete;
    ArchiveDatabase& operator=(const ArchiveDatabase&) = delete;

    /**
     * Opens the archive at `path`, creating it where nothing is. A file that is no archive is set aside together with
     * its log and created anew; one that another program holds, or that may not be written, is opened for reading. One
     * that was noted as damaged is rescued first; see ArchiveRescue.
     * message: what the user has to know, empty when all is well. False when there is nothing to work with.
     */
    bool Open(const QString& path, QString& message);
    void Close();

    bool IsOpen() const { return database_.IsOpen(); }
    bool IsReadOnly() const { return readOnly_; }
    const QString& Path() const { return path_; }

    /** Appends; the comment is cut to 50 characters, every other text over 200 is refused. `Nr` comes back. */
    WriteResult AddTitle(TitleRecord& record);
    /** Replaces the text fields of the record with this `Nr`. */
    WriteResult UpdateRecord(const TitleRecord& record);
    /**
     * Deletes all of these or none; missing ones are passed over. What was deleted is kept in a temporary table of this
     * connection, which the engine removes with it, after a crash too.
     */
    WriteResult Delete(const QList<qint64>& numbers);
    /** Deletes every record; numbers are never given again. */
    WriteResult DeleteAll();
    /** Takes the latest deletion back, under the old numbers, which come back too. */
    WriteResult UndoDelete(QList<qint64>& numbers);
    /** How many records each deletion took away, the latest last. */
    const QList<qint64>& Deletions() const { return deletions_; }
    /** The last-played stamps and how many titles carry each; those without a stamp under the empty text. */
    StampCounts CountStamps() const;
    /** Takes the stamps of all titles away. numbers: the records that had one. */
    WriteResult ClearStamps(QList<qint64>& numbers);
    /** Between these added titles are committed after 500 titles or 100 ms. Several may overlap. */
    void BeginBatch();
    void EndBatch();
    /** Whether added titles wait for their commit. */
    bool HasOpenBatch() const { return batch_ != nullptr; }
    /** For pauses between titles: commits the batch when its 100 ms are up. */
    void CommitIfDue();
    /** Whether a batch could not be committed, so that its titles are gone; asking takes the answer back. */
    bool TakeBatchLost() { return std::exchange(batchLost_, false); }

    /** The records of these numbers in their order; a missing one comes as an empty record. */
    QList<TitleRecord> Read(const QList<qint64>& numbers) const;
    /** The same over a connection of the caller's. */
    static QList<TitleRecord> Read(SqliteDatabase& database, const QList<qint64>& numbers);
    /** The first record with exactly this path. */
    std::optional<TitleRecord> FindByPath(const QString& path) const;
    /** -1 on failure. */
    qint64 Count() const;
    /** A number that changes when another program has committed something; 0 when there is no telling. Quick. */
    qint64 ForeignVersion() const;

    /** Text of the statement that makes a table of this name with the thirteen fields; the playlists use it too. */
    static QString CreateTableStatement(const QString& table, bool limitLengths);
    /** Whether the table is there with all thirteen fields. */
    static bool HasTitleTable(SqliteDatabase& database, const QString& table);

private:
    bool CreateArchiveDatabase();
    bool PrepareForWriting();
    bool Replace(QString& message);
    bool OpenForReading(const QString& why, QString& message);
    WriteResult Failure();
    WriteResult KeepAndDelete(const std::function<bool(const QString& kept)>& move);
    bool EnsureTransaction();
    void Commit();
    void PutBack();

    const Clock& clock_;
    QString path_;
    mutable SqliteDatabase database_;
    std::optional<SqliteStatement> insert_;         ///< kept prepared: imports add thousands of titles
    mutable std::optional<SqliteStatement> select_; ///< kept prepared: a page is fetched with every key press
    bool readOnly_ = false;
    int batches_ = 0; ///< begun and not ended: two imports may run at once
    bool batchLost_ = false;
    int batchTitles_ = 0;
    qint64 batchStart_ = 0;
    QList<qint64> deletions_;
    std::unique_ptr<SqliteDatabase::Transaction> batch_;
};

} // namespace kalvo
