#include "widgets/ElidedLabel.h"

#include "widgets/PlainTip.h"
#include "widgets/SkinStyle.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace kalvo {

QColor ColourOf(Tone tone) {
    const Skin& skin = SkinStyle::Colours();
    switch (tone) {
    case Tone::Dim:
        return skin.dim;
    case Tone::Warning:
        return skin.warning;
    case Tone::OnAirInk:
        return skin.onAirInk;
    case Tone::WarningFillInk:
        return skin.warningFillInk;
    case Tone::Text:
        break;
    }
    return skin.text;
}

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ElidedLabel::SetTone(Tone tone) {
    if (tone == tone_)
        return;
    tone_ = tone;
    update();
}

void ElidedLabel::SetText(const QString& text) {
    if (text != this->text())
        setText(text);
}

QSize ElidedLabel::sizeHint() const {
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(text()) + 2, metrics.height()};
}

QSize ElidedLabel::minimumSizeHint() const {
    return {0, QFontMetrics(font()).height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(ColourOf(tone_));
    painter.drawText(rect(), int(alignment()) | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(text(), Qt::ElideRight, width()));
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty()) {
        if (fontMetrics().horizontalAdvance(text()) > width())
            QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), PlainTip(text()), this);
        else
            QToolTip::hideText();
        return true;
    }
    return QLabel::event(event);
}

} // namespace kalvo
