#pragma once

#include <QStyledItemDelegate>

namespace kalvo {

/** Paints a list's own selection as check boxes, since a thousand coloured rows tell nobody anything. */
class MarkedFileDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace kalvo
