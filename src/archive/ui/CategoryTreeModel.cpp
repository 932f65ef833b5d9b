#include "archive/ui/CategoryTreeModel.h"

#include "archive/ui/TreeRowDelegate.h"

#include <QHash>

namespace kalvo {

namespace {

/** Inner id of the top level; below it the parent's row + 1. */
constexpr quintptr topId = 0;

QString IconOf(const QString& image) {
    static const QHash<QString, QString> icons{{QStringLiteral("schließen"), QStringLiteral("close")},
                                               {QStringLiteral("aktualisieren"), QStringLiteral("refresh")},
                                               {QStringLiteral("ordner"), QStringLiteral("folder")},
                                               {QStringLiteral("auswahl"), QStringLiteral("tag")}};
    return icons.value(image);
}

} // namespace

void CategoryTreeModel::SetBranches(QList<ArchiveTree::Branch> branches) {
    beginResetModel();
    branches_ = std::move(branches);
    endResetModel();
}

ArchiveTree::Node CategoryTreeModel::NodeAt(const QModelIndex& index) const {
    if (index.internalId() == topId)
        return branches_[index.row()].node;
    return branches_[static_cast<qsizetype>(index.internalId()) - 1].ValueAt(index.row());
}

QModelIndex CategoryTreeModel::index(int row, int column, const QModelIndex& parent) const {
    if (column != 0 || row < 0 || row >= rowCount(parent))
        return {};
    return createIndex(row, column, parent.isValid() ? static_cast<quintptr>(parent.row()) + 1 : topId);
}

QModelIndex CategoryTreeModel::parent(const QModelIndex& child) const {
    if (!child.isValid() || child.internalId() == topId)
        return {};
    return createIndex(static_cast<int>(child.internalId()) - 1, 0, topId);
}

int CategoryTreeModel::rowCount(const QModelIndex& parent) const {
    if (!parent.isValid())
        return static_cast<int>(branches_.size());
    return parent.internalId() == topId ? branches_[parent.row()].Count() : 0;
}

QVariant CategoryTreeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const ArchiveTree::Node node = NodeAt(index);
    switch (role) {
    case Qt::DisplayRole:
        return node.text;
    case keyRole:
        return node.key;
    case imageRole:
        return node.image;
    case TreeRowDelegate::iconNameRole:
        return IconOf(node.image);
    default:
        return {};
    }
}

/** The spacer, which has no key, cannot be selected. Asked for every value when a category unfolds. */
Qt::ItemFlags CategoryTreeModel::flags(const QModelIndex& index) const {
    if (index.isValid() && index.internalId() != topId)
        return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (!index.isValid() || NodeAt(index).key.isEmpty())
        return Qt::ItemIsEnabled;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

} // namespace kalvo
