#pragma once

#include "base/Waveform.h"
#include "widgets/Spoken.h"

#include <QAbstractSlider>
#include <QPixmap>

#include <memory>

namespace kalvo {

/**
 * Position in a title: waveform, line, minute ticks, switch-over point and cue point. Its value is in milliseconds.
 * The user moves it by a click, dragging, arrow keys (5 s), page keys (30 s) and the wheel.
 */
class PositionSlider : public QAbstractSlider, public Spoken {
    Q_OBJECT

public:
    /** player: 1 or 2, for the colour of what is still to come. */
    explicit PositionSlider(int player, QWidget* parent = nullptr);

    /** The points of a title; lengthSeconds 0: no title. switchOver counts from the end (0: none), cue below 0: none.
     */
    void SetTitle(double lengthSeconds, double switchOverSeconds, double cueSeconds);
    /** 0 to 1; below 0: no line. Without effect while the user drags. */
    void SetPosition(double fraction);

    /** What is known of the title's sound; null: a plain band stands for it. */
    void SetWave(const std::shared_ptr<const Waveform>& wave);

    /** Half as high at least, for a low console. */
    void SetLow(bool low);

    QAccessible::Role SpokenRole() const override { return QAccessible::Slider; }
    /** Position and length. */
    QString SpokenValue() const override;
    /** In seconds; setting it moves the title there. */
    std::optional<Number> SpokenNumber() const override;
    void SetSpokenNumber(double seconds) override { Jump(qRound(1000 * seconds)); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /** By the user; fractions of the title, 0 to 1. A key or wheel step tells all three. */
    void DragBegan(double fraction);
    void Dragged(double fraction);
    void DragEnded(double fraction);

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    /** Left empty: a new value repaints two narrow stripes, not the whole. */
    void sliderChange(SliderChange) override {}

private:
    bool HasTitle() const { return maximum() > 0; }
    bool HasSwitchOver() const { return switchOverSeconds_ > 0 && switchOverSeconds_ < lengthSeconds_; }
    int X(double seconds) const;
    int LineX() const;
    double FractionAt(double x) const;
    double Fraction() const;
    void Jump(int milliseconds);
    void Show(double fraction);
    void UpdateBetween(int fromX, int toX);
    void PaintBand(QPainter& painter) const;
    void PaintWave(QPainter& painter);
    QPixmap WaveIn(const QColor& colour) const;
    int BarCount() const;
    void PaintMinutes(QPainter& painter) const;
    void PaintSwitchOverStretch(QPainter& painter) const;
    void PaintSwitchOver(QPainter& painter) const;
    void PaintLine(QPainter& painter) const;
    void PaintCue(QPainter& painter) const;

    int player_;
    double lengthSeconds_ = 0;
    double switchOverSeconds_ = 0;
    double cueSeconds_ = -1;
    bool line_ = false;
    bool low_ = false;
    int wheel_ = 0;
    std::shared_ptr<const Waveform> wave_;
    QPixmap played_; ///< the waveform's bars as they look once played; null: to be made
    QPixmap toCome_; ///< the same in the player's colour
};

} // namespace kalvo
