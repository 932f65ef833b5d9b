#pragma once

#include <QStyledItemDelegate>

namespace kalvo {

/** Rows of a tree: as high as a table's, their icon in the colour that fits the row. */
class TreeRowDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    /** Role that a model answers with the icon's name; without one the row has none. */
    static constexpr int iconNameRole = Qt::UserRole + 20;

    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

} // namespace kalvo
