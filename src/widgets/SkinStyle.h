#pragma once

#include "widgets/FontUnits.h"
#include "widgets/Skin.h"

class QApplication;

namespace kalvo {

/**
 * The look of the whole program: Fusion, one palette, one style sheet, one font. UI thread.
 * Applying it again switches live; every widget then gets QEvent::StyleChange.
 * Nothing here is called for signals that change while music plays: those are painted.
 */
class SkinStyle {
public:
    static void Apply(QApplication& application, const QString& skin, const QString& schriftgrad,
                      const QString& buttongroesse);

    /** What is applied; before the first Apply "Light Green" and "klein". The reference holds until the next Apply. */
    static const Skin& Colours();
    static const FontUnits& Units();
};

} // namespace kalvo
