#pragma once

#include "live/ArchiveTitles.h"
#include "live/AutoDjRefill.h"
#include "live/AutoDjStore.h"

#include <QObject>
#include <QPointer>

#include <optional>

class QAction;
class QLabel;
class QStatusBar;

namespace kalvo {

struct Desk;
class ArchivePanel;
class DeskActions;
class PlaylistActions;
class frmAutoDj;

/** What the menus do with the automatic DJ: its window, and "Nachfüllen", which goes on without it. */
class AutoDjCommands : public QObject {
    Q_OBJECT

public:
    struct Parts {
        Desk& desk;
        PlaylistActions& lists;
        DeskActions& actions;
        ArchivePanel& archive;
        QStatusBar& status; ///< shows that "Nachfüllen" is on
        QWidget& window;
    };
    /** All parts outlive this. "Nachfüllen" goes on as it was left as soon as the archive's index is there. */
    explicit AutoDjCommands(const Parts& parts);
    ~AutoDjCommands() override;

    /** How many titles "Nachfüllen" can choose from, counted up to `enough`; none while it is off or unknown. */
    std::optional<qsizetype> RefillTitles(qsizetype enough) const;

    void AutoDj();
    void AutoDjNachfuellen(bool on);

Q_SIGNALS:
    /** For the status line. */
    void Told(const QString& text);

private:
    void ResumeRefill();
    void ShowRefill();
    void BuildLists();

    Parts parts_;
    ArchiveTitles source_;
    AutoDjStore store_;
    AutoDjRefill refill_;
    QPointer<frmAutoDj> window_;
    QAction* refilling_;
    QLabel* lamp_;           ///< in the status line, while it is on
    bool isResumed_ = false; ///< what the store says has been taken over
};

} // namespace kalvo
