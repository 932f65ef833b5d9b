#pragma once
#include <QObject>

namespace kalvo {

/**
 * Cuts what the parts of a window tell it. A window destroyed while it is shown hides its parts last, and their words
 * (a field that loses the focus, columns that are fitted) would find half of it gone: call it in the destructor.
 */
inline void SilenceParts(QObject& window) {
    for (QObject* part : window.findChildren<QObject*>())
        part->disconnect(&window);
}

} // namespace kalvo
