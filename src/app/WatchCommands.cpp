#include "app/WatchCommands.h"

#include "app/Desk.h"
#include "app/DeskActions.h"
#include "base/FileName.h"

#include <QAction>

namespace kalvo {

WatchCommands::WatchCommands(Desk& desk, DeskActions& actions, QObject* parent)
    : QObject(parent),
      desk_(desk),
      folders_(desk.archive, desk.settings, desk.folder.Path(QStringLiteral("\\Klang.dat"))),
      offer_(new QAction(tr("&Neue Titel einlesen..."), this)) {
    offer_->setObjectName(QStringLiteral("NeueTitelEinlesen"));
    offer_->setEnabled(false);
    actions.archiveMenu->addAction(offer_);
    connect(offer_, &QAction::triggered, this, [this] { Q_EMIT ImportRequested(folders_.NewFiles()); });
    connect(&folders_, &WatchedFolders::NewFilesFound, this, &WatchCommands::Offer);
    connect(&folders_, &WatchedFolders::TitleMoved, this, &WatchCommands::FollowMove);
    connect(actions.archiveMenu, &QMenu::aboutToShow, this,
            [this] { offer_->setEnabled(!folders_.NewFiles().isEmpty()); });
}

/** In the status line only: a question would stand in the way of a running show. */
void WatchCommands::Offer() {
    const auto count = folders_.NewFiles().size();
    offer_->setEnabled(count > 0);
    if (count > 0)
        Q_EMIT Message(tr("%1 neue Titel in den beobachteten Ordnern (Musikarchiv - Neue Titel einlesen)").arg(count));
}

void WatchCommands::FollowMove(const QString& from, const QString& to) {
    for (const int player : {1, 2}) {
        Playlist& list = desk_.List(player);
        for (int row = 0; row < list.Count(); ++row) {
            if (list.At(row).path == from)
                list.SetPath(row, to);
        }
    }
    desk_.mixer.FollowMove(from, to);
    const std::optional<TitleRecord> title = desk_.archive.FindByPath(to);
    desk_.charts.Move(from, to, title ? title->Titel : QString());
    Q_EMIT Message(tr("Wiedergefunden: ") + FileName::Last(to));
}

} // namespace kalvo
