#pragma once

#include "archive/ArchiveField.h"

#include <QList>
#include <QString>

namespace kalvo {

/** What the archive view shows when a column head is clicked. */
struct GridFilter {
    QString quickSearch;    ///< text of the search box
    bool treeShown = false; ///< whether the category tree is open
    QString treeValue;      ///< text of its selected value node; empty when none or a category is selected
    QList<ArchiveField> visibleFields;

    /** Two characters or more in the search box, or the tree open. */
    bool Active() const { return treeShown || quickSearch.size() >= 2; }
    /** What the rows are narrowed to; may be empty while the tree is shown, which then means every row. */
    const QString& Text() const { return treeShown ? treeValue : quickSearch; }
};

/** By which column the archive grid is sorted. The mark in the caption is the only record of the direction. */
class GridSort {
public:
    /**
     * A click on a column's head: marks the column and gives the record source to apply. Empty when the click changes
     * nothing: track and last-played cannot be sorted while a filter is active.
     */
    QString HeaderClick(ArchiveField field, const GridFilter& filter);

    /** Heading of a column, with " >" (ascending) or " <" (descending) on the sorted one. */
    QString Caption(ArchiveField field) const { return Caption(field, FieldCaption(field)); }
    /** The same for a heading of the user's own. */
    QString Caption(ArchiveField field, const QString& plain) const;
    bool IsSorted(ArchiveField field) const { return field_ == field; }

private:
    std::optional<ArchiveField> field_;
    bool descending_ = false;
};

} // namespace kalvo
