#pragma once

#include "archive/ArchiveDatabase.h"
#include "archive/BinMove.h"
#include "archive/DeletionLog.h"
#include "archive/ForeignWrites.h"
#include "archive/RecordSource.h"
#include "base/Clock.h"
#include "base/DataFolder.h"

#include <QObject>

#include <functional>
#include <memory>
#include <vector>

namespace kalvo {

class IndexLoader;
class MemoryIndex;
class RowCache;

/**
 * The music archive as the windows use it: the database, the memory index that answers, and the rows of the current
 * record source. UI thread; nothing but writing and the reading of single pages waits for the disk.
 *
 * At Open() a thread of its own starts to read the table into the index. Until it has, the archive holds no rows:
 * record sources are answered when the index is there, and titles written in between are put into it then. Afterwards
 * the thread checks the file and reports a damage by Message(). The destructor stops and joins it.
 */
class Archive : public QObject {
    Q_OBJECT

public:
    /** The clock outlives the archive; it names files that are set aside and times the batches of an import. */
    explicit Archive(const Clock& clock, QObject* parent = nullptr);
    ~Archive() override;
    /**
     * Reads the layout file, creates what is missing and starts to load the index with the default record source.
     * False when there is no archive to work with; Message() tells the reason. Read-only archives are opened too.
     */
    bool Open(const DataFolder& folder);
    bool IsOpen() const { return database_.IsOpen(); }
    bool IsReadOnly() const { return database_.IsReadOnly(); }
    bool IsIndexReady() const { return index_ != nullptr; }
    /** Whether IndexReady() or IndexFailed() is still to come. */
    bool IsLoading() const { return isLoading_ && !index_; }
    /** Waits until the index is there; false when it could not be loaded. For the command line, not for windows. */
    bool WaitForIndex();
    /** Where the databases are; the panel changes widths and row height and saves it. */
    LayoutFile& Layout() { return layout_; }
    const QString& Path() const { return database_.Path(); }
    /**
     * Shows what the statement selects; RecordsChanged() follows, later where the index is still loading. A statement
     * that cannot be understood gives false and leaves everything as it is.
     */
    bool SetRecordSource(const QString& statement);
    const QString& CurrentRecordSource() const { return source_; }
    /** Numbers of the titles that a statement selects, in its order; shows nothing. Empty before the index is there. */
    std::vector<qint64> Select(const QString& statement) const;
    /** The titles of these numbers in one go; those that are gone are left out. */
    QList<TitleRecord> Read(const QList<qint64>& numbers) const;
    /** The same with an empty record in the place of each that is gone. */
    QList<TitleRecord> ReadEach(const QList<qint64>& numbers) const { return database_.Read(numbers); }
    /** Evaluates the current record source anew, so that titles added since show. */
    void Refresh();
    /** To be called every few seconds: reads and shows what other programs have written into the archive since. */
    void FollowOthers();

    /** Rows of the current record source. */
    int RowCount() const { return static_cast<int>(rows_.size()); }
    /** A row of the current record source, counting from 0; an empty record when it is gone or out of range. */
    TitleRecord RowAt(int row) const;
    /** `Nr` of a row, 0 out of range. */
    qint64 IdAt(int row) const;
    /** Row of a record number, -1 when the current record source does not hold it. */
    int RowOf(qint64 nr) const;
    /** Many rows in one go, as Read() gives them. */
    QList<TitleRecord> RowsAt(const QList<int>& rows) const;
    /** The first row from `from` on whose artist + " - " + title holds the text, without case; -1 for none. */
    int NextRowHolding(const QString& text, int from) const;

    /** Titles in the whole archive. */
    qint64 Count() const;
    /** Adds one title; its `Nr` comes back in `record`. Not shown before the next Refresh(). */
    WriteResult AddTitle(TitleRecord& record);
    /** Replaces the record of the same `Nr`; a shown row follows by RowChanged(). */
    WriteResult UpdateRecord(const TitleRecord& record);
    /** All or none; not shown before the next Refresh(). files: in the bin already, an undo brings them back too. */
    WriteResult DeleteTitles(const QList<qint64>& numbers, const QList<Trash::Item>& files = {});
    WriteResult DeleteAll();
    /** Takes the latest deletion since Open() back, under the old numbers. After a failure it can be tried again. */
    WriteResult Undo();
    /**
     * Deletes again what Undo() brought back last, if nothing else was deleted since; after a failure no more. Where
     * files go with their titles this begins a deletion of its own by Bin(), and gives false.
     */
    WriteResult Redo();
    /** Deletes titles with their files. */
    BinMove& Bin() { return *bin_; }

    /** The first title, by artist and title, that meets the criterion; none without an index. */
    std::optional<TitleRecord> FindFirst(const QString& criterion) const;
    /** See ArchiveDatabase. */
    StampCounts CountStamps() const;
    WriteResult ClearStamps();
    /** The titles of a path, compared without case; needs the index, else asks the database. */
    std::optional<TitleRecord> FindByPath(const QString& path) const;
    /** The import's rule: without case, an apostrophe stands for any characters. False before the index is ready. */
    bool HoldsPath(const QString& path) const;
    /** While one lives, added titles are written in batches; see ArchiveSession.h. */
    class Session;

Q_SIGNALS:
    /** The rows are still the old ones; RecordsChanged() follows. */
    void RecordsAboutToChange();
    /** The rows of the current record source are other ones. */
    void RecordsChanged();
    /** One shown row has new content. */
    void RowChanged(int row);
    void CountChanged();
    /** By DeleteTitles() or DeleteAll(). */
    void Deleted(qint64 titles);
    void IndexReady();
    void IndexFailed();
    /** A text for the status line. */
    void Message(const QString& text);

private:
    void SettleLayout(const DataFolder& folder);
    void StartLoading();
    void TakeIndex(const std::shared_ptr<MemoryIndex>& index);
    void ShowRows(std::vector<qint64> rows);
    void PutIntoIndex(const TitleRecord& record);
    bool TakeDeletion(const QList<Trash::Item>& files, const std::function<void()>& updateIndex);
    void TakeRestored(const QList<qint64>& numbers);
    void Reload();
    void ReloadAfterLoss();

    LayoutFile layout_;
    ArchiveDatabase database_;
    std::shared_ptr<MemoryIndex> index_; ///< null until loaded
    bool isLoading_ = false;             ///< also beside an index that is to be exchanged
    std::vector<TitleRecord> writtenWhileLoading_;
    ForeignWrites foreignWrites_;
    std::unique_ptr<RowCache> cache_;
    QString source_;
    RecordSource query_;
    std::vector<qint64> rows_;
    DeletionLog log_;
    std::unique_ptr<IndexLoader> loader_; ///< its thread ends before the rest goes
    std::unique_ptr<BinMove> bin_;        ///< last: it still deletes as it goes
};

} // namespace kalvo
