#pragma once

#include <QLabel>

namespace kalvo {

/** Which colour of the skin a text takes; resolved when it is painted, so that switching needs no restyling. */
enum class Tone { Text, Dim, Warning, OnAirInk, WarningFillInk };

QColor ColourOf(Tone tone);

/** One line of text that is cut with an ellipsis where the room ends; the tooltip then tells it in full. */
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    void SetTone(Tone tone);
    /** Repaints only when the text differs. */
    void SetText(const QString& text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    Tone tone_ = Tone::Text;
};

} // namespace kalvo
