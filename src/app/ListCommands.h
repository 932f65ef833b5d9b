#pragma once

#include "playlists/PlaylistFileActions.h"

#include <QKeySequence>
#include <QObject>
#include <QPointer>

#include <array>

class QAction;
class QDialog;
class QMenu;
class QProgressDialog;
class QWidget;

namespace kalvo {

struct Desk;
class DeskActions;
class ListBand;
class UndoCommands;

/** What the menus do with the lists beyond the entries themselves: files, properties, full view, undo. */
class ListCommands : public QObject {
    Q_OBJECT

public:
    struct Parts {
        Desk& desk;
        PlaylistActions& lists;
        PlaylistIntake& intake;
        DeskActions& actions;
        ListBand& band;
        UndoCommands& undo;
        /** What the full view hides. */
        QWidget& archive;
        QWidget& window;
    };
    /** All parts outlive this. */
    explicit ListCommands(const Parts& parts);

    /** Playlist files, music files and folders for the active list: from the command line, or dropped. */
    void Take(const QStringList& paths);
    void WiedergabelisteOeffnen();
    void WiedergabelisteSpeichern();
    void m3uHinzufuegen();
    void m3uSpeichern();
    void EigenschaftenWiedergabeliste();

private:
    template<typename Act>
    QAction* Add(const QString& name, const QString& text, Act act, const QKeySequence& shortcut = {});
    void BuildMenu();
    void FillRecent();
    void AddFromPlayer(int player);
    void WLVollansicht(bool on);
    void ConnectLists();
    void ShowProgress(int done, int total);
    QString AskPath(bool saves, const QString& title, const QStringList& filters, const QString& ending);

    Parts parts_;
    RecentFiles recent_;
    PlaylistFileActions files_;
    QMenu* recentMenu_;
    QAction* fullView_ = nullptr;
    QAction* exporting_ = nullptr; ///< `m3uSpeichern`
    std::array<QAction*, 2> fromPlayer_{};
    QString folder_; ///< where a dialog for M3U files was last; "" at first
    QPointer<QDialog> properties_;
    QPointer<QProgressDialog> progress_;
};

} // namespace kalvo
