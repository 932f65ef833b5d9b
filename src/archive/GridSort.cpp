#include "archive/GridSort.h"

#include "archive/ArchiveStatements.h"

namespace kalvo {

QString GridSort::HeaderClick(ArchiveField field, const GridFilter& filter) {
    const bool descending = IsSorted(field) && !descending_;
    QString statement = filter.Active()
                            ? ArchiveStatements::SortedSearch(filter.Text(), filter.visibleFields, field, descending)
                            : ArchiveStatements::Sorted(field, descending);
    if (statement.isEmpty())
        return {};
    field_ = field;
    descending_ = descending;
    return statement;
}

QString GridSort::Caption(ArchiveField field, const QString& plain) const {
    if (!IsSorted(field))
        return plain;
    return plain + (descending_ ? QStringLiteral(" <") : QStringLiteral(" >"));
}

} // namespace kalvo
