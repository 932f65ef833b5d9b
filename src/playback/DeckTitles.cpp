#include "playback/DeckTitles.h"

#include <QFileInfo>

namespace kalvo {

QString FormatText(const QString& path, const audio::ChannelInfo& info) {
    const QString kind = QFileInfo(path).suffix().toUpper();
    return info.bitrate > 0 ? QStringLiteral("%1 %2 kbit/s").arg(kind).arg(info.bitrate) : kind;
}

bool FileExists(const QString& path) {
    return QFileInfo(path).isFile();
}

} // namespace kalvo
