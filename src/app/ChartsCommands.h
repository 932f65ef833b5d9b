#pragma once

#include "playlists/ChartsFile.h"

#include <QObject>
#include <QPointer>

class QAction;
class QWidget;

namespace kalvo {

struct Desk;
class ArchivePanel;
class DeskActions;
class PlaylistActions;
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
    void ShowCounts();
    void Reload();

    Parts parts_;
    QPointer<frmCharts> charts_;
    QPointer<frmVerlauf> history_;
    QPointer<frmZuletztCount> counts_;
};

} // namespace kalvo
