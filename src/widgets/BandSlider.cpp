#include "widgets/BandSlider.h"

#include "widgets/SkinStyle.h"
#include "widgets/SliderKeys.h"

#include <QMouseEvent>

namespace kalvo {

BandSlider::BandSlider(QWidget* parent) : QSlider(Qt::Vertical, parent) {
    setSingleStep(1);
    setPageStep(2);
}

QSize BandSlider::sizeHint() const {
    return {SkinStyle::Units().Of(2), SkinStyle::Units().Of(12)};
}

QSize BandSlider::minimumSizeHint() const {
    return {SkinStyle::Units().Of(1.6), SkinStyle::Units().Of(6)};
}

void BandSlider::keyPressEvent(QKeyEvent* event) {
    if (IsResetKey(*event))
        setValue(0);
    else
        QSlider::keyPressEvent(event);
}

void BandSlider::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        setValue(0);
}

} // namespace kalvo
