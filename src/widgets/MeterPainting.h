#pragma once

#include "widgets/MeterBallistics.h"
#include "widgets/MeterStyle.h"

#include <QColor>
#include <QRect>

#include <array>

class QPainter;

namespace kalvo {

/** Bars of the spectrum. */
constexpr std::size_t kMeterBands = 26;

/** What a meter shows at this moment. */
struct MeterPicture {
    std::array<MeterBallistics, 2> channels; ///< left, right
    std::array<float, 2> needles{};          ///< 0 to 1; slower than the channels
    std::array<MeterBallistics, kMeterBands> bands;
    QColor colour; ///< of everything lit; invalid: the skin's
};

/** Paints what stands still behind the picture, a scale. */
void PaintMeterScale(QPainter& painter, const QRect& room, MeterStyle style);

/** Paints the picture in this style into the rectangle, whose background is painted already. Sizes in pixels. */
void PaintMeter(QPainter& painter, const QRect& room, MeterStyle style, const MeterPicture& picture);

/** The skin's colour of a level of 0 to 1: low, middle or high. */
const QColor& MeterZoneColour(double share);

} // namespace kalvo
