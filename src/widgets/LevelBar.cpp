#include "widgets/LevelBar.h"

#include "widgets/MeterPainting.h"
#include "widgets/SkinStyle.h"

#include <QPaintEvent>
#include <QPainter>

namespace kalvo {

namespace {

constexpr int segmentStep = 8;
constexpr int segmentWidth = 6;
constexpr int rowGap = 3;
constexpr std::chrono::seconds peakHold{1};

/** Of the scale: a peak that differs from full scale by less than a rounding. */
constexpr float kFullScale = 0.999F;

} // namespace

LevelBar::LevelBar(QWidget* parent) : QWidget(parent) {
    setAccessibleName(QStringLiteral("Pegel"));
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    policy.setRetainSizeWhenHidden(true); // the deck keeps its shape
    setSizePolicy(policy);
}

void LevelBar::SetHeight(double fontHeights) {
    fontHeights_ = fontHeights;
    updateGeometry();
}

void LevelBar::SetColour(const QColor& colour) {
    colour_ = colour;
    update();
}

std::optional<Spoken::Number> LevelBar::SpokenNumber() const {
    return Number{double(qRound(100 * qMax(rows_[0].level, rows_[1].level))), 0, 100, 1, true};
}

QSize LevelBar::sizeHint() const {
    return {SkinStyle::Units().Of(12), SkinStyle::Units().Of(fontHeights_)};
}

QSize LevelBar::minimumSizeHint() const {
    return {SkinStyle::Units().Of(4), SkinStyle::Units().Of(fontHeights_)};
}

int LevelBar::Segments() const {
    return (width() + segmentStep - segmentWidth) / segmentStep;
}

QRect LevelBar::SegmentRect(int channel, int first, int count) const {
    const int high = (height() - rowGap) / 2;
    return {first * segmentStep, channel * (high + rowGap), count * segmentStep, high};
}

void LevelBar::SetLevels(float left, float right, Clock::time_point now) {
    Show(0, left, now);
    Show(1, right, now);
}

void LevelBar::Show(int channel, float level, Clock::time_point now) {
    Row& row = rows_[size_t(channel)];
    row.level = qBound(0.0F, level, 1.0F);
    const int lit = qRound(row.level * float(Segments()));
    if (lit != row.lit) {
        update(SegmentRect(channel, qMin(lit, row.lit), qAbs(lit - row.lit)));
        row.lit = lit;
    }
    const bool wasClipped = row.light.IsOn();
    row.light.Show(row.level >= kFullScale, now);
    if (row.light.IsOn() != wasClipped)
        update(SegmentRect(channel, Segments() - 1, 1));
    if (lit - 1 >= row.peak || now - row.peakSince >= peakHold) {
        const int old = row.peak;
        row.peak = lit - 1;
        row.peakSince = now;
        if (old != row.peak) {
            update(SegmentRect(channel, qMax(0, old), 1));
            update(SegmentRect(channel, qMax(0, row.peak), 1));
        }
    }
}

void LevelBar::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const Skin& skin = SkinStyle::Colours();
    const int count = Segments();
    const int first = event->rect().left() / segmentStep;
    const int last = qMin(count - 1, event->rect().right() / segmentStep);
    for (int channel = 0; channel < 2; ++channel) {
        const Row& row = rows_[size_t(channel)];
        for (int i = first; i <= last; ++i) {
            const QRect segment = SegmentRect(channel, i, 1).adjusted(0, 0, segmentWidth - segmentStep, 0);
            const bool clipped = i == count - 1 && row.light.IsOn();
            const bool bright = i < row.lit || i == row.peak;
            const QColor& lit = colour_.isValid() ? colour_ : MeterZoneColour(double(i) / count);
            painter.fillRect(segment, clipped ? skin.onAir : bright ? lit : skin.line);
        }
    }
}

void LevelBar::resizeEvent(QResizeEvent*) {
    for (Row& row : rows_) {
        row.lit = qRound(row.level * float(Segments()));
        row.peak = row.lit - 1;
    }
    update();
}

} // namespace kalvo
