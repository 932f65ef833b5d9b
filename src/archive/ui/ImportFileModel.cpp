#include "archive/ui/ImportFileModel.h"

#include "base/FileName.h"
#include "widgets/PlainTip.h"

namespace kalvo {

int ImportFileModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(paths_.size());
}

QVariant ImportFileModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const QString& path = paths_.at(index.row());
    if (role == Qt::DisplayRole)
        return FileName::Last(path);
    if (role == Qt::ToolTipRole)
        return PlainTip(path);
    return role == pathRole ? QVariant(path) : QVariant();
}

void ImportFileModel::Clear() {
    beginResetModel();
    paths_.clear();
    endResetModel();
}

void ImportFileModel::Append(const QStringList& paths) {
    if (paths.isEmpty())
        return;
    const int first = rowCount();
    beginInsertRows({}, first, first + static_cast<int>(paths.size()) - 1);
    paths_.append(paths);
    endInsertRows();
}

} // namespace kalvo
