#pragma once

#include <QSlider>

namespace kalvo {

/** An upright slider; a double click sets it to 0. */
class BandSlider : public QSlider {
    Q_OBJECT

public:
    explicit BandSlider(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
};

} // namespace kalvo
