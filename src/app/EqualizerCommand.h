#pragma once

#include <QObject>

class QAction;
class QMenu;

namespace kalvo {

struct Desk;

/** The menu item `EQStatus`, "Equalizer an" or "Equalizer aus": its caption and its tick tell what holds. */
class EqualizerCommand : public QObject {
    Q_OBJECT

public:
    /** The desk outlives this; the item is the last of the menu. */
    EqualizerCommand(Desk& desk, QMenu& mixerMenu, QObject* parent);

    /** Gives the players the equalizer as the settings have it. */
    void Load();

private:
    void Switch(bool on);

    Desk& desk_;
    QAction* status_;
};

} // namespace kalvo
