#pragma once

#include "playlists/PlaylistActions.h"
#include "widgets/LayoutMode.h"

#include <QWidget>

#include <array>

namespace kalvo {

struct Desk;
class DeskActions;
class PlaylistPanel;

/** The middle band of the main window: both lists side by side, joined with what is done to them. */
class ListBand : public QWidget {
    Q_OBJECT

public:
    ListBand(Desk& desk, PlaylistActions& listActions, DeskActions& actions, QWidget* parent = nullptr);

    void SetLayoutMode(LayoutMode mode);
    PlaylistPanel& Panel(int player) { return *panels_.at(static_cast<std::size_t>(player - 1)); }
    /** First selected row of a player's list, -1 for none. */
    int SelectedRow(int player) const;
    /** Header caption of a player's list, as it is shown. */
    QString Caption(int player) const;
    /** Remaining time and end of both lists; called every second and after changes. */
    void RefreshTimes();

Q_SIGNALS:
    /** Files and folders dropped before a row of a player's list. */
    void FilesDropped(int player, int row, const QStringList& paths);
    void TitlesDropped(int player, int row, const QList<TitleRecord>& titles);

private:
    void ConnectPanel(int player);
    void ConnectDrops(int player);
    void ShowStarted(int player, int row);
    void MakeActive(int player);
    void ConnectActions(DeskActions& actions);
    QList<int> SelectedRows(int player) const;

    Desk& desk_;
    PlaylistActions& listActions_;
    std::array<PlaylistPanel*, 2> panels_;
};

} // namespace kalvo
