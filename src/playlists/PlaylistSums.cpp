#include "playlists/PlaylistSums.h"

#include "playlists/ListCaption.h"

#include <QFileInfo>
#include <QLocale>

namespace kalvo {

PlaylistSums::PlaylistSums(const QList<PlaylistEntry>& entries) : titles_(entries.size()) {
    QStringList paths;
    for (const PlaylistEntry& entry : entries) {
        const int seconds = DurationSeconds(entry.duration);
        seconds_ += seconds;
        unknown_ += seconds == 0 ? 1 : 0;
        paths.append(entry.path);
    }
    worker_.Do([paths, files = files_]() -> BackgroundWorker::Answer {
        LookAt(paths, *files);
        return {};
    });
}

PlaylistSums::~PlaylistSums() {
    files_->unwanted = true;
}

void PlaylistSums::LookAt(const QStringList& paths, Files& files) {
    for (const QString& path : paths) {
        if (files.unwanted)
            return;
        const QFileInfo file(path);
        if (file.isFile())
            files.bytes += file.size();
        else
            ++files.missing;
        ++files.looked;
    }
}

int PlaylistSums::Percent() const {
    return titles_ == 0 ? 100 : static_cast<int>(100 * files_->looked / titles_);
}

QString MegabyteText(qint64 bytes) {
    constexpr double megabyte = 1024.0 * 1024.0;
    return QLocale(QLocale::German).toString(static_cast<double>(bytes) / megabyte, 'f', 1) + QStringLiteral(" MB");
}

} // namespace kalvo
