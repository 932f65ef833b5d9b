#pragma once

#include "archive/Archive.h"
#include "archive/GridSort.h"

#include <QAbstractTableModel>

namespace kalvo {

/** The rows of the archive's record source; only rows that somebody looks at are fetched. Columns: the text fields. */
class ArchiveModel : public QAbstractTableModel {
    Q_OBJECT

public:
    /** The archive outlives the model. */
    explicit ArchiveModel(Archive& archive, QObject* parent = nullptr);

    static ArchiveField FieldOf(int column) { return kTextFields[static_cast<std::size_t>(column)]; }
    static int ColumnOf(ArchiveField field);

    /** Headings by column. */
    void SetCaptions(const QStringList& captions);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    /** Sorts by a column as its head was clicked. False when the click changes nothing. */
    bool HeaderClick(ArchiveField field, const GridFilter& filter);

private:
    Archive& archive_;
    GridSort sort_;
    QStringList captions_; ///< empty: the fields' own
};

} // namespace kalvo
