#pragma once

#include "app/HoverTips.h"
#include "tags/TagForm.h"

#include <QObject>
#include <QPointer>

class QAction;

namespace kalvo {

struct Desk;
class ArchivePanel;
class DeskActions;
class ListBand;
class PlaylistActions;
class frmTagEditor;

/** What the main window does with tags: the editor's commands, what follows a saved file, the floating tips. */
class TagCommands : public QObject {
    Q_OBJECT

public:
    /** All outlive the commands. window: parent of the editor, and where the decks are found. */
    TagCommands(Desk& desk, DeskActions& actions, const PlaylistActions& listActions, ArchivePanel& archive,
                ListBand& lists, QWidget& window);
    ~TagCommands() override;

    HoverTips& Tips() { return tips_; }

    /** Before the program ends: false when edited tags are not saved and the user wants to keep them. Asks. */
    bool MayEnd() const;
    /** At the program's end: comes back when the files being saved are written. */
    void FinishSaving() const;

Q_SIGNALS:
    /** German: why the archive does not follow a saved file. */
    void Warned(const QString& text);

private:
    QAction* AddCommand(const QString& name, QWidget& area);
    void WatchArchive();
    void WatchLists();
    void WatchDecks();
    QStringList SelectedListPaths() const;
    void Edit(const QStringList& paths);
    void Follow(const TagSaved& saved);

    Desk& desk_;
    const PlaylistActions& listActions_;
    ArchivePanel& archive_;
    ListBand& lists_;
    QWidget& window_;
    HoverTips tips_;
    QPointer<frmTagEditor> editor_;
};

} // namespace kalvo
