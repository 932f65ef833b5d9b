#pragma once

#include <QSlider>

namespace kalvo {

/** Pitch in steps of 0.1 %, -120 to 120; a double click sets it to 0. */
class PitchSlider : public QSlider {
    Q_OBJECT

public:
    explicit PitchSlider(QWidget* parent = nullptr);

    /** "0,0 %", "+1,5 %", "−12,0 %". */
    static QString TextOf(int permille);

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
};

} // namespace kalvo
