#include "app/FileDrop.h"

#include "playlists/ui/PlaylistDrag.h"
#include "widgets/DragTypes.h"

#include <QDropEvent>
#include <QMimeData>
#include <QWidget>

namespace kalvo {

FileDrop::FileDrop(QWidget& window) : QObject(&window) {
    window.setAcceptDrops(true);
    window.installEventFilter(this);
}

bool FileDrop::eventFilter(QObject* watched, QEvent* event) {
    const bool isDrop = event->type() == QEvent::Drop;
    if (!isDrop && event->type() != QEvent::DragEnter && event->type() != QEvent::DragMove)
        return QObject::eventFilter(watched, event);
    auto* drop = static_cast<QDropEvent*>(event);
    const QStringList paths = PlaylistDrag::TakePaths(drop->mimeData());
    if (paths.isEmpty() || drop->mimeData()->hasFormat(DragTypes::ArchiveTitles())) // these go to the lists only
        return false;
    drop->setDropAction(Qt::CopyAction);
    drop->accept();
    if (isDrop)
        Q_EMIT Dropped(paths);
    return true;
}

} // namespace kalvo
