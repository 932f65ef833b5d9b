#pragma once

#include <limits>

namespace kalvo {

/**
 * How much of the console and the lists is shown; counted in font units, so that a big font folds like a small screen.
 * Low is the narrow layout with a console as low as it gets; lists and archive know the others only.
 */
enum class LayoutMode { Low, Narrow, Normal, Wide };

/**
 * width, height: of the main window in logical pixels; fontHeight: FontUnits::F. Low below 44 F of height, narrow below
 * 50 F of height or 76 F of width, wide from 120 F.
 */
constexpr LayoutMode LayoutModeFor(int width, int fontHeight, int height = std::numeric_limits<int>::max()) {
    if (height < 44 * fontHeight)
        return LayoutMode::Low;
    if (width < 76 * fontHeight || height < 50 * fontHeight)
        return LayoutMode::Narrow;
    return width < 120 * fontHeight ? LayoutMode::Normal : LayoutMode::Wide;
}

constexpr bool IsNarrow(LayoutMode mode) {
    return mode == LayoutMode::Narrow || mode == LayoutMode::Low;
}

} // namespace kalvo
