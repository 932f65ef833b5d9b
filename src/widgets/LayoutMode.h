#pragma once

namespace kalvo {

/** How much of the console and the lists is shown; counted in font units, so that a big font folds like a small screen.
 */
enum class LayoutMode { Narrow, Normal, Wide };

/** width: of the main window in logical pixels; fontHeight: FontUnits::F. Narrow below 76 F, wide from 120 F. */
constexpr LayoutMode LayoutModeFor(int width, int fontHeight) {
    if (width < 76 * fontHeight)
        return LayoutMode::Narrow;
    return width < 120 * fontHeight ? LayoutMode::Normal : LayoutMode::Wide;
}

} // namespace kalvo
