#include "playback/FileStamp.h"

#include <QDateTime>
#include <QFileInfo>

namespace kalvo {

FileStamp FileStamp::Of(const QString& path) {
    const QFileInfo file(path);
    return file.exists() ? FileStamp{file.size(), file.lastModified().toMSecsSinceEpoch()} : FileStamp();
}

} // namespace kalvo
