#include "app/ListBand.h"

#include "app/Desk.h"
#include "app/DeskActions.h"
#include "playback/ListEnds.h"
#include "playlists/ListCaption.h"
#include "playlists/ui/PlaylistPanel.h"
#include "widgets/SkinStyle.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QMenu>

#include <algorithm>

namespace kalvo {

ListBand::ListBand(Desk& desk, PlaylistActions& listActions, DeskActions& actions, QWidget* parent)
    : QWidget(parent),
      desk_(desk),
      listActions_(listActions),
      panels_{new PlaylistPanel(desk.list1, this), new PlaylistPanel(desk.list2, this)} {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    for (const int player : {1, 2}) {
        row->addWidget(&Panel(player), 1);
        ConnectPanel(player);
        ConnectDrops(player);
        Panel(player).SetContextActions({actions.moveToList.at(static_cast<std::size_t>(2 - player)), actions.playNext,
                                         actions.playNextRemoved, actions.shuffle, actions.removeMarked,
                                         actions.removeAll});
    }
    ConnectActions(actions);
    connect(&desk_.mixer, &Mixer::TitleStarted, this, &ListBand::ShowStarted);
}

void ListBand::SetLayoutMode(LayoutMode mode) {
    layout()->setSpacing(SkinStyle::Units().Gap(2));
    panels_[0]->SetLayoutMode(mode);
    panels_[1]->SetLayoutMode(mode);
    RefreshTimes();
}

QList<int> ListBand::SelectedRows(int player) const {
    return panels_.at(static_cast<std::size_t>(player - 1))->View().SelectedRows();
}

int ListBand::SelectedRow(int player) const {
    const QList<int> rows = SelectedRows(player);
    return rows.isEmpty() ? -1 : *std::min_element(rows.begin(), rows.end());
}

QString ListBand::Caption(int player) const {
    return panels_.at(static_cast<std::size_t>(player - 1))->Caption();
}

void ListBand::ConnectPanel(int player) {
    PlaylistPanel* panel = &Panel(player);
    PlaylistView* view = &panel->View();
    connect(panel, &PlaylistPanel::Activated, this, [this](int number) { listActions_.SetActiveList(number); });
    connect(view, &PlaylistView::PlayRequested, this, [this, player](int row) { desk_.mixer.PlayRow(player, row); });
    connect(view, &PlaylistView::RemoveRequested, this,
            [this, player](const QList<int>& rows) { listActions_.RemoveRows(player, rows); });
    connect(view, &PlaylistView::MoveRequested, this,
            [this, player](const QList<int>& rows, int target) { listActions_.MoveRows(player, rows, target); });
    connect(&listActions_.Undo(), &ListUndo::NameChanged, panel, &PlaylistPanel::SetPlaylistName);
    connect(&desk_.List(player), &Playlist::Changed, this, &ListBand::RefreshTimes);
}

/** Questions open only when the drag is over: until the drop returns, the other window or program waits for it. */
void ListBand::ConnectDrops(int player) {
    PlaylistView* view = &Panel(player).View();
    connect(
        view, &PlaylistView::EntriesDropped, this,
        [this, player](int row, const QList<DraggedEntry>& entries, int source) {
            listActions_.DropEntries(player, row, entries, source);
        },
        Qt::QueuedConnection);
    connect(
        view, &PlaylistView::FilesDropped, this,
        [this, player](int row, const QStringList& paths) { Q_EMIT FilesDropped(player, row, paths); },
        Qt::QueuedConnection);
    connect(
        view, &PlaylistView::TitlesDropped, this,
        [this, player](int row, const QList<TitleRecord>& titles) { Q_EMIT TitlesDropped(player, row, titles); },
        Qt::QueuedConnection);
}

void ListBand::ShowStarted(int player, int row) {
    MakeActive(player);
    Panel(player).View().ShowComing(row);
}

/** A menu that is open means the list that it was opened for; the other one becomes active when it has acted. */
void ListBand::MakeActive(int player) {
    if (const auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget()))
        connect(
            menu, &QMenu::aboutToHide, this, [this, player] { MakeActive(player); },
            static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
    else
        listActions_.SetActiveList(player);
}

void ListBand::ConnectActions(DeskActions& actions) {
    for (const int target : {1, 2}) {
        connect(actions.moveToList.at(static_cast<std::size_t>(target - 1)), &QAction::triggered, this,
                [this, target] { listActions_.MoveToList(target, SelectedRows(3 - target)); });
    }
    const auto active = [this] { return SelectedRows(listActions_.ActiveList()); };
    connect(actions.playNext, &QAction::triggered, this, [this, active] { listActions_.MarkPlayNext(active()); });
    connect(actions.playNextRemoved, &QAction::triggered, this,
            [this, active] { listActions_.UnmarkPlayNext(active()); });
    connect(actions.shuffle, &QAction::triggered, this, [this] { listActions_.Shuffle(); });
    connect(actions.removeMarked, &QAction::triggered, this,
            [this, active] { listActions_.RemoveRows(listActions_.ActiveList(), active()); });
    connect(actions.removeAll, &QAction::triggered, this, [this] {
        const int player = listActions_.ActiveList(); // another list may become active while the question is open
        if (listActions_.RemoveAll())
            Panel(player).ResetCaption();
    });
}

void ListBand::RefreshTimes() {
    const ListEnds ends = EndsOfLists(desk_.mixer.State(), {ComingSeconds(desk_.list1), ComingSeconds(desk_.list2)});
    for (const int player : {1, 2}) {
        const auto index = static_cast<std::size_t>(player - 1);
        Panel(player).SetEndTime(RestText(ends.rest.at(index)), UntilText(ends.end.at(index), desk_.clock.Now()));
    }
}

} // namespace kalvo
