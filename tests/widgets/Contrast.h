#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

namespace kalvo::test {

/** The ratio of two colours as WCAG defines it, 1 to 21. */
inline double Contrast(const QColor& first, const QColor& second) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    const auto luminance = [&linear](const QColor& colour) {
        return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
    };
    const auto [dark, light] = std::minmax({luminance(first), luminance(second)});
    return (light + 0.05) / (dark + 0.05);
}

} // namespace kalvo::test
