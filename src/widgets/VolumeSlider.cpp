#include "widgets/VolumeSlider.h"

namespace kalvo {

VolumeSlider::VolumeSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent) {
    setRange(0, 100);
    setSingleStep(1);
    setPageStep(10);
    setFocusPolicy(Qt::TabFocus);
}

} // namespace kalvo
