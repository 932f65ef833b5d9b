#include "widgets/PitchSlider.h"

#include "widgets/SliderKeys.h"

#include <QMouseEvent>

namespace kalvo {

PitchSlider::PitchSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent) {
    setRange(-120, 120);
    setSingleStep(1);
    setPageStep(10);
    setFocusPolicy(Qt::TabFocus);
}

QString PitchSlider::TextOf(int permille) {
    const QString sign = permille > 0 ? QStringLiteral("+") : permille < 0 ? QString(QChar(0x2212)) : QString();
    const int amount = qAbs(permille);
    return QStringLiteral("%1%2,%3 %").arg(sign).arg(amount / 10).arg(amount % 10);
}

std::optional<Spoken::Number> PitchSlider::SpokenNumber() const {
    return Number{value() / 10.0, minimum() / 10.0, maximum() / 10.0, singleStep() / 10.0};
}

void PitchSlider::keyPressEvent(QKeyEvent* event) {
    if (IsResetKey(*event))
        setValue(0);
    else
        QSlider::keyPressEvent(event);
}

void PitchSlider::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        setValue(0);
}

} // namespace kalvo
