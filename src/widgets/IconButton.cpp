#include "widgets/IconButton.h"

#include "widgets/Icons.h"
#include "widgets/SkinStyle.h"

#include <QAccessible>
#include <QPainter>
#include <QStyleOptionButton>

namespace kalvo {

IconButton::IconButton(const QString& icon, Size size, QWidget* parent)
    : QPushButton(parent), icon_(icon), size_(size) {
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setAutoDefault(false);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void IconButton::SetIconName(const QString& icon) {
    if (icon == icon_)
        return;
    icon_ = icon;
    update();
}

void IconButton::SetIconSide(IconSide side) {
    side_ = side;
    update();
}

void IconButton::SetFill(Fill fill) {
    fill_ = fill;
    update();
}

void IconButton::SetLow(bool low) {
    low_ = low;
    updateGeometry();
}

void IconButton::SetOn(bool on) {
    if (on == on_)
        return;
    on_ = on;
    QAccessible::State changed;
    changed.checked = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
    update();
}

int IconButton::IconSize() const {
    const FontUnits& units = SkinStyle::Units();
    if (size_ == Size::Normal)
        return units.Icon();
    return text().isEmpty() ? units.BigIcon() : units.Of(1.7);
}

QSize IconButton::sizeHint() const {
    const FontUnits& units = SkinStyle::Units();
    const int height = size_ == Size::Normal ? units.Button() : low_ ? units.LowBigButton() : units.BigButton();
    int width = IconSize() + units.Gap(1);
    if (!text().isEmpty())
        width += CaptionWidth(fontMetrics(), text()) + units.Of(0.5) + units.Gap(2);
    width = qMax(width, size_ == Size::Big ? 44 : height);
    return {width + 2 * focusRingMargin, height + 2 * focusRingMargin};
}

ButtonColours IconButton::Colours(QStyle::State state) const {
    const Skin& skin = SkinStyle::Colours();
    if (fill_ == Fill::Warning) {
        ButtonColours colours = ColoursOf(state, skin.warningFill, skin.warningFillInk);
        if (isEnabled() && !(state & (QStyle::State_On | QStyle::State_Sunken)))
            colours.edge = colours.ink = skin.warning;
        return colours;
    }
    if (fill_ == Fill::Highlight)
        return ColoursOf(state);
    const int player = fill_ == Fill::Player2 ? 2 : 1;
    return ColoursOf(state, skin.Player(player), skin.PlayerInk(player));
}

void IconButton::paintEvent(QPaintEvent*) {
    QStyleOptionButton option;
    initStyleOption(&option);
    option.state.setFlag(QStyle::State_On, on_ && !isDown());
    const ButtonColours colours = Colours(option.state);

    QPainter painter(this);
    const QRect frame = rect().adjusted(focusRingMargin, focusRingMargin, -focusRingMargin, -focusRingMargin);
    PaintButton(painter, frame, colours);
    if (option.state & QStyle::State_HasFocus)
        PaintFocusRing(painter, frame);

    const int icon = IconSize();
    const int gap = text().isEmpty() ? 0 : SkinStyle::Units().Of(0.5);
    const int label = text().isEmpty() ? 0 : CaptionWidth(fontMetrics(), text());
    const int start = (width() - icon - gap - label) / 2;
    const bool left = side_ == IconSide::Left;
    const int iconX = left ? start : start + label + gap;
    painter.drawPixmap(iconX, (height() - icon) / 2, Icons::Pixmap(icon_, colours.ink, icon, devicePixelRatioF()));
    painter.setPen(colours.ink);
    painter.drawText(QRect(left ? start + icon + gap : start, 0, label + 2, height()),
                     Qt::AlignVCenter | Qt::TextShowMnemonic, text());
}

} // namespace kalvo
