#include "widgets/MeterDisplay.h"

#include "widgets/SkinStyle.h"

#include <QHash>
#include <QPainter>

#include <algorithm>

namespace kalvo {

namespace {

constexpr int kLightWidth = 5;
constexpr int kInset = 4;
/** Part of the way that a needle goes from one reading to the next. */
constexpr float kNeedleStep = 0.3F;

} // namespace

MeterDisplay::MeterDisplay(QWidget* parent) : QWidget(parent) {
    setAccessibleName(tr("Pegel der Ausgabe"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void MeterDisplay::SetStyle(MeterStyle style) {
    style_ = style;
    update();
}

void MeterDisplay::SetColour(const QColor& colour) {
    picture_.colour = colour;
    update();
}

void MeterDisplay::SetHeight(double fontHeights) {
    fontHeights_ = fontHeights;
    updateGeometry();
}

std::optional<Spoken::Number> MeterDisplay::SpokenNumber() const {
    const float level = qMax(picture_.channels[0].Value(), picture_.channels[1].Value());
    return Number{double(qRound(100 * level)), 0, 100, 1, true};
}

QSize MeterDisplay::sizeHint() const {
    return {SkinStyle::Units().Of(15), SkinStyle::Units().Of(fontHeights_)};
}

QSize MeterDisplay::minimumSizeHint() const {
    return {SkinStyle::Units().Of(6), SkinStyle::Units().Of(fontHeights_)};
}

void MeterDisplay::Show(const MeterReading& reading, Clock::time_point now) {
    for (const std::size_t channel : {0U, 1U}) {
        picture_.channels[channel].Show(reading.levels[channel], now);
        lights_[channel].Show(reading.clipped[channel], now);
        float& needle = picture_.needles[channel];
        needle += (qBound(0.0F, reading.levels[channel], 1.0F) - needle) * kNeedleStep;
    }
    for (std::size_t band = 0; band < kMeterBands; ++band)
        picture_.bands[band].Show(reading.bands[band], now);
    if (const std::size_t appearance = Appearance(); appearance != painted_) {
        painted_ = appearance;
        update();
    }
}

std::size_t MeterDisplay::Appearance() const {
    const auto pixels = static_cast<float>(style_ == MeterStyle::Analyzer ? height() : width());
    std::size_t seed = qHashMulti(0, lights_[0].IsOn(), lights_[1].IsOn());
    const auto add = [&](float share) { seed = qHash(qRound(share * pixels), seed); };
    const auto addBoth = [&](const MeterBallistics& moving) {
        add(moving.Value());
        add(moving.Peak());
    };
    if (style_ == MeterStyle::Analyzer)
        std::for_each(picture_.bands.begin(), picture_.bands.end(), addBoth);
    else if (style_ == MeterStyle::VuMeter)
        std::for_each(picture_.needles.begin(), picture_.needles.end(), add);
    else
        std::for_each(picture_.channels.begin(), picture_.channels.end(), addBoth);
    return seed;
}

void MeterDisplay::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const Skin& skin = SkinStyle::Colours();
    painter.fillRect(rect(), skin.line);
    const QRect inside = rect().adjusted(1, 1, -1, -1);
    painter.fillRect(inside, skin.waveBack);
    const int half = inside.height() / 2;
    for (const int channel : {0, 1}) {
        const QRect light(inside.right() - kLightWidth - 1, inside.top() + channel * half + 2, kLightWidth, half - 3);
        painter.fillRect(light, lights_.at(static_cast<std::size_t>(channel)).IsOn() ? skin.onAir : skin.line);
    }
    PaintMeter(painter, inside.adjusted(kInset, 3, -kInset - kLightWidth - 3, -3), style_, picture_);
}

} // namespace kalvo
