#pragma once

#include <QColor>
#include <QRect>
#include <QStyle>

class QFontMetrics;
class QPainter;

namespace kalvo {

/** Around every push button: the place of its focus ring. Layouts do not count it. */
constexpr int focusRingMargin = 3;

/** Fill and edge of a button by its state. */
struct ButtonColours {
    QColor fill;
    QColor edge;
    QColor ink;
};

/** on: fill and ink of a switched-on button; by default those of the highlight. */
ButtonColours ColoursOf(QStyle::State state, const QColor& onFill = {}, const QColor& onInk = {});

/** rect: without the margin; a disabled button has no fill. */
void PaintButton(QPainter& painter, const QRect& rect, const ButtonColours& colours);

/** The ring of the keyboard focus: 2 px in the text colour, 1 px outside `rect`. */
void PaintFocusRing(QPainter& painter, const QRect& rect);

/** Of a text whose letter behind "&" is underlined. */
int CaptionWidth(const QFontMetrics& metrics, const QString& text);

/** A check box or radio button's sign. */
void PaintCheckBox(QPainter& painter, const QRect& rect, QStyle::State state);
void PaintRadioButton(QPainter& painter, const QRect& rect, QStyle::State state);

} // namespace kalvo
