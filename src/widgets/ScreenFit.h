#pragma once

#include <QScreen>
#include <QWidget>

namespace kalvo {

/** Resizes a window that is about to be shown, but leaves a tenth of its screen free: for the frame, and to see behind
 * it. */
inline void ResizeOnScreen(QWidget& window, const QSize& wanted) {
    window.resize(wanted.boundedTo(window.screen()->availableGeometry().size() * 9 / 10));
}

} // namespace kalvo
