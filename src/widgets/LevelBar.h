#pragma once

#include "widgets/MeterBallistics.h"
#include "widgets/Spoken.h"

#include <QColor>
#include <QWidget>

#include <array>
#include <chrono>

namespace kalvo {

/**
 * Two rows of segments, left channel above; the highest one stands for a second, the last one is a clipping light.
 * Repaints only what changed.
 */
class LevelBar : public QWidget, public Spoken {
    Q_OBJECT

public:
    using Clock = std::chrono::steady_clock;

    explicit LevelBar(QWidget* parent = nullptr);

    /** 0 to 1: the lit share of the bar; beyond is cut. To be told regularly, silence too, so that peaks go out. */
    void SetLevels(float left, float right, Clock::time_point now = Clock::now());
    /** Of all lit segments; an invalid one: the skin's, by their height. */
    void SetColour(const QColor& colour);
    /** Height in font units: 1.45, or 0.85 in a narrow deck. */
    void SetHeight(double fontHeights);

    /** channel 0 or 1: full scale was reached within the last two seconds. */
    bool IsClipped(int channel) const { return rows_[size_t(channel)].light.IsOn(); }
    /** channel 0 or 1: segments lit, and the index of the standing peak, -1 for none. */
    int Lit(int channel) const { return rows_[size_t(channel)].lit; }
    int Peak(int channel) const { return rows_[size_t(channel)].peak; }

    QAccessible::Role SpokenRole() const override { return QAccessible::ProgressBar; }
    /** Of the louder channel, in percent of the bar. */
    std::optional<Number> SpokenNumber() const override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Row {
        float level = 0;
        int lit = 0;
        int peak = -1;
        Clock::time_point peakSince;
        ClipLight light;
    };

    int Segments() const;
    QRect SegmentRect(int channel, int first, int count) const;
    void Show(int channel, float level, Clock::time_point now);

    std::array<Row, 2> rows_;
    QColor colour_;
    double fontHeights_ = 1.45;
};

} // namespace kalvo
