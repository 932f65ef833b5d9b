#include "archive/Trash.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace kalvo::Trash {

std::optional<Item> Move(const QString& path) {
    QString inTrash;
    if (!QFile::moveToTrash(path, &inTrash))
        return std::nullopt;
    return Item{path, inTrash};
}

bool Restore(const Item& item) {
    if (item.inTrash.isEmpty() || QFileInfo::exists(item.path) || !QFile::rename(item.inTrash, item.path))
        return false;
    // The bin keeps a note beside each file; without its file it is a stray one.
    const QFileInfo kept(item.inTrash);
    QFile::remove(QDir(kept.path()).filePath(QStringLiteral("../info/%1.trashinfo").arg(kept.fileName())));
    return true;
}

} // namespace kalvo::Trash
