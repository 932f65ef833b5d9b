#include "archive/ui/ArchiveHeader.h"

#include "widgets/Icons.h"
#include "widgets/SkinStyle.h"

#include <QMouseEvent>
#include <QPainter>

#include <utility>

namespace kalvo {

ArchiveHeader::ArchiveHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    viewport()->setMouseTracking(true);
}

QRect ArchiveHeader::ArrowRect(int section) const {
    if (!HasList(section) || isSectionHidden(section))
        return {};
    // Clear of the handle that resizes the column.
    const int grip = style()->pixelMetric(QStyle::PM_HeaderGripMargin, nullptr, this);
    const int width = SkinStyle::Units().Of(1.3);
    const int right = sectionViewportPosition(section) + sectionSize(section) - grip;
    return {right - width, 0, width, height() - 1};
}

int ArchiveHeader::ArrowAt(const QPoint& place) const {
    const int section = logicalIndexAt(place);
    return ArrowRect(section).contains(place) ? section : -1;
}

void ArchiveHeader::paintSection(QPainter* painter, const QRect& rect, int section) const {
    painter->save();
    QHeaderView::paintSection(painter, rect, section);
    painter->restore();
    if (section != hovered_ || !HasList(section))
        return;
    const Skin& skin = SkinStyle::Colours();
    const QRect arrow = ArrowRect(section);
    const int size = SkinStyle::Units().F();
    painter->fillRect(arrow, skin.panel);
    painter->drawPixmap(arrow.x() + (arrow.width() - size) / 2, (arrow.height() - size) / 2,
                        Icons::Pixmap(QStringLiteral("drop-down"), skin.text, size, devicePixelRatioF()));
}

void ArchiveHeader::mousePressEvent(QMouseEvent* event) {
    pressed_ = event->button() == Qt::LeftButton ? ArrowAt(event->pos()) : -1;
    if (pressed_ < 0)
        QHeaderView::mousePressEvent(event);
}

void ArchiveHeader::mouseReleaseEvent(QMouseEvent* event) {
    const int pressed = std::exchange(pressed_, -1);
    if (pressed < 0)
        return QHeaderView::mouseReleaseEvent(event);
    if (ArrowAt(event->pos()) == pressed)
        Q_EMIT ValueListRequested(pressed);
}

void ArchiveHeader::mouseMoveEvent(QMouseEvent* event) {
    Hover(event->buttons() == Qt::NoButton ? logicalIndexAt(event->pos()) : -1);
    if (pressed_ < 0)
        QHeaderView::mouseMoveEvent(event);
}

void ArchiveHeader::leaveEvent(QEvent* event) {
    Hover(-1);
    QHeaderView::leaveEvent(event);
}

void ArchiveHeader::Hover(int section) {
    const int before = std::exchange(hovered_, section);
    if (before == section)
        return;
    for (const int changed : {before, section}) {
        if (changed >= 0)
            updateSection(changed);
    }
}

} // namespace kalvo
