#pragma once

#include "widgets/HandOverLine.h"
#include "widgets/LayoutMode.h"
#include "widgets/MeterStyle.h"

#include <QColor>
#include <QFrame>
#include <QTime>

#include <memory>

namespace kalvo {

class MeterDisplay;

/**
 * The mixer between the decks: clock, master volume, hand-over line, fade buttons, fader, mode and speed.
 * A view without logic. Controls by objectName: `hscroll1` (master volume), `Command5` and `Command6` (fade to
 * Player 1, 2), `SFader`, `cboModus`, `cboTempo`, `chkKontinuierlich`, `chkAutomatik`, `lblUhr`, `lblUebergabe`,
 * `Pegel`. The setters tell nothing, except SetFader: the fader reports every change, by hand or by timer.
 */
class MixerPanel : public QFrame {
    Q_OBJECT

public:
    explicit MixerPanel(QWidget* parent = nullptr);
    ~MixerPanel() override;

    void SetClock(const QTime& time);
    /** 0 to 100. */
    void SetVolume(int volume);
    int Volume() const;
    /** -100 (Player 1) to 100 (Player 2). */
    void SetFader(int position);
    int Fader() const;
    void SetHandOver(const HandOverView& view);
    /** "No Fading" or "Fade-CrossOver"; another text changes nothing. */
    void SetMode(const QString& mode);
    /** Interval of the fade timer in milliseconds: 5, 15, 30, 45 or 60; another value changes nothing. */
    void SetSpeed(int milliseconds);
    void SetContinuous(bool on);
    void SetAutomatic(bool on);
    /** Level or spectrum of the output; a narrow mixer has no room for it. */
    MeterDisplay& Meter();
    /** An invalid colour: the skin's. */
    void SetMeter(MeterStyle style, const QColor& colour);
    void SetLayoutMode(LayoutMode mode);

Q_SIGNALS:
    void VolumeChanged(int volume);
    void FaderChanged(int position);
    /** The user has taken, respectively let go of, the fader's handle. */
    void FaderHeld(bool held);
    void FadeToPlayer1Clicked();
    void FadeToPlayer2Clicked();
    /** Right mouse button (or menu key) on a fade button. */
    void FadeMenuRequested(const QPoint& globalPosition);
    void ModeChosen(const QString& mode);
    void SpeedChosen(int milliseconds);
    void ContinuousToggled(bool on);
    void AutomaticToggled(bool on);

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    struct Parts;

    void NameControls();
    void Connect();
    void Arrange();
    void ApplySizes();
    void ShowMeter();

    LayoutMode mode_ = LayoutMode::Normal;
    std::unique_ptr<Parts> parts_;
};

} // namespace kalvo
