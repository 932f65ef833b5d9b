#pragma once

#include <cstdint>

namespace kalvo {

/** How levels are shown, in the order in which the styles are offered. */
enum class MeterStyle : std::uint8_t {
    None,
    Analyzer,   ///< spectrum
    VuMeter,    ///< two needles
    Vertical,   ///< two columns
    Horizontal, ///< two rows
    OneCircle,  ///< grows with the louder channel
    TwoCircles,
    OneEllipse,
    TwoEllipses
};

} // namespace kalvo
