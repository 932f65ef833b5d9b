#include "playback/DeckTitles.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace kalvo {

std::optional<double> CuePoint(const QString& info) {
    static const QRegularExpression form(QStringLiteral("^[0-9]{1,6}\\.[0-9]$"));
    if (!form.match(info).hasMatch()) {
        return std::nullopt;
    }
    return info.toDouble();
}

QString FormatText(const QString& path, const audio::ChannelInfo& info) {
    const QString kind = QFileInfo(path).suffix().toUpper();
    return info.bitrate > 0 ? QStringLiteral("%1 %2 kbit/s").arg(kind).arg(info.bitrate) : kind;
}

bool FileExists(const QString& path) {
    return QFileInfo(path).isFile();
}

} // namespace kalvo
