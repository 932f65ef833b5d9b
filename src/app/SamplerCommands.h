#pragma once

#include "live/SampleFile.h"
#include "live/Sampler.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

class QAction;
class QKeyEvent;
class QWidget;

namespace kalvo {

struct Desk;
class DeskActions;
class frmSample;
class frmSampleEinstellungen;

/**
 * The sampler in the main window: its two windows, and the keys 1 to 9 of the numeric keypad. They fire while the main
 * window or the pad window is active and no text field has the focus; a pad without a sound leaves its key to others.
 * A key that is let go, or a focus that is lost, ends the sound.
 */
class SamplerCommands : public QObject {
    Q_OBJECT

public:
    /** desk, actions and window outlive the commands. */
    SamplerCommands(Desk& desk, DeskActions& actions, QWidget& window);
    /** The pads' window, which is the main window's child, ends before the sampler. */
    ~SamplerCommands() override;

    void ShowPads();
    void ShowSettings();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QAction* Add(DeskActions& actions, const QString& name, const QString& text, void (SamplerCommands::*act)());
    void Begin();
    void WatchHeld(int pad);
    bool PressKey(const QKeyEvent& event);
    bool ReleaseKey(const QKeyEvent& event);
    void DropKey();
    bool KeysFire() const;
    bool Save(const SampleSlots& slots);

    Desk& desk_;
    QWidget& window_;
    SampleFile file_;
    Sampler sampler_;
    QTimer* ticks_;  ///< while a pad is held
    QTimer* ready_;  ///< looks after the sounds
    int keyPad_ = 0; ///< the pad whose key is down
    QPointer<frmSample> pads_;
    QPointer<frmSampleEinstellungen> settings_;
};

} // namespace kalvo
