#include "widgets/FaderSlider.h"

#include "base/FaderLaw.h"
#include "widgets/ButtonPainting.h"
#include "widgets/SkinStyle.h"
#include "widgets/SliderKeys.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

namespace kalvo {

/** Places in pixels: the groove from `left` to `right`, the handle's middle from `first` to `last`. */
struct FaderSlider::Measures {
    int left, right, first, last, middle;
    int grooveHeight, handleWidth, handleHeight;
    bool hasReadings; ///< there is room for the percentages below

    int X(int value) const { return first + qRound((value + 100) / 200.0 * (last - first)); }
    int Value(int x) const { return qRound((x - first) * 200.0 / qMax(1, last - first)) - 100; }
    QRect Handle(int value) const {
        return {X(value) - handleWidth / 2, middle - handleHeight / 2, handleWidth, handleHeight};
    }
};

FaderSlider::FaderSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent) {
    setRange(-100, 100);
    setSingleStep(5);
    setPageStep(25);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize FaderSlider::sizeHint() const {
    return {SkinStyle::Units().Of(15), SkinStyle::Units().Of(5.2)};
}

QSize FaderSlider::minimumSizeHint() const {
    return {SkinStyle::Units().Of(10), SkinStyle::Units().Of(3.9)};
}

FaderSlider::Measures FaderSlider::Measure() const {
    const FontUnits& units = SkinStyle::Units();
    const int side = units.Of(2);
    const int handle = units.Of(2.3);
    const int high = units.Of(2.6);
    // Handle and readings together stand in the middle.
    const int readings = units.Of(1.3);
    const bool hasReadings = height() >= high + readings;
    const int middle = qMax(3, (height() - high - (hasReadings ? readings : 0)) / 2) + high / 2;
    const int first = side + handle / 2;
    return {side, width() - side, first, width() - first, middle, units.Of(0.8), handle, high, hasReadings};
}

void FaderSlider::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const Measures measures = Measure();
    PaintGroove(painter, measures);
    PaintTexts(painter, measures);
    PaintHandle(painter, measures);
}

void FaderSlider::PaintGroove(QPainter& painter, const Measures& m) const {
    const Skin& skin = SkinStyle::Colours();
    const FontUnits& units = SkinStyle::Units();
    const int top = m.middle - m.grooveHeight / 2;
    const int centre = m.X(0);
    painter.fillRect(QRect(m.left, top, centre - m.left, m.grooveHeight), skin.p1);
    painter.fillRect(QRect(centre, top, m.right - centre, m.grooveHeight), skin.p2);
    for (int value = -100; value <= 100; value += 25) {
        const int length = units.Of(value % 50 == 0 ? 0.54 : 0.31);
        if (value != 0)
            painter.fillRect(QRect(m.X(value), top + m.grooveHeight + units.Of(0.38), 1, length), skin.edge);
    }
    painter.fillRect(QRect(centre - 3, m.middle - m.grooveHeight, 7, 2 * m.grooveHeight), skin.panel);
    const int reach = qRound(m.grooveHeight * 1.5);
    painter.fillRect(QRect(centre - 1, m.middle - reach, 3, 2 * reach + units.Of(0.3)), skin.text);
}

void FaderSlider::PaintTexts(QPainter& painter, const Measures& m) const {
    const Skin& skin = SkinStyle::Colours();
    const FontUnits& units = SkinStyle::Units();
    const int inset = units.Of(0.3);
    painter.setFont(units.Font(1.6, true));
    const QRect line(inset, m.middle - units.F(), width() - 2 * inset, 2 * units.F());
    painter.setPen(skin.p1);
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("1"));
    painter.setPen(skin.p2);
    painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter, QStringLiteral("2"));

    if (!m.hasReadings)
        return;
    painter.setFont(units.Font());
    painter.setPen(skin.dim);
    const int baseline = m.middle + m.handleHeight / 2 + units.Of(1.1);
    const QString right = QStringLiteral("%1 %").arg(FaderVolume(2, value()));
    painter.drawText(inset, baseline, QStringLiteral("%1 %").arg(FaderVolume(1, value())));
    painter.drawText(width() - inset - painter.fontMetrics().horizontalAdvance(right), baseline, right);
}

void FaderSlider::PaintHandle(QPainter& painter, const Measures& m) const {
    const Skin& skin = SkinStyle::Colours();
    const QRect handle = m.Handle(value());
    painter.fillRect(handle.adjusted(-2, -2, 2, 2), skin.panel);
    painter.fillRect(handle, underMouse() || isSliderDown() ? skin.text : skin.edge);
    painter.fillRect(handle.adjusted(1, 1, -1, -1), isSliderDown() ? skin.line : skin.button);
    const int inset = SkinStyle::Units().Of(0.38);
    painter.fillRect(QRect(handle.center().x() - 1, handle.y() + inset, 3, handle.height() - 2 * inset), skin.text);
    if (hasFocus())
        PaintFocusRing(painter, handle);
}

QString FaderSlider::SpokenValue() const {
    return QStringLiteral("Player 1: %1 %, Player 2: %2 %").arg(FaderVolume(1, value())).arg(FaderVolume(2, value()));
}

std::optional<Spoken::Number> FaderSlider::SpokenNumber() const {
    return Number{double(value()), double(minimum()), double(maximum()), double(singleStep())};
}

void FaderSlider::keyPressEvent(QKeyEvent* event) {
    if (IsResetKey(*event))
        setValue(0);
    else
        QSlider::keyPressEvent(event);
}

void FaderSlider::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return event->ignore();
    const int x = qRound(event->position().x());
    const QRect handle = Measure().Handle(value());
    if (x >= handle.left() && x <= handle.right()) {
        grip_ = x - handle.center().x();
        setSliderDown(true);
    } else {
        setValue(value() + (x < handle.left() ? -10 : 10));
    }
    update();
}

void FaderSlider::mouseMoveEvent(QMouseEvent* event) {
    if (isSliderDown())
        setValue(Measure().Value(qRound(event->position().x()) - grip_));
}

void FaderSlider::mouseReleaseEvent(QMouseEvent*) {
    setSliderDown(false);
    update();
}

void FaderSlider::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        setValue(0);
}

void FaderSlider::wheelEvent(QWheelEvent* event) {
    // A touchpad sends parts of a notch, which is 120.
    wheel_ += event->angleDelta().y();
    const int notches = wheel_ / 120;
    wheel_ -= notches * 120;
    setValue(value() + notches * singleStep());
    event->accept();
}

} // namespace kalvo
