#include "live/KeypadPads.h"

#include <QtCore/qnamespace.h>

#include <algorithm>
#include <array>

namespace kalvo {

int PadOfKey(int key, bool keypad) {
    constexpr std::array<int, 9> kUnlocked{Qt::Key_End,   Qt::Key_Down, Qt::Key_PageDown, Qt::Key_Left,  Qt::Key_Clear,
                                           Qt::Key_Right, Qt::Key_Home, Qt::Key_Up,       Qt::Key_PageUp};
    if (!keypad)
        return 0;
    if (key >= Qt::Key_1 && key <= Qt::Key_9)
        return key - Qt::Key_0;
    const auto* const found = std::find(kUnlocked.begin(), kUnlocked.end(), key);
    return found == kUnlocked.end() ? 0 : static_cast<int>(found - kUnlocked.begin()) + 1;
}

} // namespace kalvo
