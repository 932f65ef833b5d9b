#include "app/GuestCommands.h"

#include "app/Desk.h"
#include "live/ui/GuestPanel.h"
#include "live/ui/frmWunschzettel.h"

#include <QTimer>

namespace kalvo {

GuestCommands::GuestCommands(Desk& desk, QObject* parent)
    : QObject(parent), desk_(desk), page_({desk.archive, desk.wishes, desk.mixer, desk.list1, desk.list2, desk.clock}) {
    QTimer::singleShot(0, this, &GuestCommands::Restore); // when the window can tell
}

void GuestCommands::AddPanel(frmWunschzettel& window) {
    window.AddHead(new GuestPanel(page_.Server(), desk_.settings, &window));
}

void GuestCommands::Restore() {
    GuestServer& server = page_.Server();
    GuestPanel::Restore(server, desk_.settings);
    if (server.IsOn())
        Q_EMIT Told(QStringLiteral("Die Seite für Wünsche von Telefonen ist an (Werkzeuge - Wunschzettel)."));
    else if (!server.Failure().isEmpty())
        Q_EMIT Told(server.Failure());
}

} // namespace kalvo
