#pragma once

#include "widgets/Spoken.h"

#include <QSlider>

namespace kalvo {

/** Pitch in steps of 0.1 %, -120 to 120; a double click or the key 0 sets it to 0. */
class PitchSlider : public QSlider, public Spoken {
    Q_OBJECT

public:
    explicit PitchSlider(QWidget* parent = nullptr);

    /** "0,0 %", "+1,5 %", "−12,0 %". */
    static QString TextOf(int permille);

    QAccessible::Role SpokenRole() const override { return QAccessible::Slider; }
    QString SpokenValue() const override { return TextOf(value()); }
    /** In percent. */
    std::optional<Number> SpokenNumber() const override;
    void SetSpokenNumber(double percent) override { setValue(qRound(10 * percent)); }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
};

} // namespace kalvo
