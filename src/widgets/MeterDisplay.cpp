#include "widgets/MeterDisplay.h"

#include "widgets/SkinStyle.h"

#include <QEvent>
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
    ground_ = QPixmap();
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

QRect MeterDisplay::MeterRoom() const {
    return rect().adjusted(1 + kInset, 4, -1 - kInset - kLightWidth - 3, -4);
}

void MeterDisplay::PaintGround() {
    ground_ = QPixmap(size() * devicePixelRatio());
    ground_.setDevicePixelRatio(devicePixelRatio());
    QPainter painter(&ground_);
    painter.fillRect(rect(), SkinStyle::Colours().line);
    painter.fillRect(rect().adjusted(1, 1, -1, -1), SkinStyle::Colours().waveBack);
    PaintMeterScale(painter, MeterRoom(), style_);
}

void MeterDisplay::changeEvent(QEvent* event) {
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::PaletteChange)
        ground_ = QPixmap();
    QWidget::changeEvent(event);
}

void MeterDisplay::paintEvent(QPaintEvent*) {
    if (ground_.isNull() || ground_.size() != size() * devicePixelRatio())
        PaintGround();
    QPainter painter(this);
    painter.drawPixmap(0, 0, ground_);
    const Skin& skin = SkinStyle::Colours();
    const QRect inside = rect().adjusted(1, 1, -1, -1);
    const int half = inside.height() / 2;
    for (const int channel : {0, 1}) {
        const QRect light(inside.right() - kLightWidth - 1, inside.top() + channel * half + 2, kLightWidth, half - 3);
        painter.fillRect(light, lights_.at(static_cast<std::size_t>(channel)).IsOn() ? skin.onAir : skin.line);
    }
    PaintMeter(painter, MeterRoom(), style_, picture_);
}

} // namespace kalvo
