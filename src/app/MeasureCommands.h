#pragma once

#include "playback/TempoRun.h"
#include "playback/TitleMeasurer.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

namespace kalvo {

struct Desk;
class ArchivePanel;
class DeskActions;
class OptionCommands;
class frmMessen;

/**
 * The measuring of titles in the main window: the command `BpmMessen`, and, when the options ask for it, titles that
 * start equally loud. For that the lists' next titles are measured ahead; one that starts unmeasured stays as it is.
 */
class MeasureCommands : public QObject {
    Q_OBJECT

public:
    /** Everything given outlives this. */
    MeasureCommands(Desk& desk, DeskActions& actions, ArchivePanel& archive, OptionCommands& options, QWidget& window);
    ~MeasureCommands() override;

    TitleMeasurer& Measurer() { return measurer_; }
    /** Titles start equally loud. */
    bool IsLevelling() const { return levelling_; }
    /** In dB, with which the title would start now. */
    double GainOf(const QString& path);

private:
    void ReadSwitch();
    void LookAhead();
    void Open();

    Desk& desk_;
    ArchivePanel& archive_;
    QWidget& window_;
    TitleMeasurer measurer_;
    TempoRun run_;
    bool levelling_ = false;
    QTimer lookSoon_; ///< after the last change of the lists
    QPointer<frmMessen> dialog_;
};

} // namespace kalvo
