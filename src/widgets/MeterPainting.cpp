#include "widgets/MeterPainting.h"

#include "widgets/SkinStyle.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace kalvo {

namespace {

constexpr double kMiddleZone = 0.68;
constexpr double kHighZone = 0.88;
constexpr int kScaleMarks = 10;

QColor Lit(const MeterPicture& picture, double share) {
    return picture.colour.isValid() ? picture.colour : MeterZoneColour(share);
}

void PaintSpectrum(QPainter& painter, const QRect& room, const MeterPicture& picture) {
    const Skin& skin = SkinStyle::Colours();
    const QColor lit = picture.colour.isValid() ? picture.colour : skin.p1;
    const int count = static_cast<int>(kMeterBands);
    const auto left = [&](int bar) { return room.left() + bar * (room.width() + 2) / count; };
    for (int bar = 0; bar < count; ++bar) {
        const MeterBallistics& band = picture.bands.at(static_cast<std::size_t>(bar));
        const int wide = left(bar + 1) - left(bar) - 2;
        const int high = qMax(1, qRound(band.Value() * static_cast<float>(room.height())));
        painter.fillRect(left(bar), room.bottom() + 1 - high, wide, high, lit);
        const int peak = qRound(band.Peak() * static_cast<float>(room.height()));
        if (peak > high)
            painter.fillRect(left(bar), room.bottom() + 1 - peak, wide, 1, skin.text);
    }
}

/** A row or column of segments; it grows to the right or upwards. */
void PaintSegments(QPainter& painter, const QRect& room, bool upright, const MeterBallistics& channel,
                   const MeterPicture& picture) {
    const int step = upright ? 4 : 8;
    const int gap = upright ? 1 : 2;
    const int count = qMax(1, (upright ? room.height() : room.width()) / step);
    const int lit = qRound(channel.Value() * static_cast<float>(count));
    const int peak = qRound(channel.Peak() * static_cast<float>(count)) - 1;
    for (int i = 0; i < count; ++i) {
        const QRect segment =
            upright ? QRect(room.left(), room.bottom() + 1 - (i + 1) * step + gap, room.width(), step - gap)
                    : QRect(room.left() + i * step, room.top(), step - gap, room.height());
        const bool bright = i < lit || i == peak;
        painter.fillRect(segment, bright ? Lit(picture, static_cast<double>(i) / count) : SkinStyle::Colours().line);
    }
}

void PaintRows(QPainter& painter, const QRect& room, const MeterPicture& picture) {
    const int high = (room.height() - 3) / 2;
    PaintSegments(painter, {room.left(), room.top(), room.width(), high}, false, picture.channels[0], picture);
    PaintSegments(painter, {room.left(), room.bottom() + 1 - high, room.width(), high}, false, picture.channels[1],
                  picture);
}

void PaintColumns(QPainter& painter, const QRect& room, const MeterPicture& picture) {
    const int wide = room.width() / 4;
    PaintSegments(painter, {room.center().x() - wide - 2, room.top(), wide, room.height()}, true, picture.channels[0],
                  picture);
    PaintSegments(painter, {room.center().x() + 2, room.top(), wide, room.height()}, true, picture.channels[1],
                  picture);
}

/** Zones from the inside out, so that loud is seen at the rim; a thin ring stands at the peak. */
void PaintRound(QPainter& painter, const QRectF& largest, double value, double peak, const MeterPicture& picture) {
    const auto ellipse = [&](double share) {
        painter.drawEllipse(largest.center(), largest.width() / 2 * share, largest.height() / 2 * share);
    };
    painter.setPen(QPen(SkinStyle::Colours().line, 1));
    painter.setBrush(Qt::NoBrush);
    ellipse(1);
    painter.setPen(Qt::NoPen);
    for (const double zone : {1.0, kHighZone, kMiddleZone}) {
        painter.setBrush(Lit(picture, std::nextafter(zone, 0.0)));
        ellipse(std::min(value, zone));
        if (picture.colour.isValid())
            break;
    }
    if (peak <= value)
        return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Lit(picture, peak), 1.5));
    ellipse(peak);
}

void PaintRounds(QPainter& painter, const QRectF& room, bool circles, bool both, const MeterPicture& picture) {
    painter.setRenderHint(QPainter::Antialiasing);
    const MeterBallistics& left = picture.channels[0];
    const MeterBallistics& right = picture.channels[1];
    const auto place = [&](double middle, double width) {
        const double wide = circles ? room.height() : width;
        return QRectF(middle - wide / 2, room.top(), wide, room.height()).adjusted(1, 1, -1, -1);
    };
    if (!both)
        return PaintRound(painter, place(room.center().x(), room.width() * 0.8), std::max(left.Value(), right.Value()),
                          std::max(left.Peak(), right.Peak()), picture);
    const double half = room.width() / 2;
    PaintRound(painter, place(room.left() + half / 2, half * 0.9), left.Value(), left.Peak(), picture);
    PaintRound(painter, place(room.left() + half * 1.5, half * 0.9), right.Value(), right.Peak(), picture);
}

/** A needle whose pivot lies below the room, over a scale that fills the room's width. */
class Dial {
public:
    /** One half of the meter's room. */
    Dial(const QRectF& meter, int channel) {
        const double width = meter.width() / 2;
        const QRectF room = QRectF(meter.left() + channel * width, meter.top(), width, meter.height())
                                .adjusted(width * 0.06, 1, -width * 0.06, 0);
        const double half = room.width() / 2;
        high_ = room.height() - 2;
        radius_ = (half * half + high_ * high_) / (2 * high_);
        pivot_ = {room.center().x(), room.bottom() - high_ + radius_};
        sweep_ = std::asin(std::min(1.0, half / radius_));
    }

    void PaintScale(QPainter& painter) const {
        const Skin& skin = SkinStyle::Colours();
        for (int mark = 0; mark <= kScaleMarks; ++mark) {
            const double share = static_cast<double>(mark) / kScaleMarks;
            painter.setPen(QPen(share > kHighZone ? skin.meterHigh : skin.dim, mark % 5 == 0 ? 2 : 1));
            painter.drawLine(At(share, radius_), At(share, radius_ - (mark % 5 == 0 ? 0.22 : 0.14) * high_));
        }
    }

    void PaintNeedle(QPainter& painter, double share, const QColor& colour) const {
        painter.setPen(QPen(colour, 2));
        painter.drawLine(At(share, radius_ - 0.05 * high_), At(share, radius_ - high_));
    }

private:
    QPointF At(double share, double distance) const {
        const double angle = (2 * share - 1) * sweep_;
        return pivot_ + QPointF(std::sin(angle), -std::cos(angle)) * distance;
    }

    double high_ = 0;
    double radius_ = 0;
    QPointF pivot_;
    double sweep_ = 0; ///< from the middle to one end
};

void PaintNeedles(QPainter& painter, const QRectF& room, const MeterPicture& picture) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(room);
    const QColor colour = picture.colour.isValid() ? picture.colour : SkinStyle::Colours().text;
    for (const int channel : {0, 1})
        Dial(room, channel).PaintNeedle(painter, picture.needles.at(static_cast<std::size_t>(channel)), colour);
}

} // namespace

const QColor& MeterZoneColour(double share) {
    const Skin& skin = SkinStyle::Colours();
    return share < kMiddleZone ? skin.meterLow : share < kHighZone ? skin.meterMid : skin.meterHigh;
}

void PaintMeterScale(QPainter& painter, const QRect& room, MeterStyle style) {
    if (style != MeterStyle::VuMeter)
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(room);
    for (const int channel : {0, 1})
        Dial(room, channel).PaintScale(painter);
}

void PaintMeter(QPainter& painter, const QRect& room, MeterStyle style, const MeterPicture& picture) {
    switch (style) {
    case MeterStyle::None:
        return;
    case MeterStyle::Analyzer:
        return PaintSpectrum(painter, room, picture);
    case MeterStyle::VuMeter:
        return PaintNeedles(painter, room, picture);
    case MeterStyle::Vertical:
        return PaintColumns(painter, room, picture);
    case MeterStyle::Horizontal:
        return PaintRows(painter, room, picture);
    case MeterStyle::OneCircle:
    case MeterStyle::TwoCircles:
        return PaintRounds(painter, room, true, style == MeterStyle::TwoCircles, picture);
    case MeterStyle::OneEllipse:
    case MeterStyle::TwoEllipses:
        return PaintRounds(painter, room, false, style == MeterStyle::TwoEllipses, picture);
    }
}

} // namespace kalvo
