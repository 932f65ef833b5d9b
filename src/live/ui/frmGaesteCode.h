#pragma once

#include "live/GuestCode.h"

#include <QWidget>

namespace kalvo {

/**
 * The guests' page as a QR code that fills a screen, with the address in words: for a projector or to be shown around.
 * Black on white whatever the skin, since cameras read that best. Esc or a click closes it.
 */
class frmGaesteCode : public QWidget {
    Q_OBJECT

public:
    explicit frmGaesteCode(QWidget* parent = nullptr);

    /** "http://192.168.0.5:8090/" */
    void SetAddress(const QString& address);
    /** Fills the screen that the parent's window is not on, its own when there is no other. */
    void ShowLarge();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    QString address_;
    GuestCode code_;
};

} // namespace kalvo
