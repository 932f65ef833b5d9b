#pragma once

#include "archive/Archive.h"
#include "archive/RowCache.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QSet>

namespace kalvo {

/**
 * The rows of the duplicate window: path, artist, title and size of each file; an empty row after each group. Only rows
 * that somebody looks at are fetched. One whose title has left the archive since says so.
 */
class DuplicateModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Path, Artist, Title, Size, ColumnCount };

    /** The archive outlives the model. */
    explicit DuplicateModel(Archive& archive, QObject* parent = nullptr);

    void Clear() { Show({}, false); }
    /** numbers: `Nr` by row, 0 for an empty row. sizes: whether those of the files are shown. */
    void Show(std::vector<qint64> numbers, bool sizes);
    /** Takes rows away; an empty row goes with the last of its group. */
    void Remove(const QSet<qint64>& numbers);

    /** 0 in an empty row. */
    qint64 NumberAt(int row) const { return numbers_[static_cast<std::size_t>(row)]; }
    /** `Nr` is 0 in an empty row and when the title is gone. */
    TitleRecord TitleAt(int row) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    void FetchAnew();
    QString SizeText(const TitleRecord& title) const;

    Archive& archive_;
    std::vector<qint64> numbers_;
    mutable RowCache cache_;
    bool sizes_ = false;
    mutable QHash<qint64, QString> sizeTexts_; ///< asked of the file system only for rows that somebody looks at
};

} // namespace kalvo
