#pragma once

#include "widgets/ElidedLabel.h"

namespace kalvo {

/**
 * A time that changes without dancing: as wide as its longest text from the start, as high as its figures.
 * Use the true minus sign (U+2212).
 */
class TimeLabel : public QLabel {
    Q_OBJECT

public:
    /** longest: e.g. "−00:00"; a longer text widens the label until it is narrowed. */
    explicit TimeLabel(QString longest, QWidget* parent = nullptr);

    void SetText(const QString& text);
    void SetTone(Tone tone);
    /** As wide as at first again, since hours are over. */
    void Narrow();

    /** The label's font, or the largest smaller one in which the longest text fits where there is less room. */
    QFont FittingFont() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString atFirst_;
    QString longest_;
    Tone tone_ = Tone::Text;
};

} // namespace kalvo
