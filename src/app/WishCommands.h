#pragma once

#include "live/WishFile.h"
#include "playlists/PlaylistEntry.h"

#include <QHash>
#include <QKeySequence>
#include <QObject>
#include <QPointer>

class QAction;
class QWidget;

namespace kalvo {

struct Desk;
class ArchivePanel;
class DeskActions;
class ListBand;
class PlaylistActions;
class PlaylistIntake;
class frmWunschzettel;

/** What the menus do with the guests' wishes: noting them, their window, playing them. */
class WishCommands : public QObject {
    Q_OBJECT

public:
    struct Parts {
        Desk& desk;
        PlaylistActions& lists;
        PlaylistIntake& intake;
        DeskActions& actions;
        ArchivePanel& archive;
        ListBand& band;
        QWidget& window;
    };
    /** All parts outlive this. */
    explicit WishCommands(const Parts& parts);

    void TitelZumWunschzettelHinzufuegen();
    /** Brings the window to the front. */
    void Wunschzettel();
    /** Into a player's list; 0: the active one. */
    void Send(int player, const QList<Wish>& wishes);

Q_SIGNALS:
    /** For the status line. */
    void Told(const QString& text);
    /** The window has been made; others may add to it. */
    void WindowMade(kalvo::frmWunschzettel& window);

private:
    QAction* Add(const QString& name, const QString& text, const QKeySequence& shortcut, void (WishCommands::*act)());
    /** On the player that is not on air, in front of what its list has next; a running music fades over. */
    void Play(const Wish& wish);
    void ShowGuest(int player);
    void RemoveEntry(int player, quint64 id);

    Parts parts_;
    QPointer<frmWunschzettel> window_;
    QHash<QString, QString> guests_; ///< by the path of a wish that went into a list
};

} // namespace kalvo
