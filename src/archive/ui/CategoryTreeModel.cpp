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

void CategoryTreeModel::SetNodes(QList<ArchiveTree::Node> nodes) {
    beginResetModel();
    nodes_ = std::move(nodes);
    endResetModel();
}

const ArchiveTree::Node& CategoryTreeModel::NodeAt(const QModelIndex& index) const {
    if (index.internalId() == topId)
        return nodes_[index.row()];
    return nodes_[static_cast<qsizetype>(index.internalId()) - 1].values[index.row()];
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
        return static_cast<int>(nodes_.size());
    return static_cast<int>(NodeAt(parent).values.size());
}

QVariant CategoryTreeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const ArchiveTree::Node& node = NodeAt(index);
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

/** The spacer, which has no key, cannot be selected. */
Qt::ItemFlags CategoryTreeModel::flags(const QModelIndex& index) const {
    if (!index.isValid() || NodeAt(index).key.isEmpty())
        return Qt::ItemIsEnabled;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

} // namespace kalvo
