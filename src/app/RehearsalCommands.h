#pragma once

#include "playback/Rehearsal.h"

#include <QObject>
#include <QPointer>

namespace kalvo {

struct Desk;
class DeskActions;
class MeasureCommands;
class OptionCommands;
class frmProbelauf;

/** The command `Probelauf`: rehearses the desk's hand-overs and shows them. It only ever looks at the desk. */
class RehearsalCommands : public QObject {
    Q_OBJECT

public:
    /** Everything given outlives this. */
    RehearsalCommands(Desk& desk, DeskActions& actions, MeasureCommands& measures, OptionCommands& options,
                      QWidget& window);
    ~RehearsalCommands() override;

    void Open();

private:
    DeskMoment Moment() const;
    RehearsalSettings Settings() const;
    double TempoOf(const QString& path) const;
    void Measure(const QStringList& paths);

    Desk& desk_;
    MeasureCommands& measures_;
    QWidget& window_;
    Rehearsal rehearsal_;
    QPointer<frmProbelauf> dialog_;
};

} // namespace kalvo
