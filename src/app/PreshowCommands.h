#pragma once

#include "live/PreshowCheck.h"
#include "live/TitleInspector.h"

#include <QObject>
#include <QPointer>
#include <QStringList>

namespace kalvo {

struct Desk;
class AutoDjCommands;
class DeskActions;
class ListBand;
class MeasureCommands;
class OptionCommands;
class frmVorpruefung;

/** The command `Vorpruefung`: gathers what the pre-show check judges, shows its page, and leads to what it names. */
class PreshowCommands : public QObject {
    Q_OBJECT

public:
    struct Parts {
        Desk& desk;
        DeskActions& actions;
        ListBand& lists;
        OptionCommands& options;
        MeasureCommands& measures;
        AutoDjCommands& autoDj;
        QWidget& window;
    };
    /** All parts outlive this. */
    explicit PreshowCommands(const Parts& parts);
    ~PreshowCommands() override;

    void Open();

private:
    void LookForCards();
    PreshowFacts Facts() const;
    void AddSound(PreshowFacts& facts) const;
    void AddToolFiles(PreshowFacts& facts) const;
    void Follow(const PreshowTarget& target);
    void ShowEntry(int list, quint64 entry);
    void Trigger(const char* action);

    Parts parts_;
    TitleInspector inspector_;
    PreshowCheck check_;
    QPointer<frmVorpruefung> page_;
    QStringList cards_;       ///< names from number 0 on, when they were last looked for
    bool outputLost_ = false; ///< since then
};

} // namespace kalvo
