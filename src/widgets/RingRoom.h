#pragma once

#include <QFrame>

namespace kalvo {

/**
 * Controls of a window kept together: there is room for the focus rings of those at its edges, and layouts align it by
 * the controls themselves. Its own layout has margins of focusRingMargin.
 */
class RingRoom : public QFrame {
    Q_OBJECT

public:
    explicit RingRoom(QWidget* parent = nullptr) : QFrame(parent) {
        setFrameStyle(QFrame::NoFrame); // asks the style anew, which knows this class only now
    }
};

} // namespace kalvo
