#include "playlists/M3uWriter.h"

#include "base/AnsiText.h"
#include "playlists/ListCaption.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kalvo {

namespace {

int WholeSeconds(const PlaylistEntry& entry, double seconds) {
    constexpr double most = std::numeric_limits<qint16>::max();
    if (seconds > 0)
        return static_cast<int>(std::nearbyint(std::min(seconds, most)));
    const int told = DurationSeconds(entry.duration);
    return told > 0 ? std::min(told, static_cast<int>(most)) : -1;
}

/** A line break within would make a line of its own. */
QString OneLine(QString text) {
    return text.replace(u'\r', u' ').replace(u'\n', u' ');
}

} // namespace

QByteArray WriteM3u(const QList<PlaylistEntry>& entries, const TitleLength& length, bool utf8) {
    QByteArray bytes;
    const auto addLine = [&bytes, utf8](const QString& line) {
        bytes += (utf8 ? OneLine(line).toUtf8() : AnsiText::Encode(OneLine(line))) + "\r\n";
    };
    addLine(QStringLiteral("#EXTM3U"));
    for (const PlaylistEntry& entry : entries) {
        const std::optional<double> told = length(entry.path);
        if (!told)
            return {};
        const int seconds = WholeSeconds(entry, *told);
        addLine(QStringLiteral("#EXTINF:") + QString::number(seconds) + u',' + entry.artist + QStringLiteral(" - ") +
                entry.title);
        addLine(entry.path);
    }
    return bytes;
}

} // namespace kalvo
