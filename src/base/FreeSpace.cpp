#include "base/FreeSpace.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <filesystem>
#include <system_error>

namespace kalvo {

qint64 FreeSpaceOf(QString folder) {
    while (!QFileInfo::exists(folder) && folder.contains(u'/'))
        folder.truncate(folder.lastIndexOf(u'/', folder.size() - 1));
    if (folder.isEmpty())
        folder = QDir::rootPath();
    std::error_code error; // asks the path itself: what lies in a container has no mount point of its own
    const auto room = std::filesystem::space(QFile::encodeName(folder).toStdString(), error);
    return error ? -1 : static_cast<qint64>(room.available);
}

} // namespace kalvo
