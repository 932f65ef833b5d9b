#include "widgets/TimeLabel.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QPainter>

namespace kalvo {

TimeLabel::TimeLabel(QString longest, QWidget* parent)
    : QLabel(parent), atFirst_(std::move(longest)), longest_(atFirst_) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void TimeLabel::SetText(const QString& text) {
    if (text == this->text())
        return;
    const QFontMetrics metrics(font());
    if (metrics.horizontalAdvance(text) > metrics.horizontalAdvance(longest_)) {
        longest_ = text;
        updateGeometry();
    }
    setText(text);
}

void TimeLabel::Narrow() {
    if (longest_ == atFirst_)
        return;
    longest_ = atFirst_;
    updateGeometry();
}

void TimeLabel::SetTone(Tone tone) {
    if (tone == tone_)
        return;
    tone_ = tone;
    update();
}

QSize TimeLabel::sizeHint() const {
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(longest_) + 2, qRound(metrics.capHeight() * 1.3)};
}

QFont TimeLabel::FittingFont() const {
    QFont fitting = font();
    while (QFontMetrics(fitting).horizontalAdvance(longest_) > width() && QFontInfo(fitting).pixelSize() > 6) {
        fitting.setPixelSize(QFontInfo(fitting).pixelSize() - 1);
    }
    return fitting;
}

void TimeLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setFont(FittingFont());
    painter.setPen(ColourOf(tone_));
    const QFontMetrics metrics = painter.fontMetrics();
    const int spare = width() - metrics.horizontalAdvance(text());
    const int x = alignment() & Qt::AlignRight ? spare : alignment() & Qt::AlignHCenter ? spare / 2 : 0;
    painter.drawText(x, (height() + metrics.capHeight()) / 2, text());
}

} // namespace kalvo
