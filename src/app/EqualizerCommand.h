#pragma once

#include "playback/EqualiserSettings.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

class QAction;
class QMenu;

namespace kalvo {

struct Desk;
class frmEqualizer;

/**
 * The equalizer's menu items: `EQStatus`, "Equalizer an" or "Equalizer aus", whose caption and tick tell what holds,
 * and `Equalizer`, which opens its window. Changes are heard at once on both players and written a second after the
 * last one, when the window closes, and at the end.
 */
class EqualizerCommand : public QObject {
    Q_OBJECT

public:
    /** Desk and window outlive this; the items are the last of the menu. */
    EqualizerCommand(Desk& desk, QMenu& mixerMenu, QWidget& window);
    ~EqualizerCommand() override;

    /** Gives the players the equalizer as the settings have it. */
    void Load();

private:
    void Switch(bool on);
    void Open();
    void Apply(const EqualiserSettings& equaliser);
    void Keep();

    Desk& desk_;
    QWidget& window_;
    QAction* status_;
    EqualiserSettings equaliser_;
    bool changed_ = false; ///< and not yet written
    QTimer keepSoon_;
    QPointer<frmEqualizer> dialog_;
};

} // namespace kalvo
