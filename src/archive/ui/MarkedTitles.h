#pragma once

#include "archive/Archive.h"
#include "archive/BitSet.h"

#include <QItemSelection>

namespace kalvo {

/** The marked titles by their numbers: bookmarks that find them again when the rows have changed. */
class MarkedTitles {
public:
    /** Keeps the titles of the selected rows; the archive still holds the rows that the selection speaks of. */
    void Take(const QItemSelection& selection, const Archive& archive);
    bool IsEmpty() const { return count_ == 0; }

    /**
     * The rows where they are now, as ranges over all columns of the model. Empty when so few of them stand side by
     * side that more than kMostRanges were needed: a view paints every cell by asking range after range.
     */
    QItemSelection RowsIn(const QAbstractItemModel& model, const Archive& archive) const;

    static constexpr int kMostRanges = 1000;

private:
    qint64 first_ = 0; ///< smallest number; bit 0
    BitSet numbers_;
    qint64 count_ = 0;
};

/** The selected rows, ascending, each once. */
QList<int> SelectedRows(const QItemSelection& selection);

} // namespace kalvo
