#include "archive/ui/MenuButton.h"

#include "widgets/ButtonPainting.h"
#include "widgets/Icons.h"
#include "widgets/SkinStyle.h"

#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionToolButton>

namespace kalvo {

MenuButton::MenuButton(const QString& icon, const QString& text, QWidget* parent) : QToolButton(parent), icon_(icon) {
    setText(text);
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setPopupMode(DelayedPopup);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
}

QSize MenuButton::sizeHint() const {
    const FontUnits& units = SkinStyle::Units();
    const int width = units.Of(1.8) + units.Icon() + CaptionWidth(fontMetrics(), text()) + units.Of(2.2);
    return {width + 2 * focusRingMargin, units.Button() + 2 * focusRingMargin};
}

QRect MenuButton::MenuRect() const {
    const QRect frame = rect().adjusted(focusRingMargin, focusRingMargin, -focusRingMargin, -focusRingMargin);
    return frame.adjusted(frame.width() - SkinStyle::Units().Of(1.9), 0, 0, 0);
}

void MenuButton::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && MenuRect().contains(event->position().toPoint()))
        showMenu();
    else
        QToolButton::mousePressEvent(event);
}

void MenuButton::paintEvent(QPaintEvent*) {
    const FontUnits& units = SkinStyle::Units();
    QStyleOptionToolButton option;
    initStyleOption(&option);
    const ButtonColours colours = ColoursOf(option.state & ~QStyle::State_On);
    QPainter painter(this);
    const QRect frame = rect().adjusted(focusRingMargin, focusRingMargin, -focusRingMargin, -focusRingMargin);
    PaintButton(painter, frame, colours);
    if (option.state & QStyle::State_HasFocus)
        PaintFocusRing(painter, frame);

    const auto drawIcon = [&](const QString& name, int x, int size) {
        painter.drawPixmap(x, (height() - size) / 2, Icons::Pixmap(name, colours.ink, size, devicePixelRatioF()));
    };
    const int left = frame.x() + units.Of(0.9);
    drawIcon(icon_, left, units.Icon());
    painter.setPen(colours.ink);
    painter.drawText(frame.adjusted(left - frame.x() + units.Icon() + units.Of(0.5), 0, 0, 0),
                     Qt::AlignVCenter | Qt::TextShowMnemonic, text());
    const QRect menu = MenuRect();
    painter.fillRect(QRect(menu.x(), menu.y() + units.Gap(1), 1, menu.height() - 2 * units.Gap(1)),
                     SkinStyle::Colours().line);
    drawIcon(QStringLiteral("drop-down"), menu.center().x() - units.F() / 2, units.F());
}

} // namespace kalvo
