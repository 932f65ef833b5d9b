#include "archive/ui/MarkedTitles.h"

#include <algorithm>

namespace kalvo {

namespace {

/** Numbers further apart than this are not those of a grown archive; 32 MB of bits. */
constexpr qint64 kWidest = qint64{1} << 28;

} // namespace

QList<int> SelectedRows(const QItemSelection& selection) {
    QList<std::pair<int, int>> ranges;
    for (const QItemSelectionRange& range : selection)
        ranges.append({range.top(), range.bottom()});
    std::sort(ranges.begin(), ranges.end());
    QList<int> rows;
    for (const auto& [top, bottom] : std::as_const(ranges)) {
        for (int row = rows.isEmpty() ? top : std::max(top, rows.last() + 1); row <= bottom; ++row)
            rows.append(row);
    }
    return rows;
}

void MarkedTitles::Take(const QItemSelection& selection, const Archive& archive) {
    const QList<int> rows = SelectedRows(selection);
    numbers_ = BitSet();
    count_ = 0;
    qint64 last = first_ = rows.isEmpty() ? 0 : archive.IdAt(rows.first());
    for (const int row : rows) {
        first_ = std::min(first_, archive.IdAt(row));
        last = std::max(last, archive.IdAt(row));
    }
    if (rows.isEmpty() || last - first_ >= kWidest)
        return;
    numbers_.Resize(static_cast<std::size_t>(last - first_) + 1);
    for (const int row : rows)
        numbers_.Set(static_cast<std::size_t>(archive.IdAt(row) - first_));
    count_ = rows.size();
}

QItemSelection MarkedTitles::RowsIn(const QAbstractItemModel& model, const Archive& archive) const {
    QItemSelection found;
    const int rows = model.rowCount();
    const auto marked = [&](int row) {
        const qint64 place = archive.IdAt(row) - first_;
        return place >= 0 && place < static_cast<qint64>(numbers_.Size()) &&
               numbers_.Test(static_cast<std::size_t>(place));
    };
    for (int row = 0; row < rows; ++row) {
        if (!marked(row))
            continue;
        const int top = row;
        while (row + 1 < rows && marked(row + 1))
            ++row;
        if (found.size() == kMostRanges)
            return {};
        found.append(QItemSelectionRange(model.index(top, 0), model.index(row, model.columnCount() - 1)));
    }
    return found;
}

} // namespace kalvo
