#include "archive/ui/FoundTextDelegate.h"

#include "widgets/SkinStyle.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QRegularExpression>

namespace kalvo {

void FoundTextDelegate::SetSearchText(const QString& text) {
    static const QRegularExpression wildcards(QStringLiteral("[*']"));
    pieces_ = text.normalized(QString::NormalizationForm_C).split(wildcards, Qt::SkipEmptyParts);
}

QList<std::pair<int, int>> FoundTextDelegate::FoundIn(const QString& text) const {
    QList<std::pair<int, int>> found;
    qsizetype from = 0;
    for (const QString& piece : pieces_) {
        const qsizetype place = text.indexOf(piece, from, Qt::CaseInsensitive);
        if (place < 0)
            return {};
        found.append({static_cast<int>(place), static_cast<int>(piece.size())});
        from = place + piece.size();
    }
    return found;
}

void FoundTextDelegate::PaintMarks(QPainter& painter, const QStyleOptionViewItem& option, const QRect& place,
                                   const QString& text) const {
    const Skin& skin = SkinStyle::Colours();
    const bool selected = option.state & QStyle::State_Selected;
    const QFontMetrics& metrics = option.fontMetrics;
    const int height = qMin(SkinStyle::Units().Of(1.35), place.height() - 2);
    const int top = place.y() + (place.height() - height) / 2;
    for (const auto& [start, length] : FoundIn(text)) {
        const int left = place.x() + metrics.horizontalAdvance(text.left(start));
        const int right = place.x() + metrics.horizontalAdvance(text.left(start + length));
        const QRect mark = QRect(left, top, right - left, height).intersected(place);
        if (mark.isEmpty())
            continue;
        if (!selected)
            painter.fillRect(mark, skin.mark);
        painter.fillRect(QRect(mark.x(), mark.bottom() - 1, mark.width(), 2),
                         selected ? skin.highlightText : skin.highlight);
    }
}

void FoundTextDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const Skin& skin = SkinStyle::Colours();
    const bool selected = option.state & QStyle::State_Selected;
    const QRect& cell = option.rect;
    painter->fillRect(cell, selected ? skin.highlight : index.row() % 2 ? skin.alt : skin.base);
    painter->fillRect(QRect(cell.right(), cell.y(), 1, cell.height()), skin.grid);

    const int inset = SkinStyle::Units().Of(0.45);
    QRect place = cell.adjusted(inset, 0, -inset, 0);
    const QString text = index.data().toString();
    const int width = option.fontMetrics.horizontalAdvance(text);
    if (index.data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight && width < place.width())
        place.setLeft(place.right() + 1 - width);
    if (!pieces_.isEmpty())
        PaintMarks(*painter, option, place, text);

    painter->setFont(option.font);
    painter->setPen(selected ? skin.highlightText : index.data(dimRole).toBool() ? skin.dim : skin.text);
    painter->drawText(place, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                      width > place.width() ? option.fontMetrics.elidedText(text, Qt::ElideRight, place.width())
                                            : text);

    const auto* view = qobject_cast<const QAbstractItemView*>(option.widget);
    if (!selected && view && view->hasFocus() && view->currentIndex().row() == index.row()) {
        painter->fillRect(QRect(cell.x(), cell.y(), cell.width(), 2), skin.highlight);
        painter->fillRect(QRect(cell.x(), cell.bottom() - 1, cell.width(), 2), skin.highlight);
    }
}

QSize FoundTextDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const int text = option.fontMetrics.horizontalAdvance(index.data().toString());
    return {text + SkinStyle::Units().Of(0.9) + 1, SkinStyle::Units().TableRow()};
}

} // namespace kalvo
