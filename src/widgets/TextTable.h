#pragma once

#include <QAbstractTableModel>
#include <QList>
#include <QStringList>
#include <QTableView>

namespace kalvo {

/** Rows of texts under fixed headers. */
class TextTableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    /** figures: columns of numbers, aligned to the right. */
    TextTableModel(QStringList headers, QList<int> figures, QObject* parent = nullptr);

    void SetRows(QList<QStringList> rows);
    /** The selection goes along with the rows. */
    void InsertRow(int row, const QStringList& texts);
    void MoveRow(int from, int to);
    void RemoveRow(int row);
    /** New texts for the rows from this one on. */
    void ChangeRows(int first, const QList<QStringList>& rows);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QStringList headers_;
    QList<int> figures_;
    QList<QStringList> rows_;
};

/** The plain table of the dialogs: rows are selected whole, nothing is edited, sizes follow the font. */
class TextTable : public QTableView {
    Q_OBJECT

public:
    /** widths: of the columns in font heights; those with 0 share the room that is left. */
    TextTable(TextTableModel& model, const QList<double>& widths, QWidget* parent = nullptr);

    /** In rising order. */
    QList<int> SelectedRows() const;

protected:
    void changeEvent(QEvent* event) override;

private:
    void TakeUnits();

    QList<double> widths_;
};

} // namespace kalvo
