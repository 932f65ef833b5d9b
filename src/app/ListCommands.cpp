#include "app/ListCommands.h"

#include "app/Desk.h"
#include "app/DeskActions.h"
#include "app/FileDrop.h"
#include "app/ListBand.h"
#include "app/TitleLengths.h"
#include "app/UndoCommands.h"
#include "base/FileName.h"
#include "base/PlayTime.h"
#include "playlists/ui/PlaylistPanel.h"
#include "playlists/ui/frmWLEigenschaften.h"
#include "widgets/PlainTip.h"
#include "widgets/SavePath.h"
#include "widgets/SkinStyle.h"

#include <QFileDialog>
#include <QProgressDialog>
#include <QScopeGuard>

namespace kalvo {

namespace {

const auto listFilter = QStringLiteral("Wiedergabeliste (wil) (*.wil *.WIL)");
const auto importFilter = QStringLiteral("Playlists (*.m3u *.M3U)");
const auto otherFilter = QStringLiteral("Weitere Playlists (*.m3u8 *.M3U8 *.pls *.PLS)");
const auto exportFilter = QStringLiteral("Playliste (m3u) (*.m3u)");
const QStringList kListEndings{QStringLiteral(".m3u"), QStringLiteral(".m3u8")};
constexpr int progressDelay = 500; // ms
const auto otherExportFilter = QStringLiteral("Playliste in UTF-8 (m3u8) (*.m3u8)");

} // namespace

ListCommands::ListCommands(const Parts& parts)
    : QObject(&parts.window),
      parts_(parts),
      recent_(parts.desk.folder.Path(QStringLiteral("\\Wiedergabeliste\\zuletzt.dll"))),
      files_(parts_.lists, parts_.intake, recent_, parts.desk.clock),
      recentMenu_(new QMenu(QStringLiteral("&Zuletzt geöffnet"), &parts.window)) {
    BuildMenu();
    ConnectLists();
    parts_.undo.Add(parts_.lists.Undo().Stack());
}

template<typename Act>
QAction* ListCommands::Add(const QString& name, const QString& text, Act act, const QKeySequence& shortcut) {
    auto* action = new QAction(text, this);
    action->setObjectName(name);
    action->setShortcut(shortcut);
    connect(action, &QAction::triggered, this, act);
    return action;
}

void ListCommands::BuildMenu() {
    QAction* open = Add(QStringLiteral("WiedergabelisteOeffnen"), QStringLiteral("Wiedergabeliste &öffnen..."),
                        &ListCommands::WiedergabelisteOeffnen, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_O));
    QAction* save = Add(QStringLiteral("WiedergabelisteSpeichern"), QStringLiteral("Wiedergabeliste s&peichern..."),
                        &ListCommands::WiedergabelisteSpeichern, QKeySequence::Save);
    QAction* import = Add(QStringLiteral("m3uHinzufuegen"), QStringLiteral("Pl&aylist (m3u) hinzufügen..."),
                          &ListCommands::m3uHinzufuegen);
    exporting_ = Add(QStringLiteral("m3uSpeichern"), QStringLiteral("Als Playliste (m3&u) speichern..."),
                     &ListCommands::m3uSpeichern);
    for (const int player : {1, 2}) {
        fromPlayer_.at(static_cast<std::size_t>(player - 1)) =
            Add(QStringLiteral("TitelVonPlayer%1Hinzufuegen").arg(player),
                QStringLiteral("Titel auf Player %1 in seine Liste aufnehmen").arg(player),
                [this, player] { AddFromPlayer(player); });
    }
    QAction* properties = Add(QStringLiteral("EigenschaftenWiedergabeliste"), QStringLiteral("&Eigenschaften..."),
                              &ListCommands::EigenschaftenWiedergabeliste);
    fullView_ = new QAction(QStringLiteral("&Vollansicht"), this);
    fullView_->setObjectName(QStringLiteral("WLVollansicht"));
    fullView_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_L));
    fullView_->setCheckable(true);
    parts_.actions.fullViews->addAction(fullView_);
    connect(fullView_, &QAction::toggled, this, &ListCommands::WLVollansicht); // also when another full view ends it
    recentMenu_->setObjectName(QStringLiteral("ZuletztGeoeffnet"));
    connect(recentMenu_, &QMenu::aboutToShow, this, &ListCommands::FillRecent);

    QMenu& menu = *parts_.actions.listMenu;
    QAction* first = menu.actions().value(0);
    menu.insertActions(first, {open, recentMenu_->menuAction(), save, import, exporting_});
    menu.insertSeparator(first);
    menu.insertActions(parts_.actions.playNext, {fromPlayer_[0], fromPlayer_[1]});
    menu.insertSeparator(parts_.actions.playNext);
    menu.addSeparator();
    menu.addActions({fullView_, properties});
    for (const int player : {1, 2}) {
        PlaylistView& view = parts_.band.Panel(player).View();
        auto* separator = new QAction(this);
        separator->setSeparator(true);
        view.addActions({separator, open, save, import, exporting_, fullView_, properties});
    }
}

void ListCommands::ConnectLists() {
    connect(&parts_.band, &ListBand::FilesDropped, this,
            [this](int player, int row, const QStringList& paths) { files_.Take(player, paths, row); });
    connect(&parts_.band, &ListBand::TitlesDropped, this,
            [this](int player, int row, const QList<TitleRecord>& titles) {
                parts_.intake.AddTitles(player, titles, row);
            });
    connect(&parts_.intake, &PlaylistIntake::Progress, this, &ListCommands::ShowProgress);
    connect(&parts_.intake, &PlaylistIntake::Finished, this, [this] { delete progress_.data(); });
    auto* drop = new FileDrop(parts_.window);
    // Questions open only when the drag is over: the other program waits for its end.
    connect(drop, &FileDrop::Dropped, this, &ListCommands::Take, Qt::QueuedConnection);
}

// ---- files

void ListCommands::Take(const QStringList& paths) {
    files_.Take(parts_.lists.ActiveList(), paths);
}

void ListCommands::WiedergabelisteOeffnen() {
    const QString path = AskPath(false, QStringLiteral("Wiedergabeliste öffnen"), {listFilter}, QStringLiteral("wil"));
    if (!path.isEmpty())
        files_.Open(path);
}

void ListCommands::WiedergabelisteSpeichern() {
    const QString path =
        AskPath(true, QStringLiteral("Wiedergabeliste speichern"), {listFilter}, QStringLiteral("wil"));
    if (!path.isEmpty())
        files_.Save(path);
}

void ListCommands::m3uHinzufuegen() {
    const QString path =
        AskPath(false, QStringLiteral("Playlist Öffnen"), {importFilter, otherFilter}, QStringLiteral("m3u"));
    if (!path.isEmpty())
        files_.Import(parts_.lists.ActiveList(), path);
}

void ListCommands::m3uSpeichern() {
    const QString path = AskPath(true, QStringLiteral("Titel als Playliste (m3u) speichern"),
                                 {exportFilter, otherExportFilter}, QStringLiteral("m3u"));
    if (path.isEmpty())
        return;
    const QScopeGuard done([this] { exporting_->setEnabled(true); });
    exporting_->setEnabled(false); // the desk goes on meanwhile
    TitleLengths lengths(parts_.lists.List(parts_.lists.ActiveList()).Count(), parts_.window);
    files_.Export(path, [&lengths](const QString& title) { return lengths.Of(title); });
}

QString ListCommands::AskPath(bool saves, const QString& title, const QStringList& filters, const QString& ending) {
    const bool isOwn = ending == QLatin1String("wil");
    const QString own = parts_.desk.folder.Path(QStringLiteral("\\Wiedergabeliste\\"));
    QFileDialog dialog(&parts_.window, title, isOwn || folder_.isEmpty() ? own : folder_);
    dialog.setNameFilters(filters);
    dialog.setDefaultSuffix(ending);
    dialog.setAcceptMode(saves ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(saves ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    // A ".wil" has a question of its own when it exists.
    dialog.setOption(QFileDialog::DontConfirmOverwrite, isOwn);
    connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog, ending](const QString& filter) {
        dialog.setDefaultSuffix(filter == otherExportFilter ? QStringLiteral("m3u8") : ending);
    });
    QString path;
    if (saves)
        path = AskSavePath(dialog, isOwn ? QStringList{QStringLiteral(".wil")} : kListEndings, !isOwn);
    else if (dialog.exec() == QDialog::Accepted)
        path = dialog.selectedFiles().value(0);
    if (!isOwn && !path.isEmpty())
        folder_ = FileName::Folder(path);
    return path;
}

void ListCommands::FillRecent() {
    recentMenu_->clear();
    int number = 0;
    for (const QString& path : recent_.Paths()) {
        const QString name = FileName::Last(path).replace(u'&', QStringLiteral("&&"));
        QAction* action = recentMenu_->addAction(QStringLiteral("&%1 %2").arg(++number).arg(name), this,
                                                 [this, path] { Take({path}); });
        action->setToolTip(PlainTip(path));
        action->setStatusTip(path);
    }
    if (number == 0)
        recentMenu_->addAction(QStringLiteral("(noch keine)"))->setEnabled(false);
    recentMenu_->setToolTipsVisible(true);
}

// ---- lists

void ListCommands::AddFromPlayer(int player) {
    const DeckTitle& title = parts_.desk.mixer.Title(player);
    parts_.lists.AddFromPlayer(player, title.title, title.artist, PlayTime::Format(title.length), title.path);
}

void ListCommands::EigenschaftenWiedergabeliste() {
    const Playlist& list = parts_.lists.List(parts_.lists.ActiveList());
    delete properties_; // what it shows are the sums of a moment
    properties_ = new frmWLEigenschaften(list, parts_.lists.Undo().Name(), &parts_.window);
    properties_->show();
}

void ListCommands::WLVollansicht(bool on) {
    parts_.archive.setVisible(!on);
}

/** Seen only when it takes its time; the desk goes on meanwhile. */
void ListCommands::ShowProgress(int done, int total) {
    if (!progress_) {
        progress_ = new QProgressDialog(QStringLiteral("Die Titel werden gelesen..."), QStringLiteral("Abbrechen"), 0,
                                        0, &parts_.window);
        progress_->setObjectName(QStringLiteral("frmFortschritt"));
        progress_->setWindowTitle(QStringLiteral("Titel hinzufügen"));
        progress_->setAttribute(Qt::WA_ShowWithoutActivating); // the keys stay the players'
        progress_->setAutoReset(false);
        progress_->setMinimumDuration(progressDelay);
        const QRect room(parts_.window.mapToGlobal(QPoint()), parts_.window.size());
        progress_->move(room.bottomRight() - QPoint(progress_->sizeHint().width(), progress_->sizeHint().height()) -
                        QPoint(1, 1) * SkinStyle::Units().Of(3)); // the mixer stays in sight
        connect(progress_, &QProgressDialog::canceled, &parts_.intake, &PlaylistIntake::Cancel);
    }
    progress_->setMaximum(total);
    progress_->setValue(done);
}

} // namespace kalvo
