#include "playlists/Playlist.h"

#include "base/FileName.h"
#include "base/PlayTime.h"

#include <QColor>

#include <algorithm>

namespace kalvo {

namespace {

constexpr int keyCount = 10000;

/** The rows that exist, each once, in rising order. */
QList<int> Valid(QList<int> rows, int count) {
    rows.removeIf([count](int row) { return row < 0 || row >= count; });
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

Qt::Alignment Alignment(int column) {
    const bool isFigure = column == Playlist::Duration || column == Playlist::Info || column == Playlist::RowNumber;
    return Qt::AlignVCenter | (isFigure ? Qt::AlignRight : Qt::AlignLeft);
}

/** Seconds, as playlist files tell them, are shown like all others. */
QString ShownDuration(const QString& duration) {
    const int seconds = duration.toInt();
    return seconds > 0 ? PlayTime::Format(seconds) : duration;
}

/** What a screen reader says for the mark. */
QString MarkName(EntryIcon icon, bool isCurrent) {
    if (isCurrent)
        return QStringLiteral("aktueller Titel");
    switch (icon) {
    case EntryIcon::Played:
        return QStringLiteral("gespielt");
    case EntryIcon::PlayNext:
        return QStringLiteral("als Nächstes");
    case EntryIcon::PlayNextRemoved:
        return QStringLiteral("nicht mehr als Nächstes");
    case EntryIcon::None:
        break;
    }
    return {};
}

} // namespace

Playlist::Playlist(int number, RandomSource& random, QObject* parent)
    : QAbstractTableModel(parent), number_(number), random_(random) {}

int Playlist::FindPath(const QString& path) const {
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&path](const PlaylistEntry& entry) { return entry.path == path; });
    return found == entries_.end() ? -1 : static_cast<int>(found - entries_.begin());
}

int Playlist::FindEntry(quint64 id) const {
    const auto found =
        std::find_if(entries_.cbegin(), entries_.cend(), [id](const PlaylistEntry& entry) { return entry.id == id; });
    return found == entries_.cend() ? -1 : static_cast<int>(found - entries_.cbegin());
}

void Playlist::Append(const QList<PlaylistEntry>& entries) {
    if (entries.isEmpty())
        return;
    beginInsertRows({}, Count(), Count() + static_cast<int>(entries.size()) - 1);
    PlaceEntries(Count(), entries);
    endInsertRows();
    if (sorting_)
        SortByKeys();
    Q_EMIT Changed();
}

void Playlist::Insert(int row, const QList<PlaylistEntry>& entries) {
    if (entries.isEmpty())
        return;
    row = std::clamp(row, 0, Count());
    sorting_ = false;
    beginInsertRows({}, row, row + static_cast<int>(entries.size()) - 1);
    PlaceEntries(row, entries);
    const bool isMoved = current_ >= row;
    if (isMoved)
        current_ += static_cast<int>(entries.size());
    endInsertRows();
    Q_EMIT Changed();
    if (isMoved)
        Q_EMIT CurrentChanged(current_);
}

void Playlist::Remove(QList<int> rows) {
    rows = Valid(std::move(rows), Count());
    if (rows.isEmpty())
        return;
    const int before = current_;
    for (qsizetype end = rows.size(); end > 0;) { // from below, a run of neighbours at a time
        qsizetype start = end - 1;
        while (start > 0 && rows.at(start - 1) == rows.at(start) - 1)
            --start;
        const int first = rows.at(start);
        const int last = rows.at(end - 1);
        beginRemoveRows({}, first, last);
        entries_.remove(first, last - first + 1);
        if (current_ > last)
            current_ -= last - first + 1;
        else if (current_ >= first)
            ForgetCurrent();
        endRemoveRows();
        end = start;
    }
    Q_EMIT Changed();
    if (current_ != before)
        Q_EMIT CurrentChanged(current_);
}

void Playlist::Clear() {
    Replace({});
}

void Playlist::Move(QList<int> rows, int target) {
    rows = Valid(std::move(rows), Count());
    if (rows.isEmpty())
        return;
    target = std::clamp(target, 0, Count());
    QList<int> order; // the old row of each new place
    order.reserve(Count());
    const auto addStaying = [&order, &rows](int from, int to) {
        for (int row = from; row < to; ++row) {
            if (!std::binary_search(rows.begin(), rows.end(), row))
                order.append(row);
        }
    };
    addStaying(0, target);
    order.append(rows);
    addStaying(target, Count());
    sorting_ = false;
    Reorder(order);
    Q_EMIT Changed();
}

void Playlist::Replace(const QList<PlaylistEntry>& entries) {
    const int before = current_;
    beginResetModel();
    entries_.clear();
    ForgetCurrent();
    sorting_ = false;
    PlaceEntries(0, entries);
    endResetModel();
    Q_EMIT Changed();
    if (before != current_)
        Q_EMIT CurrentChanged(current_);
}

PlaylistState Playlist::State() const {
    return {entries_, current_ < 0 ? 0 : entries_.at(current_).id, passedOver_, sorting_};
}

void Playlist::Restore(const PlaylistState& state) {
    const int before = current_;
    beginResetModel();
    entries_ = state.entries;
    const auto red = std::find_if(entries_.cbegin(), entries_.cend(),
                                  [&state](const PlaylistEntry& entry) { return entry.id == state.current; });
    current_ = red == entries_.cend() ? -1 : static_cast<int>(red - entries_.cbegin());
    passedOver_ = current_ >= 0 && state.passedOver;
    sorting_ = state.sorting;
    endResetModel();
    Q_EMIT Changed();
    if (before != current_)
        Q_EMIT CurrentChanged(current_);
}

void Playlist::SetCurrent(int row) {
    if (row >= Count())
        return;
    if (row >= 0)
        entries_[row].icon = EntryIcon::Played;
    MakeRed(std::max(row, -1), false);
}

void Playlist::PassOver(int row) {
    if (row < 0 || row >= Count())
        return;
    if (entries_.at(row).icon == EntryIcon::PlayNext)
        entries_[row].icon = EntryIcon::None;
    MakeRed(row, true);
}

void Playlist::MarkPlayNext(int row) {
    if (row >= 0 && row < Count())
        SetIcon(row, EntryIcon::PlayNext);
}

void Playlist::UnmarkPlayNext(int row) {
    if (row >= 0 && row < Count() && entries_.at(row).icon == EntryIcon::PlayNext)
        SetIcon(row, EntryIcon::PlayNextRemoved);
}

void Playlist::SetInfo(int row, const QString& info) {
    if (row < 0 || row >= Count() || entries_.at(row).info == info)
        return;
    entries_[row].info = info;
    RowChanged(row);
    Q_EMIT Changed();
}

void Playlist::SetPath(int row, const QString& path) {
    if (row < 0 || row >= Count())
        return;
    entries_[row].path = path;
    RowChanged(row);
    Q_EMIT Changed();
}

void Playlist::SetTexts(int row, const QString& title, const QString& artist) {
    if (row < 0 || row >= Count())
        return;
    entries_[row].title = title;
    entries_[row].artist = artist;
    RowChanged(row);
    Q_EMIT Changed();
}

void Playlist::Shuffle() {
    for (PlaylistEntry& entry : entries_)
        entry.shuffleKey = FreshShuffleKey();
    sorting_ = true;
    SortByKeys();
    Q_EMIT Changed();
}

QString Playlist::FreshShuffleKey() {
    return QString::number(static_cast<int>(random_.Uniform() * keyCount + 1));
}

void Playlist::PlaceEntries(int row, const QList<PlaylistEntry>& entries) {
    entries_.insert(row, entries.size(), PlaylistEntry());
    for (const PlaylistEntry& entry : entries) {
        PlaylistEntry& placed = entries_[row++];
        placed = entry;
        placed.id = ++lastId_;
        if (placed.shuffleKey.isEmpty())
            placed.shuffleKey = FreshShuffleKey();
    }
}

void Playlist::SortByKeys() {
    QList<int> order(Count());
    for (int row = 0; row < Count(); ++row)
        order[row] = row;
    std::stable_sort(order.begin(), order.end(), [this](int left, int right) {
        return entries_.at(left).shuffleKey < entries_.at(right).shuffleKey;
    });
    Reorder(order);
}

void Playlist::Reorder(const QList<int>& order) {
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    QList<PlaylistEntry> entries;
    entries.reserve(order.size());
    QList<int> places(order.size());
    for (int place = 0; place < Count(); ++place) {
        entries.append(std::move(entries_[order.at(place)]));
        places[order.at(place)] = place;
    }
    entries_.swap(entries);
    const QModelIndexList old = persistentIndexList();
    QModelIndexList moved;
    moved.reserve(old.size());
    for (const QModelIndex& position : old)
        moved.append(index(places.at(position.row()), position.column()));
    changePersistentIndexList(old, moved);
    const int before = current_;
    if (current_ >= 0)
        current_ = places.at(current_);
    Q_EMIT layoutChanged({}, VerticalSortHint);
    if (current_ != before)
        Q_EMIT CurrentChanged(current_);
}

void Playlist::SetIcon(int row, EntryIcon icon) {
    entries_[row].icon = icon;
    RowChanged(row);
    Q_EMIT Changed();
}

void Playlist::MakeRed(int row, bool passedOver) {
    const int before = current_;
    current_ = row;
    passedOver_ = passedOver;
    if (before >= 0)
        RowChanged(before);
    if (row >= 0)
        RowChanged(row);
    Q_EMIT Changed();
    if (before != row)
        Q_EMIT CurrentChanged(row);
}

void Playlist::ForgetCurrent() {
    current_ = -1;
    passedOver_ = false;
}

void Playlist::RowChanged(int row) {
    Q_EMIT dataChanged(index(row, 0), index(row, ColumnCount - 1));
}

int Playlist::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Count();
}

int Playlist::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant Playlist::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const PlaylistEntry& entry = entries_.at(index.row());
    switch (role) {
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(Alignment(index.column()));
    case Qt::DisplayRole:
        return Field(index.row(), index.column());
    case Qt::AccessibleTextRole:
        return index.column() == Mark ? MarkName(entry.icon, index.row() == current_)
                                      : Field(index.row(), index.column());
    case Qt::ForegroundRole:
        return index.row() == current_ ? QVariant(QColor(kCurrentRed)) : QVariant();
    case IconRole:
        return static_cast<int>(entry.icon);
    case CurrentRole:
        return index.row() == current_;
    case PathRole:
        return entry.path;
    default:
        return {};
    }
}

Qt::ItemFlags Playlist::flags(const QModelIndex& index) const {
    return index.isValid() ? QAbstractTableModel::flags(index) | Qt::ItemIsDragEnabled : Qt::NoItemFlags;
}

QVariant Playlist::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role == Qt::TextAlignmentRole && orientation == Qt::Horizontal) {
        return QVariant::fromValue(Alignment(section));
    }
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Vertical)
        return section + 1;
    switch (section) {
    case Title:
        return QStringLiteral("Titel");
    case Artist:
        return QStringLiteral("Interpret");
    case Duration:
        return QStringLiteral("Zeit");
    case ShuffleKey:
        return QStringLiteral("Zufall");
    case Info:
        return QStringLiteral("Info / Cue");
    default:
        return {};
    }
}

QString Playlist::Field(int row, int column) const {
    const PlaylistEntry& entry = entries_.at(row);
    switch (column) {
    case Title:
        return FileName::ShownTitle(entry.title, entry.artist, entry.path);
    case Artist:
        return entry.artist;
    case Duration:
        return ShownDuration(entry.duration);
    case ShuffleKey:
        return entry.shuffleKey;
    case Info:
        return entry.info;
    case RowNumber:
        return QString::number(row + 1);
    default:
        return {};
    }
}

} // namespace kalvo
