#pragma once

#include "archive/ArchiveTree.h"

#include <QAbstractItemModel>

namespace kalvo {

/** The nodes of the category tree, two levels deep; as quick with hundreds of thousands of values as with ten. */
class CategoryTreeModel : public QAbstractItemModel {
    Q_OBJECT

public:
    /** Roles: the node's key and its image's name. */
    static constexpr int keyRole = Qt::UserRole + 1;
    static constexpr int imageRole = Qt::UserRole + 2;

    using QAbstractItemModel::QAbstractItemModel;

    void SetBranches(QList<ArchiveTree::Branch> branches);

    ArchiveTree::Node NodeAt(const QModelIndex& index) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& = {}) const override { return 1; }
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    QList<ArchiveTree::Branch> branches_;
};

} // namespace kalvo
