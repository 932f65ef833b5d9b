#pragma once

#include "widgets/Spoken.h"

#include <QSlider>

namespace kalvo {

/**
 * The cross-fader, -100 to 100, with both players' volumes beneath. Arrow keys and wheel move it by 5, page keys by
 * 25, a press beside the handle by 10, a double click or 0 sets it to the centre; the handle is taken over the whole
 * height.
 */
class FaderSlider : public QSlider, public Spoken {
    Q_OBJECT

public:
    explicit FaderSlider(QWidget* parent = nullptr);

    QAccessible::Role SpokenRole() const override { return QAccessible::Slider; }
    /** Both players' volumes. */
    QString SpokenValue() const override;
    std::optional<Number> SpokenNumber() const override;
    void SetSpokenNumber(double value) override { setValue(qRound(value)); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    struct Measures;

    Measures Measure() const;
    void PaintGroove(QPainter& painter, const Measures& measures) const;
    void PaintTexts(QPainter& painter, const Measures& measures) const;
    void PaintHandle(QPainter& painter, const Measures& measures) const;

    int grip_ = 0;
    int wheel_ = 0;
};

} // namespace kalvo
