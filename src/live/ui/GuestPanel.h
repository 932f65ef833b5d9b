#pragma once

#include "widgets/RingRoom.h"

#include <QPointer>
#include <QTimer>

class QCheckBox;
class QComboBox;
class QPushButton;
class QSpinBox;

namespace kalvo {

class ElidedLabel;
class GuestServer;
class Settings;
class frmGaesteCode;

/**
 * Switches the guests' page on and off and tells where it is. Keeps switch, port and network in section "Gaeste" of the
 * settings.
 */
class GuestPanel : public RingRoom {
    Q_OBJECT

public:
    /** Server and settings outlive the panel. */
    GuestPanel(GuestServer& server, Settings& settings, QWidget* parent = nullptr);

    /** Switches the page on if it was on at the end of the last run; at the program's start. */
    static void Restore(GuestServer& server, const Settings& settings);

private:
    void Build();
    void Switch(bool on);
    void ShowState();
    void ShowAddresses();
    void ShowCode();
    /** Empty without a network. */
    QString Address() const;

    GuestServer& server_;
    Settings& settings_;
    QCheckBox* switch_;
    QSpinBox* port_;
    QComboBox* network_;
    QPushButton* code_;
    ElidedLabel* state_;
    QPointer<frmGaesteCode> codeWindow_;
    QTimer networks_; ///< a computer gets other addresses when it changes its network
};

} // namespace kalvo
