#pragma once

#include <QToolButton>

namespace kalvo {

/** A button with an icon, a text and a part at its right end that opens its menu. */
class MenuButton : public QToolButton {
    Q_OBJECT

public:
    MenuButton(const QString& icon, const QString& text, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    /** The part that opens the menu. */
    QRect MenuRect() const;

    QString icon_;
};

} // namespace kalvo
