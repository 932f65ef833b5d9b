#include "playlists/PlaylistSums.h"

#include "playlists/ListCaption.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QLocale>

#include <utility>

namespace kalvo {

PlaylistSums::PlaylistSums(QList<PlaylistEntry> entries) : entries_(std::move(entries)) {
    for (const PlaylistEntry& entry : std::as_const(entries_)) {
        const int seconds = DurationSeconds(entry.duration);
        seconds_ += seconds;
        unknown_ += seconds == 0 ? 1 : 0;
    }
}

bool PlaylistSums::Step(int milliseconds) {
    QElapsedTimer time;
    time.start();
    for (; next_ < entries_.size(); ++next_) {
        if (time.elapsed() >= milliseconds)
            return false;
        const QFileInfo file(entries_.at(next_).path);
        if (file.isFile())
            bytes_ += file.size();
        else
            ++missing_;
    }
    return true;
}

int PlaylistSums::Percent() const {
    return entries_.isEmpty() ? 100 : static_cast<int>(100 * next_ / entries_.size());
}

QString MegabyteText(qint64 bytes) {
    constexpr double megabyte = 1024.0 * 1024.0;
    return QLocale(QLocale::German).toString(static_cast<double>(bytes) / megabyte, 'f', 1) + QStringLiteral(" MB");
}

} // namespace kalvo
