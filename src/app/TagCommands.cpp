#include "app/TagCommands.h"

#include "app/Desk.h"
#include "app/DeskActions.h"
#include "app/ListBand.h"
#include "archive/TitleImport.h"
#include "archive/ui/ArchivePanel.h"
#include "playlists/PlaylistActions.h"
#include "playlists/ui/PlaylistPanel.h"
#include "tags/ui/frmTagEditor.h"

#include <QAction>
#include <QTableView>

namespace kalvo {

TagCommands::TagCommands(Desk& desk, DeskActions& actions, const PlaylistActions& listActions, ArchivePanel& archive,
                         ListBand& lists, QWidget& window)
    : QObject(&window), desk_(desk), listActions_(listActions), archive_(archive), lists_(lists), window_(window) {
    QAction* inArchive = AddCommand(QStringLiteral("TagEditor"), archive);
    connect(inArchive, &QAction::triggered, this, [this] {
        QStringList paths;
        for (const TitleRecord& title : archive_.SelectedRecords())
            paths.append(title.Pfad);
        Edit(paths);
    });
    actions.archiveMenu->addSeparator();
    actions.archiveMenu->addAction(inArchive);
    QAction* inLists = AddCommand(QStringLiteral("TagEditorWL"), lists);
    connect(inLists, &QAction::triggered, this, [this] { Edit(SelectedListPaths()); });
    actions.listMenu->addSeparator();
    actions.listMenu->addAction(inLists);
    WatchArchive();
    WatchLists();
    WatchDecks();
}

TagCommands::~TagCommands() = default;

/** The key works where the titles are: in the archive it edits these, in a list those. */
QAction* TagCommands::AddCommand(const QString& name, QWidget& area) {
    auto* action = new QAction(tr("Tags &bearbeiten..."), this);
    action->setObjectName(name);
    action->setShortcut(QKeySequence(Qt::ALT | Qt::Key_Return));
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    action->setAutoRepeat(false);
    area.addAction(action);
    return action;
}

void TagCommands::WatchArchive() {
    if (auto* grid = archive_.findChild<QTableView*>(QStringLiteral("DataGrid2"))) {
        grid->addAction(findChild<QAction*>(QStringLiteral("TagEditor")));
        tips_.Watch(*grid->viewport(), [this, grid](const QPoint& place) -> std::optional<HoverTips::Subject> {
            const TitleRecord title = desk_.archive.RowAt(grid->indexAt(place).row());
            return HoverTips::Subject{title.Interpret, title.Titel, title.Pfad};
        });
    }
    // The line of the selected title, which is what pre-listening plays.
    for (const char* name : {"lblInterpret", "lblTitel", "lblTitelname"}) {
        auto* label = archive_.findChild<QWidget*>(QLatin1String(name));
        if (label == nullptr)
            continue;
        tips_.Watch(*label, [this](const QPoint&) -> std::optional<HoverTips::Subject> {
            const TitleRecord title = archive_.CurrentRecord();
            return HoverTips::Subject{title.Interpret, title.Titel, title.Pfad, true};
        });
    }
}

void TagCommands::WatchLists() {
    for (const int player : {1, 2}) {
        PlaylistView* view = &lists_.Panel(player).View();
        view->addAction(findChild<QAction*>(QStringLiteral("TagEditorWL")));
        tips_.Watch(*view->viewport(), [this, view, player](const QPoint& place) -> std::optional<HoverTips::Subject> {
            const int row = view->indexAt(place).row();
            if (row < 0)
                return std::nullopt;
            const PlaylistEntry& entry = desk_.List(player).At(row);
            return HoverTips::Subject{entry.artist, entry.title, entry.path};
        });
    }
}

void TagCommands::WatchDecks() {
    for (const int player : {1, 2}) {
        for (const char* name : {"LArtist", "LSong"}) {
            auto* label = window_.findChild<QWidget*>(QLatin1String(name) + QString::number(player));
            if (label == nullptr)
                continue;
            tips_.Watch(*label, [this, player](const QPoint&) -> std::optional<HoverTips::Subject> {
                const DeckTitle& title = desk_.mixer.Title(player);
                return HoverTips::Subject{title.artist, title.title, title.path, true};
            });
        }
    }
}

QStringList TagCommands::SelectedListPaths() const {
    int player = listActions_.ActiveList();
    for (const int other : {1, 2}) {
        if (lists_.Panel(other).View().hasFocus())
            player = other;
    }
    QStringList paths;
    for (const int row : lists_.Panel(player).View().SelectedRows())
        paths.append(desk_.List(player).At(row).path);
    return paths;
}

void TagCommands::Edit(const QStringList& paths) {
    if (paths.isEmpty())
        return;
    if (editor_ == nullptr) {
        editor_ = new frmTagEditor({desk_.settings, desk_.folder}, &window_);
        editor_->setAttribute(Qt::WA_DeleteOnClose);
        connect(editor_, &frmTagEditor::FileSaved, this, &TagCommands::Follow);
    }
    editor_->show();
    editor_->raise();
    editor_->activateWindow();
    editor_->Edit(paths);
}

bool TagCommands::MayEnd() const {
    return editor_ == nullptr || editor_->MayDrop();
}

void TagCommands::FinishSaving() const {
    if (editor_ != nullptr)
        editor_->FinishSaving();
}

void TagCommands::Follow(const TagSaved& saved) {
    tips_.Forget(saved.path);
    if (!saved.before || !saved.after)
        return;
    std::optional<TitleRecord> record = desk_.archive.FindByPath(saved.path);
    if (record) {
        FollowTags(*record, *saved.before, *saved.after);
        FitTagTexts(*record);
        if (const WriteResult followed = desk_.archive.UpdateRecord(*record); !followed)
            Q_EMIT Warned(followed.reason);
    }
    const bool renamed = saved.before->Titel != saved.after->Titel || saved.before->Interpret != saved.after->Interpret;
    if (!renamed)
        return;
    const TitleRecord& shown = record ? *record : *saved.after;
    desk_.mixer.FollowTexts(saved.path, shown.Titel, shown.Interpret);
    for (const int player : {1, 2}) {
        Playlist& list = desk_.List(player);
        for (int row = 0; row < list.Count(); ++row) {
            if (list.At(row).path == saved.path)
                list.SetTexts(row, shown.Titel, shown.Interpret);
        }
    }
}

} // namespace kalvo
