#pragma once

#include <QKeyEvent>

namespace kalvo {

/** The key that does to a slider what its double click does. The keypad's 0 belongs to the sampler's row of keys. */
inline bool IsResetKey(const QKeyEvent& event) {
    return event.key() == Qt::Key_0 && event.modifiers() == Qt::NoModifier;
}

} // namespace kalvo
