#include "widgets/PositionSlider.h"

#include "base/PlayTime.h"
#include "widgets/SkinStyle.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>

namespace kalvo {

namespace {

constexpr int kBarWidth = 2;
constexpr int kBarGap = 1;
constexpr int kBarStep = kBarWidth + kBarGap;

void FillTriangle(QPainter& painter, const QPolygonF& corners, const QColor& colour) {
    QPainterPath path;
    path.addPolygon(corners);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.fillPath(path, colour);
    painter.setRenderHint(QPainter::Antialiasing, false);
}

} // namespace

PositionSlider::PositionSlider(int player, QWidget* parent) : QAbstractSlider(parent), player_(player) {
    setOrientation(Qt::Horizontal);
    setRange(0, 0);
    setSingleStep(5000);
    setPageStep(30000);
    setTracking(true);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void PositionSlider::SetTitle(double lengthSeconds, double switchOverSeconds, double cueSeconds) {
    if (lengthSeconds == lengthSeconds_ && switchOverSeconds == switchOverSeconds_ && cueSeconds == cueSeconds_)
        return;
    if (lengthSeconds != lengthSeconds_)
        setSliderDown(false);
    lengthSeconds_ = lengthSeconds;
    switchOverSeconds_ = switchOverSeconds;
    cueSeconds_ = cueSeconds;
    setMaximum(qRound(qMax(0.0, lengthSeconds) * 1000));
    update();
}

void PositionSlider::SetPosition(double fraction) {
    if (!isSliderDown())
        Show(fraction);
}

void PositionSlider::SetWave(const std::shared_ptr<const Waveform>& wave) {
    if (wave == wave_)
        return;
    wave_ = wave;
    played_ = {};
    update();
}

void PositionSlider::SetLow(bool low) {
    low_ = low;
    updateGeometry();
}

QString PositionSlider::SpokenValue() const {
    if (!HasTitle())
        return QStringLiteral("Kein Titel");
    return QStringLiteral("%1 von %2").arg(PlayTime::Format(value() / 1000.0), PlayTime::Format(maximum() / 1000.0));
}

std::optional<Spoken::Number> PositionSlider::SpokenNumber() const {
    return Number{value() / 1000.0, 0, maximum() / 1000.0, singleStep() / 1000.0, !HasTitle()};
}

QSize PositionSlider::sizeHint() const {
    return {SkinStyle::Units().Of(14), SkinStyle::Units().Of(5)};
}

QSize PositionSlider::minimumSizeHint() const {
    return {SkinStyle::Units().Of(8), SkinStyle::Units().Of(low_ ? 1.5 : 2.4)};
}

int PositionSlider::X(double seconds) const {
    return qRound(seconds / lengthSeconds_ * (width() - 1));
}

int PositionSlider::LineX() const {
    return qRound(Fraction() * (width() - 1));
}

double PositionSlider::FractionAt(double x) const {
    return qBound(0.0, x / qMax(1, width() - 1), 1.0);
}

double PositionSlider::Fraction() const {
    return HasTitle() ? double(value()) / maximum() : 0.0;
}

void PositionSlider::Show(double fraction) {
    const int oldX = LineX();
    const bool line = fraction >= 0;
    setValue(qRound(qBound(0.0, fraction, 1.0) * maximum()));
    if (line != line_) {
        line_ = line;
        update();
    } else if (LineX() != oldX) {
        UpdateBetween(oldX, LineX());
    }
}

void PositionSlider::UpdateBetween(int fromX, int toX) {
    const int reach = SkinStyle::Units().Of(0.6) + 2;
    const auto stripe = [&](int x) { return QRect(x - reach, 0, 2 * reach + 1, height()); };
    update(stripe(fromX));
    update(stripe(toX));
    if (qAbs(fromX - toX) > 2 * reach)
        update(QRect(qMin(fromX, toX), 0, qAbs(fromX - toX), height()));
}

void PositionSlider::changeEvent(QEvent* event) {
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::PaletteChange)
        played_ = {};
    QAbstractSlider::changeEvent(event);
}

void PositionSlider::paintEvent(QPaintEvent*) {
    const Skin& skin = SkinStyle::Colours();
    QPainter painter(this);
    painter.fillRect(rect(), skin.waveBack);
    if (HasTitle()) {
        PaintSwitchOverStretch(painter);
        wave_ ? PaintWave(painter) : PaintBand(painter);
        PaintMinutes(painter);
        PaintSwitchOver(painter);
        PaintLine(painter);
        PaintCue(painter);
    } else {
        painter.fillRect(QRect(0, height() / 2, width(), 1), skin.line);
    }
    painter.setPen(hasFocus() ? skin.text : skin.line);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    if (hasFocus())
        painter.drawRect(rect().adjusted(1, 1, -2, -2));
}

void PositionSlider::PaintBand(QPainter& painter) const {
    const Skin& skin = SkinStyle::Colours();
    const int high = SkinStyle::Units().Of(0.8);
    const int top = (height() - high) / 2;
    const int played = line_ ? LineX() : 0;
    painter.fillRect(QRect(0, top, played, high), skin.wavePlayed);
    painter.fillRect(QRect(played, top, width() - played, high), skin.Player(player_));
}

int PositionSlider::BarCount() const {
    return (width() - 2 + kBarGap) / kBarStep;
}

QPixmap PositionSlider::WaveIn(const QColor& colour) const {
    const qreal ratio = devicePixelRatioF();
    QPixmap pixmap(size() * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    const std::vector<float> bars = WaveBars(*wave_, BarCount());
    const int margin = qMax(2, height() / 16);
    const int most = qMax(1, height() / 2 - margin);
    const int known = wave_->known * int(bars.size()) / Waveform::kColumns;
    for (int i = 0; i < int(bars.size()); ++i) {
        const int half = i < known ? qMax(1, qRound(bars[size_t(i)] * float(most))) : 0;
        const int x = 1 + i * kBarStep;
        // What is not measured yet is a thin line, as silence is.
        painter.fillRect(half > 0 ? QRect(x, height() / 2 - half, kBarWidth, 2 * half)
                                  : QRect(x, height() / 2, kBarStep, 1),
                         colour);
    }
    return pixmap;
}

void PositionSlider::PaintWave(QPainter& painter) {
    if (played_.isNull() || played_.deviceIndependentSize().toSize() != size()) {
        const Skin& skin = SkinStyle::Colours();
        played_ = WaveIn(skin.wavePlayed);
        toCome_ = WaveIn(skin.Player(player_));
    }
    const int played = line_ ? LineX() : 0;
    const auto part = [&](const QPixmap& pixmap, int from, int to) {
        painter.save();
        painter.setClipRect(QRect(from, 0, to - from, height()));
        painter.drawPixmap(0, 0, pixmap);
        painter.restore();
    };
    part(played_, 0, played);
    part(toCome_, played, width());
}

void PositionSlider::PaintMinutes(QPainter& painter) const {
    const Skin& skin = SkinStyle::Colours();
    for (int second = 60; second < lengthSeconds_; second += 60)
        painter.fillRect(QRect(X(second), height() - 5, 1, 5), skin.edge);
}

void PositionSlider::PaintSwitchOverStretch(QPainter& painter) const {
    if (!HasSwitchOver())
        return;
    const Skin& skin = SkinStyle::Colours();
    const int x = X(lengthSeconds_ - switchOverSeconds_);
    painter.fillRect(QRect(x, 0, width() - x, height()), Mixed(skin.waveBack, skin.warningFill, 0.38));
}

void PositionSlider::PaintSwitchOver(QPainter& painter) const {
    if (!HasSwitchOver())
        return;
    const Skin& skin = SkinStyle::Colours();
    const int x = X(lengthSeconds_ - switchOverSeconds_);
    const double flag = SkinStyle::Units().Of(0.7);
    painter.fillRect(QRect(x, 0, 2, height()), skin.warning);
    FillTriangle(painter, {QPointF(x, 0), QPointF(x + flag, 0), QPointF(x, flag)}, skin.warning);
}

void PositionSlider::PaintLine(QPainter& painter) const {
    if (!line_)
        return;
    const Skin& skin = SkinStyle::Colours();
    const int x = LineX();
    const double reach = SkinStyle::Units().Of(0.48);
    painter.fillRect(QRect(x - 3, 0, 7, height()), skin.waveBack);
    painter.fillRect(QRect(x - 1, 0, 3, height()), skin.text);
    FillTriangle(painter, {QPointF(x + 0.5 - reach, 0), QPointF(x + 0.5 + reach, 0), QPointF(x + 0.5, reach * 1.1)},
                 skin.text);
}

void PositionSlider::PaintCue(QPainter& painter) const {
    if (cueSeconds_ < 0 || cueSeconds_ > lengthSeconds_)
        return;
    const Skin& skin = SkinStyle::Colours();
    const int x = X(cueSeconds_);
    const int top = line_ ? height() / 2 : 0;
    const double flag = qMin(SkinStyle::Units().Of(1.0), height() / 3);
    painter.fillRect(QRect(x - 1, top, 3, height() - top), skin.cued);
    FillTriangle(painter, {QPointF(x - 1, height()), QPointF(x - 1 + flag, height()), QPointF(x - 1, height() - flag)},
                 skin.cued);
}

void PositionSlider::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !HasTitle())
        return event->ignore();
    setSliderDown(true);
    Show(FractionAt(event->position().x()));
    Q_EMIT DragBegan(Fraction());
}

void PositionSlider::mouseMoveEvent(QMouseEvent* event) {
    if (!isSliderDown())
        return;
    Show(FractionAt(event->position().x()));
    Q_EMIT Dragged(Fraction());
}

void PositionSlider::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !isSliderDown())
        return;
    setSliderDown(false);
    Q_EMIT DragEnded(Fraction());
}

void PositionSlider::Jump(int milliseconds) {
    if (!HasTitle() || isSliderDown())
        return;
    Q_EMIT DragBegan(Fraction());
    Show(double(qBound(0, milliseconds, maximum())) / maximum());
    Q_EMIT Dragged(Fraction());
    Q_EMIT DragEnded(Fraction());
}

void PositionSlider::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Down:
        return Jump(value() - singleStep());
    case Qt::Key_Right:
    case Qt::Key_Up:
        return Jump(value() + singleStep());
    case Qt::Key_PageDown:
        return Jump(value() - pageStep());
    case Qt::Key_PageUp:
        return Jump(value() + pageStep());
    default:
        // Home and End would throw a running title to its ends.
        event->ignore();
    }
}

void PositionSlider::wheelEvent(QWheelEvent* event) {
    wheel_ += event->angleDelta().y();
    const int notches = wheel_ / 120;
    wheel_ -= notches * 120;
    if (notches != 0)
        Jump(value() + notches * singleStep());
    event->accept();
}

} // namespace kalvo
