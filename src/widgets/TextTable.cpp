#include "widgets/TextTable.h"

#include "widgets/PlainTip.h"
#include "widgets/SkinStyle.h"

#include <QEvent>
#include <QHeaderView>

#include <algorithm>

namespace kalvo {

TextTableModel::TextTableModel(QStringList headers, QList<int> figures, QObject* parent)
    : QAbstractTableModel(parent), headers_(std::move(headers)), figures_(std::move(figures)) {}

void TextTableModel::SetRows(QList<QStringList> rows) {
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
}

void TextTableModel::InsertRow(int row, const QStringList& texts) {
    beginInsertRows({}, row, row);
    rows_.insert(row, texts);
    endInsertRows();
}

void TextTableModel::MoveRow(int from, int to) {
    if (from == to)
        return;
    beginMoveRows({}, from, from, {}, to > from ? to + 1 : to);
    rows_.move(from, to);
    endMoveRows();
}

void TextTableModel::RemoveRow(int row) {
    beginRemoveRows({}, row, row);
    rows_.removeAt(row);
    endRemoveRows();
}

void TextTableModel::ChangeRows(int first, const QList<QStringList>& rows) {
    if (rows.isEmpty())
        return;
    std::copy(rows.begin(), rows.end(), rows_.begin() + first);
    Q_EMIT dataChanged(index(first, 0), index(first + static_cast<int>(rows.size()) - 1, columnCount() - 1));
}

int TextTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int TextTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(headers_.size());
}

QVariant TextTableModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    if (role == Qt::DisplayRole)
        return rows_.at(index.row()).value(index.column());
    if (role == Qt::ToolTipRole)
        return PlainTip(rows_.at(index.row()).value(index.column()));
    if (role == Qt::TextAlignmentRole) {
        const bool isFigure = figures_.contains(index.column());
        return QVariant::fromValue(Qt::AlignVCenter | (isFigure ? Qt::AlignRight : Qt::AlignLeft));
    }
    return {};
}

QVariant TextTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical)
        return {};
    if (role == Qt::TextAlignmentRole) {
        const bool isFigure = figures_.contains(section);
        return QVariant::fromValue(Qt::AlignVCenter | (isFigure ? Qt::AlignRight : Qt::AlignLeft));
    }
    return role == Qt::DisplayRole ? headers_.value(section) : QVariant();
}

TextTable::TextTable(TextTableModel& model, const QList<double>& widths, QWidget* parent)
    : QTableView(parent), widths_(widths) {
    setModel(&model);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setShowGrid(false);
    setWordWrap(false);
    setAlternatingRowColors(true);
    setTabKeyNavigation(false);
    setCornerButtonEnabled(false);
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(0);
    horizontalHeader()->setHighlightSections(false);
    for (int column = 0; column < widths.size(); ++column)
        horizontalHeader()->setSectionResizeMode(column, widths.at(column) > 0 ? QHeaderView::Interactive
                                                                               : QHeaderView::Stretch);
    TakeUnits();
}

void TextTable::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::StyleChange)
        TakeUnits();
}

void TextTable::TakeUnits() {
    const FontUnits& units = SkinStyle::Units();
    verticalHeader()->setDefaultSectionSize(units.TableRow());
    horizontalHeader()->setFixedHeight(units.ColumnHead());
    horizontalHeader()->setMinimumSectionSize(units.Of(4.6)); // of columns that share what is left
    for (int column = 0; column < widths_.size(); ++column) {
        if (widths_.at(column) > 0)
            setColumnWidth(column, units.Of(widths_.at(column)));
    }
}

QList<int> TextTable::SelectedRows() const {
    QList<int> rows;
    const QModelIndexList selected = selectionModel()->selectedRows();
    for (const QModelIndex& index : selected)
        rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

} // namespace kalvo
