#include "app/HeadphoneCommands.h"

#include "app/Desk.h"
#include "app/DeskActions.h"
#include "app/ListBand.h"
#include "archive/ui/ArchivePanel.h"
#include "playback/ui/frmKopfhoerer.h"
#include "playlists/CueText.h"
#include "playlists/PlaylistActions.h"
#include "playlists/ui/PlaylistPanel.h"
#include "widgets/xMessageBox.h"

#include <QAction>
#include <QTableView>

namespace kalvo {

namespace {

double CueOf(const PlaylistEntry& entry) {
    return CueText::Read(entry.info).value_or(-1);
}

} // namespace

HeadphoneCommands::HeadphoneCommands(const Parts& parts) : QObject(&parts.window), parts_(parts) {
    BuildMenus();
    connect(&parts_.archive, &ArchivePanel::HeadphonesRequested, this, &HeadphoneCommands::ListenToArchive);
    for (const int player : {1, 2})
        connect(&parts_.desk.List(player), &Playlist::Changed, this, &HeadphoneCommands::FollowList);
}

HeadphoneCommands::~HeadphoneCommands() = default;

void HeadphoneCommands::BuildMenus() {
    const auto add = [this](const char* name, const QString& text, const QKeySequence& shortcut) {
        auto* action = new QAction(text, this);
        action->setObjectName(QString::fromUtf8(name));
        action->setShortcut(shortcut);
        action->setAutoRepeat(false);
        return action;
    };
    QAction* fromArchive = add("TitelMitKopfhörerVorhören", QStringLiteral("Titel mit &Kopfhörer vorhören"),
                               QKeySequence(Qt::CTRL | Qt::Key_K));
    QAction* fromList = add("TitelVorhoerenWL", QStringLiteral("Titel mit &Kopfhörer vorhören"),
                            QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_K));
    connect(fromArchive, &QAction::triggered, this, [this] { ListenToArchive(parts_.archive.CurrentRecord()); });
    connect(fromList, &QAction::triggered, this, &HeadphoneCommands::TitelVorhoerenWL);
    parts_.actions.archiveMenu->addSeparator();
    parts_.actions.archiveMenu->addAction(fromArchive);
    parts_.archive.AddContextActions({fromArchive});
    parts_.actions.listMenu->addAction(fromList);
    for (const int player : {1, 2})
        parts_.band.Panel(player).View().addAction(fromList);
}

void HeadphoneCommands::ListenToArchive(const TitleRecord& title) {
    if (parts_.desk.archive.Count() == 0) {
        xMessageBox::Ask(&parts_.window, QStringLiteral("Vorhören mit Kopfhörer"),
                         QStringLiteral("Funktion 'Vorhören mit Kopfhörer' kann nicht aufgerufen werden, da sich kein "
                                        "Titel im Musikarchiv befindet"),
                         {QStringLiteral("OK")}, xMessageBox::Sign::Warning);
    } else if (title.Pfad.isEmpty()) {
        Q_EMIT Told(QStringLiteral("Im Musikarchiv ist kein Titel gewählt."));
    } else {
        Listen({title.Titel, title.Interpret, title.Pfad});
    }
}

void HeadphoneCommands::TitelVorhoerenWL() {
    ListenToList(parts_.lists.ActiveList());
}

void HeadphoneCommands::ListenToList(int player) {
    const int row = parts_.band.SelectedRow(player);
    if (row < 0) {
        Q_EMIT Told(QStringLiteral("In Wiedergabeliste %1 ist kein Titel gewählt.").arg(player));
        return;
    }
    const PlaylistEntry& entry = parts_.desk.List(player).At(row);
    Listen({entry.title, entry.artist, entry.path, player, entry.id, CueOf(entry)});
}

void HeadphoneCommands::Listen(const HeadphoneTitle& title) {
    if (!phones_) {
        phones_ = new frmKopfhoerer(parts_.desk.layer, parts_.desk.settings, &parts_.window);
        phones_->setAttribute(Qt::WA_DeleteOnClose);
        phones_->ShowWaves(parts_.desk.folder.Path(QStringLiteral("\\Wellenformen")));
        connect(phones_, &frmKopfhoerer::CueWanted, this, &HeadphoneCommands::TakeCue);
        // The players' keys go on working while the window has the keyboard.
        for (const auto& both : {parts_.actions.play, parts_.actions.stop, parts_.actions.pause, parts_.actions.next})
            phones_->addActions({both[0], both[1]});
    }
    phones_->show();
    phones_->raise();
    phones_->activateWindow();
    phones_->Listen(title);
}

void HeadphoneCommands::TakeCue(const HeadphoneTitle& title, const QString& cue) {
    if (!parts_.lists.SetCue(title.source, title.entry, cue)) {
        Q_EMIT Told(QStringLiteral("Der Titel steht nicht mehr in Wiedergabeliste %1.").arg(title.source));
        return;
    }
    Q_EMIT Told(cue.isEmpty() ? QStringLiteral("Cue-Punkt gelöscht: ") + title.title
                              : QStringLiteral("Cue-Punkt bei %1 s: %2").arg(cue, title.title));
}

/** The cue point on show is the entry's, whoever has changed it. */
void HeadphoneCommands::FollowList() {
    if (!phones_ || phones_->Title().source == 0)
        return;
    const Playlist& list = parts_.desk.List(phones_->Title().source);
    if (const int row = list.FindEntry(phones_->Title().entry); row >= 0)
        phones_->ShowCue(CueOf(list.At(row)));
}

} // namespace kalvo
