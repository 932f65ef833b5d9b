#include "archive/ui/ArchiveModel.h"

#include "archive/ui/FoundTextDelegate.h"

#include <QFont>

#include <algorithm>

namespace kalvo {

namespace {

bool IsFigure(ArchiveField field) {
    return field == ArchiveField::Zeit || field == ArchiveField::Jahr || field == ArchiveField::Extra3 ||
           field == ArchiveField::Extra4;
}

int AlignmentOf(ArchiveField field) {
    return static_cast<int>(Qt::AlignVCenter | (IsFigure(field) ? Qt::AlignRight : Qt::AlignLeft));
}

} // namespace

ArchiveModel::ArchiveModel(Archive& archive, QObject* parent) : QAbstractTableModel(parent), archive_(archive) {
    connect(&archive, &Archive::RecordsAboutToChange, this, [this] { beginResetModel(); });
    connect(&archive, &Archive::RecordsChanged, this, [this] { endResetModel(); });
    connect(&archive, &Archive::RowChanged, this,
            [this](int row) { Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1)); });
}

int ArchiveModel::ColumnOf(ArchiveField field) {
    return static_cast<int>(std::find(kTextFields.begin(), kTextFields.end(), field) - kTextFields.begin());
}

void ArchiveModel::SetCaptions(const QStringList& captions) {
    captions_ = captions;
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

int ArchiveModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : archive_.RowCount();
}

int ArchiveModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(kTextFields.size());
}

QVariant ArchiveModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const ArchiveField field = FieldOf(index.column());
    switch (role) {
    case Qt::DisplayRole:
        return FieldText(archive_.RowAt(index.row()), field);
    case Qt::TextAlignmentRole:
        return AlignmentOf(field);
    case FoundTextDelegate::dimRole:
        return field == ArchiveField::Pfad;
    default:
        return {};
    }
}

QVariant ArchiveModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal)
        return {};
    const ArchiveField field = FieldOf(section);
    switch (role) {
    case Qt::DisplayRole:
        return sort_.Caption(field, captions_.value(section, FieldCaption(field)));
    case Qt::TextAlignmentRole:
        return AlignmentOf(field);
    case Qt::FontRole:
        if (sort_.IsSorted(field)) {
            QFont bold;
            bold.setBold(true);
            return bold;
        }
        return {};
    default:
        return {};
    }
}

Qt::ItemFlags ArchiveModel::flags(const QModelIndex& index) const {
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren
                           : Qt::ItemFlags();
}

bool ArchiveModel::HeaderClick(ArchiveField field, const GridFilter& filter) {
    const QString statement = sort_.HeaderClick(field, filter);
    if (statement.isEmpty())
        return false;
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
    return archive_.SetRecordSource(statement);
}

} // namespace kalvo
