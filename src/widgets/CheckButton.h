#pragma once

#include <QCheckBox>

namespace kalvo {

/** A check box in a button's frame. */
class CheckButton : public QCheckBox {
    Q_OBJECT

public:
    explicit CheckButton(const QString& text, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& position) const override { return rect().contains(position); }
};

} // namespace kalvo
