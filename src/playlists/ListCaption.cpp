#include "playlists/ListCaption.h"

#include "base/FileName.h"
#include "base/PlayTime.h"

#include <algorithm>

namespace kalvo {

QString ListCaption(int number, int selectedRow, int count, const QString& playlistName) {
    return QStringLiteral("Player ") + QString::number(number) + QStringLiteral("       ") +
           QString::number(selectedRow + 1) + QStringLiteral(". von ") + QString::number(count) +
           QStringLiteral(" in ") + playlistName;
}

QString WishCaption(int number, const QString& guest) {
    return QStringLiteral("Player ") + QString::number(number) + QStringLiteral("       gewünscht von: ") + guest;
}

QString PlaylistName(const QString& path) {
    const QString file = FileName::Last(path);
    const qsizetype extension = file.lastIndexOf(QLatin1String(".wil"), -1, Qt::CaseInsensitive);
    return extension < 0 ? QStringLiteral("Standard") : file.left(extension);
}

int DurationSeconds(const QString& duration) {
    return std::max({0, PlayTime::Parse(duration), duration.toInt()});
}

qint64 TotalSeconds(const Playlist& list) {
    qint64 seconds = 0;
    for (const PlaylistEntry& entry : list.Entries())
        seconds += DurationSeconds(entry.duration);
    return seconds;
}

QList<int> ComingSeconds(const Playlist& list) {
    QList<int> seconds;
    int last = list.CurrentRow();
    for (int row = 0; row < list.Count(); ++row) {
        if (list.At(row).icon == EntryIcon::PlayNext) {
            seconds.append(DurationSeconds(list.At(row).duration));
            last = row;
        }
    }
    for (int row = last + 1; row < list.Count(); ++row)
        seconds.append(DurationSeconds(list.At(row).duration));
    return seconds;
}

QString HoursText(qint64 seconds) {
    return QStringLiteral("%1:").arg(seconds / 3600, 2, 10, QChar(u'0')) +
           PlayTime::Format(static_cast<double>(seconds % 3600));
}

QString RestText(qint64 seconds) {
    return QStringLiteral("Rest ") + HoursText(seconds);
}

QString UntilText(qint64 seconds, const QDateTime& now) {
    return QStringLiteral("bis ") + now.addSecs(seconds).toString(QStringLiteral("HH:mm"));
}

} // namespace kalvo
