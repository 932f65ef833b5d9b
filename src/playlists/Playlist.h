#pragma once

#include "base/RandomSource.h"
#include "playlists/PlaylistEntry.h"

#include <QAbstractTableModel>
#include <QList>
#include <QRgb>

namespace kalvo {

/** All that a list holds at a moment; the entries are shared with it until one of both changes. */
struct PlaylistState {
    QList<PlaylistEntry> entries;
    quint64 current = 0; ///< id of the red entry, 0 for none
    bool passedOver = false;
    bool sorting = false;

    bool operator==(const PlaylistState&) const = default;
};

/**
 * One playlist: its entries in play order, at most one of them current (red). UI thread.
 * Rows count from 0 here and from 1 on the screen. As a table model it has one column per place of an entry, and two
 * for its mark and its number; the views take icon and current mark from the roles. Drag and drop belongs to the views.
 */
class Playlist : public QAbstractTableModel {
    Q_OBJECT

public:
    /** The places of an entry in their given order, then what a view shows in front of them. */
    enum Column { Title, Artist, Duration, ShuffleKey, Info, Mark, RowNumber, ColumnCount };
    /** Text colour of the red entry, in all skins. */
    static constexpr QRgb kCurrentRed = 0xFFFF0000;
    enum Role { IconRole = Qt::UserRole + 1, CurrentRole, PathRole };

    /** number: 1 or 2. The random source outlives the list. */
    Playlist(int number, RandomSource& random, QObject* parent = nullptr);

    int Number() const { return number_; }
    int Count() const { return static_cast<int>(entries_.size()); }
    bool IsEmpty() const { return entries_.isEmpty(); }
    const PlaylistEntry& At(int row) const { return entries_.at(row); }
    const QList<PlaylistEntry>& Entries() const { return entries_; }
    /** Row of the red entry, -1 when there is none. */
    int CurrentRow() const { return current_; }
    /** Whether the red entry was passed over instead of being played. */
    bool IsPassedOver() const { return passedOver_; }
    bool IsSorting() const { return sorting_; }

    /** Row of the first entry with this path, compared exactly; -1 when there is none. */
    int FindPath(const QString& path) const;
    /** Row of the entry with this id, -1 when it has gone. */
    int FindEntry(quint64 id) const;

    /** Appends; an empty shuffle key gets a fresh one. While sorting is on each takes its place by its key. */
    void Append(const QList<PlaylistEntry>& entries);
    /** Puts entries before `row`; ends a standing sort. */
    void Insert(int row, const QList<PlaylistEntry>& entries);
    /** Rows in any order; invalid ones are ignored. The red entry may be among them: then none is red. */
    void Remove(QList<int> rows);
    void Clear();
    /** Moves the rows, in their order, before the entry that is at `target` now; ends a standing sort. */
    void Move(QList<int> rows, int target);
    /** Replaces all entries by fresh ones. Ends a standing sort. */
    void Replace(const QList<PlaylistEntry>& entries);

    PlaylistState State() const;
    /** Brings an earlier state of this list back, the entries with their ids. */
    void Restore(const PlaylistState& state);

    /** Makes the entry red and gives it the icon Played; -1: none is red. */
    void SetCurrent(int row);
    /** Red without the icon: an entry that was passed over because its file is missing. */
    void PassOver(int row);
    void MarkPlayNext(int row);
    /** Only where the mark is set. */
    void UnmarkPlayNext(int row);
    void SetInfo(int row, const QString& info);
    /** The file is somewhere else now. */
    void SetPath(int row, const QString& path);
    /** The file's tags have changed. */
    void SetTexts(int row, const QString& title, const QString& artist);

    /** Fresh keys for all, then sorted by the keys as text; sorting stays on. */
    void Shuffle();
    QString FreshShuffleKey();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    /** Entries can be dragged; drops go to the views. */
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

Q_SIGNALS:
    /** Entries, their order or their content have changed: captions, sums and the saved state are to be renewed. */
    void Changed();
    /** The red entry has changed. */
    void CurrentChanged(int row);

private:
    /** Puts entries into entries_ before `row`, with fresh ids, with keys where they have none; tells nobody. */
    void PlaceEntries(int row, const QList<PlaylistEntry>& entries);
    void SortByKeys();
    /** order: for each new place the old row. Views keep their selection. */
    void Reorder(const QList<int>& order);
    void SetIcon(int row, EntryIcon icon);
    void MakeRed(int row, bool passedOver);
    void ForgetCurrent();
    void RowChanged(int row);
    QString Field(int row, int column) const;

    int number_;
    RandomSource& random_;
    QList<PlaylistEntry> entries_;
    quint64 lastId_ = 0;
    int current_ = -1;
    bool passedOver_ = false;
    bool sorting_ = false;
};

} // namespace kalvo
