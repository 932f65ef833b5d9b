#pragma once

#include <QPushButton>
#include <QVariant>

namespace kalvo {

inline constexpr const char* kMainButtonProperty = "kalvoMainButton";

/**
 * What Enter does and the window is there for: the one filled button in it; not filled while it ends what it began.
 * Icon buttons are switched on instead.
 */
inline void MakeMain(QPushButton& button, bool filled = true) {
    button.setDefault(true);
    button.setProperty(kMainButtonProperty, filled);
    button.update();
}

inline bool IsMainButton(const QWidget& widget) {
    return widget.property(kMainButtonProperty).toBool();
}

} // namespace kalvo
