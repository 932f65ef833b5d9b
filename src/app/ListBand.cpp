#include "app/ListBand.h"

#include "app/Desk.h"
#include "app/DeskActions.h"
#include "playlists/ListCaption.h"
#include "playlists/ui/PlaylistPanel.h"
#include "widgets/SkinStyle.h"

#include <QHBoxLayout>

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
        Panel(player).SetContextActions({actions.moveToList.at(static_cast<std::size_t>(2 - player)), actions.playNext,
                                         actions.playNextRemoved, actions.shuffle, actions.removeMarked,
                                         actions.removeAll});
    }
    ConnectActions(actions);
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
    return ListCaption(player, SelectedRow(player), desk_.List(player).Count(), listActions_.Undo().Name());
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
    connect(view, &PlaylistView::EntriesDropped, this,
            [this, player](int row, const QList<DraggedEntry>& entries, int source) {
                listActions_.DropEntries(player, row, entries, source);
            });
    connect(view, &PlaylistView::FilesDropped, this,
            [this, player](int row, const QStringList& paths) { Q_EMIT FilesDropped(player, row, paths); });
    connect(view, &PlaylistView::TitlesDropped, this,
            [this, player](int row, const QList<TitleRecord>& titles) { listActions_.AddTitles(player, titles, row); });
    connect(&listActions_.Undo(), &ListUndo::NameChanged, panel, &PlaylistPanel::SetPlaylistName);
    connect(&desk_.List(player), &Playlist::Changed, this, &ListBand::RefreshTimes);
    connect(&desk_.mixer, &Mixer::TitleStarted, this, [this](int started) { listActions_.SetActiveList(started); });
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
    const MixState state = desk_.mixer.State();
    for (const int player : {1, 2}) {
        const DeckState& deck = state.Deck(player);
        const qint64 onDeck = deck.playing || deck.paused ? std::max(0, deck.length - deck.position) : 0;
        const qint64 remaining = RemainingSeconds(desk_.List(player)) + onDeck;
        Panel(player).SetEndTime(RestText(remaining), UntilText(remaining, desk_.clock.Now()));
    }
}

} // namespace kalvo
