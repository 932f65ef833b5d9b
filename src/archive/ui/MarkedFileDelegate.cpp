#include "archive/ui/MarkedFileDelegate.h"

#include "widgets/ButtonPainting.h"
#include "widgets/SkinStyle.h"

#include <QPainter>

namespace kalvo {

void MarkedFileDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const Skin& skin = SkinStyle::Colours();
    const FontUnits& units = SkinStyle::Units();
    const bool marked = option.state & QStyle::State_Selected;
    painter->fillRect(option.rect, index.row() % 2 ? skin.alt : skin.base);

    const int size = units.Of(1.15);
    const int inset = units.Of(0.6);
    const QRect box(option.rect.x() + inset, option.rect.y() + (option.rect.height() - size) / 2, size, size);
    PaintCheckBox(*painter, box, QStyle::State_Enabled | (marked ? QStyle::State_On : QStyle::State_Off));

    const QRect place = option.rect.adjusted(inset + size + units.Of(0.5), 0, -inset, 0);
    painter->setPen(skin.text);
    painter->setFont(option.font);
    painter->drawText(place, Qt::AlignVCenter | Qt::AlignLeft,
                      option.fontMetrics.elidedText(index.data().toString(), Qt::ElideRight, place.width()));
    if (option.state & QStyle::State_HasFocus) {
        painter->setPen(QPen(skin.highlight, 2));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(option.rect.adjusted(1, 1, -1, -1));
    }
}

QSize MarkedFileDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    return {SkinStyle::Units().Of(8), SkinStyle::Units().TableRow()};
}

} // namespace kalvo
