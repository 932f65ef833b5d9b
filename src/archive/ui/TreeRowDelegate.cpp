#include "archive/ui/TreeRowDelegate.h"

#include "widgets/Icons.h"
#include "widgets/SkinStyle.h"

namespace kalvo {

QSize TreeRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    return {QStyledItemDelegate::sizeHint(option, index).width(), SkinStyle::Units().TableRow()};
}

/** Painted here and not given by the model: an open row would take the icon of a switched-on button. */
void TreeRowDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    const QString name = index.data(iconNameRole).toString();
    if (name.isEmpty())
        return;
    const Skin& skin = SkinStyle::Colours();
    const int size = SkinStyle::Units().Icon();
    option->features |= QStyleOptionViewItem::HasDecoration;
    option->decorationSize = QSize(size, size);
    option->icon = Icons::Icon(name, option->state & QStyle::State_Selected ? skin.highlightText : skin.dim);
}

} // namespace kalvo
