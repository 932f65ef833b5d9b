#include "widgets/CheckButton.h"

#include "widgets/ButtonPainting.h"
#include "widgets/SkinStyle.h"

#include <QPainter>
#include <QStyleOptionButton>

namespace kalvo {

namespace {

int BoxSize() {
    return SkinStyle::Units().Of(1.15);
}
int Padding() {
    return SkinStyle::Units().Of(0.6);
}
int Space() {
    return SkinStyle::Units().Of(0.5);
}

} // namespace

CheckButton::CheckButton(const QString& text, QWidget* parent) : QCheckBox(text, parent) {
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize CheckButton::sizeHint() const {
    return {2 * Padding() + BoxSize() + Space() + CaptionWidth(fontMetrics(), text()), SkinStyle::Units().Button()};
}

void CheckButton::paintEvent(QPaintEvent*) {
    QStyleOptionButton option;
    initStyleOption(&option);
    ButtonColours colours = ColoursOf(option.state & ~QStyle::State_On);
    if (option.state & QStyle::State_HasFocus)
        colours.edge = SkinStyle::Colours().text;
    QPainter painter(this);
    PaintButton(painter, rect(), colours);
    if (option.state & QStyle::State_HasFocus)
        PaintFocusRing(painter, rect().adjusted(3, 3, -3, -3));
    const int box = BoxSize();
    PaintCheckBox(painter, QRect(Padding(), (height() - box) / 2, box, box), option.state & ~QStyle::State_MouseOver);
    const int x = Padding() + box + Space();
    painter.setPen(colours.ink);
    painter.drawText(QRect(x, 0, width() - x, height()), Qt::AlignVCenter | Qt::TextShowMnemonic, text());
}

} // namespace kalvo
