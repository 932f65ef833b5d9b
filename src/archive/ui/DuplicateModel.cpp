#include "archive/ui/DuplicateModel.h"

namespace kalvo {

void DuplicateModel::SetRows(QList<TitleRecord> rows, bool sizes) {
    beginResetModel();
    rows_ = std::move(rows);
    sizes_ = sizes;
    sizeTexts_.clear();
    endResetModel();
}

void DuplicateModel::ShowGroups(const QList<QList<TitleRecord>>& groups) {
    QList<TitleRecord> rows;
    for (const QList<TitleRecord>& group : groups) {
        rows.append(group);
        rows.append(TitleRecord());
    }
    SetRows(std::move(rows), true);
}

void DuplicateModel::Remove(const QSet<qint64>& numbers) {
    beginResetModel();
    QList<TitleRecord> kept;
    for (const TitleRecord& row : std::as_const(rows_)) {
        const bool strayGap = row.Nr == 0 && (kept.isEmpty() || kept.last().Nr == 0);
        if (!strayGap && !numbers.contains(row.Nr))
            kept.append(row);
    }
    rows_ = kept;
    endResetModel();
}

int DuplicateModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int DuplicateModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QString DuplicateModel::SizeText(const TitleRecord& title) const {
    if (!sizes_ || title.Nr == 0)
        return {};
    QString& text = sizeTexts_[title.Nr];
    if (text.isEmpty())
        text = DuplicateTexts::SizeOf(title.Pfad);
    return text;
}

QVariant DuplicateModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>(Qt::AlignVCenter | (index.column() == Size ? Qt::AlignRight : Qt::AlignLeft));
    const TitleRecord& title = rows_[index.row()];
    if (role == Qt::ToolTipRole && title.Nr != 0)
        return title.Pfad;
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case Path:
        return title.Pfad;
    case Artist:
        return title.Interpret;
    case Title:
        return title.Titel;
    default:
        return SizeText(title);
    }
}

QVariant DuplicateModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>(Qt::AlignVCenter | (section == Size ? Qt::AlignRight : Qt::AlignLeft));
    if (role != Qt::DisplayRole)
        return {};
    static const QStringList captions{tr("Pfad"), tr("Interpret"), tr("Titel"), tr("Größe")};
    return captions.value(section);
}

/** Empty rows only part the groups. */
Qt::ItemFlags DuplicateModel::flags(const QModelIndex& index) const {
    if (!index.isValid() || rows_[index.row()].Nr == 0)
        return Qt::ItemIsEnabled;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

} // namespace kalvo
