#pragma once

#include <QAbstractListModel>
#include <QStringList>

namespace kalvo {

/** The files that a scan found: file names to look at, full paths in `pathRole`. */
class ImportFileModel : public QAbstractListModel {
    Q_OBJECT

public:
    static constexpr int pathRole = Qt::UserRole;

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    void Clear();
    void Append(const QStringList& paths);
    const QString& PathAt(int row) const { return paths_.at(row); }

private:
    QStringList paths_;
};

} // namespace kalvo
