#include "widgets/PitchSlider.h"

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

void PitchSlider::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        setValue(0);
}

} // namespace kalvo
