#include "widgets/ButtonPainting.h"

#include "widgets/Icons.h"
#include "widgets/SkinStyle.h"

#include <QFontMetrics>
#include <QPainter>

namespace kalvo {

ButtonColours ColoursOf(QStyle::State state, const QColor& onFill, const QColor& onInk) {
    const Skin& skin = SkinStyle::Colours();
    if (!(state & QStyle::State_Enabled))
        return {QColor(Qt::transparent), skin.line, skin.dim};
    if (state & QStyle::State_On) {
        const QColor fill = onFill.isValid() ? onFill : skin.highlight;
        return {fill, state & QStyle::State_MouseOver ? skin.text : fill, onInk.isValid() ? onInk : skin.highlightText};
    }
    if (state & QStyle::State_Sunken)
        return {skin.line, skin.text, skin.text};
    return {skin.button, state & QStyle::State_MouseOver ? skin.text : skin.edge, skin.text};
}

void PaintButton(QPainter& painter, const QRect& rect, const ButtonColours& colours) {
    const double corner = SkinStyle::Units().Corner();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colours.edge, 1));
    painter.setBrush(colours.fill);
    painter.drawRoundedRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), corner, corner);
    painter.restore();
}

void PaintFocusRing(QPainter& painter, const QRect& rect) {
    const double corner = SkinStyle::Units().Corner() + 2;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(SkinStyle::Colours().text, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(rect).adjusted(-2, -2, 2, 2), corner, corner);
    painter.restore();
}

int CaptionWidth(const QFontMetrics& metrics, const QString& text) {
    return metrics.size(Qt::TextSingleLine | Qt::TextShowMnemonic, text).width();
}

namespace {

QColor SignEdge(QStyle::State state, bool on) {
    const Skin& skin = SkinStyle::Colours();
    if (!(state & QStyle::State_Enabled))
        return skin.line;
    if (state & QStyle::State_MouseOver)
        return skin.text;
    return on ? skin.highlight : skin.edge;
}

} // namespace

void PaintCheckBox(QPainter& painter, const QRect& rect, QStyle::State state) {
    const Skin& skin = SkinStyle::Colours();
    const bool enabled = state & QStyle::State_Enabled;
    const bool on = state & (QStyle::State_On | QStyle::State_NoChange);
    painter.fillRect(rect, SignEdge(state, on));
    painter.fillRect(rect.adjusted(1, 1, -1, -1), on && enabled ? skin.highlight : skin.base);
    const QColor ink = enabled ? skin.highlightText : skin.dim;
    if (state & QStyle::State_NoChange) {
        painter.fillRect(QRect(rect.left() + 4, rect.center().y(), rect.width() - 8, 2), ink);
    } else if (on) {
        const int size = rect.width() - 2;
        painter.drawPixmap(rect.topLeft() + QPoint(1, 1),
                           Icons::Pixmap(QStringLiteral("check"), ink, size, painter.device()->devicePixelRatioF()));
    }
}

void PaintRadioButton(QPainter& painter, const QRect& rect, QStyle::State state) {
    const Skin& skin = SkinStyle::Colours();
    const bool enabled = state & QStyle::State_Enabled;
    const bool on = state & QStyle::State_On;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(SignEdge(state, on), 1));
    painter.setBrush(on && enabled ? skin.highlight : skin.base);
    painter.drawEllipse(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5));
    if (on) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(enabled ? skin.highlightText : skin.dim);
        const double dot = rect.width() * 0.18;
        painter.drawEllipse(QRectF(rect).center(), dot, dot);
    }
    painter.restore();
}

} // namespace kalvo
