#pragma once

#include "widgets/MeterPainting.h"
#include "widgets/Spoken.h"

#include <QPixmap>
#include <QWidget>

namespace kalvo {

/** Levels of a moment; shares of the scale from 0 to 1, what lies beyond is cut. */
struct MeterReading {
    std::array<float, 2> levels{}; ///< left, right
    std::array<bool, 2> clipped{};
    std::array<float, kMeterBands> bands{}; ///< low to high; only the analyzer shows them
};

/**
 * Level or spectrum in one of the nine styles, with standing peaks and a clipping light for each channel at the right
 * end. Cheap: paints itself whole, but only when something to be seen has changed.
 */
class MeterDisplay : public QWidget, public Spoken {
    Q_OBJECT

public:
    using Clock = MeterBallistics::Clock;

    explicit MeterDisplay(QWidget* parent = nullptr);

    /** None: an empty box. */
    void SetStyle(MeterStyle style);
    MeterStyle Style() const { return style_; }
    /** Of everything lit; an invalid one: the skin's. The clipping lights are red in any case. */
    void SetColour(const QColor& colour);
    /** Height in font units. */
    void SetHeight(double fontHeights);

    /** To be told regularly, silence too, so that peaks and lights go out. */
    void Show(const MeterReading& reading, Clock::time_point now = Clock::now());
    const MeterPicture& Picture() const { return picture_; }
    bool IsClipped(int channel) const { return lights_.at(static_cast<std::size_t>(channel)).IsOn(); }

    QAccessible::Role SpokenRole() const override { return QAccessible::ProgressBar; }
    /** Of the louder channel, in percent of the scale. */
    std::optional<Number> SpokenNumber() const override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    /** A number that changes whenever what is painted does. */
    std::size_t Appearance() const;
    QRect MeterRoom() const;
    void PaintGround();

    MeterStyle style_ = MeterStyle::Analyzer;
    MeterPicture picture_;
    std::array<ClipLight, 2> lights_;
    std::size_t painted_ = 0;
    QPixmap ground_; ///< what does not move, kept ready; null: to be painted
    double fontHeights_ = 2.4;
};

} // namespace kalvo
