#pragma once

#include "archive/DuplicateFinder.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QSet>

namespace kalvo {

/** The rows of the duplicate window: path, artist, title and size of each file; an empty row after each group. */
class DuplicateModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Path, Artist, Title, Size, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    void Clear() { SetRows({}, false); }
    void ShowGroups(const QList<QList<TitleRecord>>& groups);
    /** Titles whose files are missing: without sizes and empty rows. */
    void ShowStale(const QList<TitleRecord>& titles) { SetRows(titles, false); }
    /** Takes rows away; an empty row goes with the last of its group. */
    void Remove(const QSet<qint64>& numbers);

    /** The title of a row; `Nr` is 0 in an empty row. */
    const TitleRecord& TitleAt(int row) const { return rows_[row]; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    void SetRows(QList<TitleRecord> rows, bool sizes);
    QString SizeText(const TitleRecord& title) const;

    QList<TitleRecord> rows_;
    bool sizes_ = false;
    mutable QHash<qint64, QString> sizeTexts_; ///< asked of the file system only for rows that somebody looks at
};

} // namespace kalvo
