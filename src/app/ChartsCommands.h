#pragma once

#include "playlists/ChartsFile.h"
#include "playlists/EveningLog.h"
#include "tags/TitleRecord.h"

#include <QObject>
#include <QPointer>

#include <optional>

class QAction;
class QWidget;

namespace kalvo {

struct Desk;
class ArchivePanel;
class DeskActions;
class PlaylistActions;
class PlaylistIntake;
class frmCharts;
class frmVerlauf;
class frmZuletztCount;

/** What the menus do with the play statistics: charts, history of the evening, last-played stamps. */
class ChartsCommands : public QObject {
    Q_OBJECT

public:
    struct Parts {
        Desk& desk;
        PlaylistActions& lists;
        PlaylistIntake& intake;
        DeskActions& actions;
        ArchivePanel& archive;
        QWidget& window;
    };
    /** All parts outlive this. */
    explicit ChartsCommands(const Parts& parts);

    void MeineCharts();
    void VerlaufDesAbends();
    void ZuletztGespieltAnzahl();
    void ZuletztGespieltLoeschen();

private:
    QAction* Add(const QString& name, const QString& text, void (ChartsCommands::*act)());
    /** Charts titles into a list, 0: both in turn; with what the archive knows of them. */
    void Send(int player, const QList<ChartEntry>& titles);
    std::optional<TitleRecord> FindCut(const ChartEntry& entry) const;
    void TakePlay(const PlayedTitle& title);
    void ReloadHistory();
    void ShowCounts();

    Parts parts_;
    QPointer<frmCharts> charts_;
    QPointer<frmVerlauf> history_;
    QPointer<frmZuletztCount> counts_;
};

} // namespace kalvo
