#pragma once

#include <QSlider>

namespace kalvo {

/** A small volume slider, 0 to 100. */
class VolumeSlider : public QSlider {
    Q_OBJECT

public:
    explicit VolumeSlider(QWidget* parent = nullptr);
};

} // namespace kalvo
