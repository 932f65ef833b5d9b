#pragma once

#include "app/OptionValues.h"
#include "app/TestTone.h"
#include "playback/EmergencyLoader.h"

#include <QObject>
#include <QPointer>

class QAction;
class QMenu;

namespace kalvo {

struct Desk;
class ArchivePanel;
class ConsolePanel;
class frmOptionen;

/** The command `Optionen`: opens the dialog, writes what is confirmed there, and applies it to the running desk. */
class OptionCommands : public QObject {
    Q_OBJECT

public:
    /** Everything given outlives this. Applies at once the settings that only this knows: meters, wheel, cue points. */
    OptionCommands(Desk& desk, QMenu& settingsMenu, ArchivePanel& archive, ConsolePanel& console, QWidget& window);

    /** Opens the dialog, or brings the open one to the front. */
    void Open();
    /** The same at the page of this caption. */
    void OpenPage(const QString& caption);

Q_SIGNALS:
    /** This look is to be shown; it is not necessarily kept. */
    void LookChosen(const QString& skin, const QString& fontSize, const QString& buttonSize);
    /** The settings have been written and the desk follows them. */
    void Confirmed();
    /** The players are to sound on another device from now on. */
    void OutputChosen(int device);
    /** For the status line: what cannot be applied. */
    void Warned(const QString& message);

private:
    OptionValues Current() const;
    void Confirm();
    void Apply(const OptionValues& values);
    void ApplyViews(const OptionValues& values);
    void ApplyMixing(const OptionValues& values);
    void PlayTone(int device);

    Desk& desk_;
    ArchivePanel& archive_;
    ConsolePanel& console_;
    QWidget& window_;
    QString chartsPath_; ///< of "\optionen.dll"
    TestTone tone_;
    EmergencyLoader emergency_;
    QPointer<frmOptionen> dialog_;
};

} // namespace kalvo
