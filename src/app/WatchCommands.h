#pragma once

#include "archive/WatchedFolders.h"

#include <QObject>

class QAction;

namespace kalvo {

struct Desk;
class DeskActions;

/** The watched folders in the main window: the command that offers what is new, and the lists that follow a move. */
class WatchCommands : public QObject {
    Q_OBJECT

public:
    /** desk and actions outlive the commands. */
    WatchCommands(Desk& desk, DeskActions& actions, QObject* parent = nullptr);

    WatchedFolders& Folders() { return folders_; }

Q_SIGNALS:
    /** These files are to be shown in the import dialog. */
    void ImportRequested(const QStringList& files);
    /** For the status line. */
    void Message(const QString& text);

private:
    void Offer();
    void FollowMove(const QString& from, const QString& to);

    Desk& desk_;
    WatchedFolders folders_;
    QAction* offer_; ///< `NeueTitelEinlesen`
};

} // namespace kalvo
