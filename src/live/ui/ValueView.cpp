#include "live/ui/ValueView.h"

#include <QItemSelectionModel>
#include <QStringListModel>

#include <algorithm>

namespace kalvo {

ValueView::ValueView(QWidget* parent) : QListView(parent), values_(new QStringListModel(this)) {
    setModel(values_);
    setUniformItemSizes(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    connect(this, &QListView::activated, this, &ValueView::Chosen);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, &ValueView::SelectionChanged);
}

void ValueView::SetValues(const QStringList& values) {
    values_->setStringList(values);
    Q_EMIT SelectionChanged(); // a reset tells nothing of it
}

QStringList ValueView::Values() const {
    return values_->stringList();
}

QStringList ValueView::Selected() const {
    QModelIndexList rows = selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    QStringList selected;
    for (const QModelIndex& row : rows)
        selected.append(row.data().toString());
    return selected;
}

} // namespace kalvo
