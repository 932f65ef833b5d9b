#include "playlists/FileGathering.h"

#include "base/FileName.h"
#include "playlists/DisplayName.h"
#include "playlists/M3uReader.h"
#include "tags/TitleFields.h"
#include "tags/clsAudioGenie.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace kalvo {

namespace {

/** A playlist is some kilobytes; what is much larger is something else. */
constexpr qint64 maximumPlaylistSize = 64LL * 1024 * 1024;

QStringList MusicBelow(const QString& folder, const FileProgress& progress) {
    QStringList found;
    QDirIterator walk(folder, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext() && !progress.cancelled) {
        const QString path = walk.next();
        if (FileName::IsMusic(path))
            found.append(path);
    }
    found.sort(Qt::CaseInsensitive);
    return found;
}

/** The duration stays empty: it is found out later. */
void AppendFile(QList<PlaylistEntry>& entries, const QString& path) {
    entries.append(EntryFromFile(path));
    entries.back().duration.clear();
}

void AppendPlaylist(GatheredFiles& gathered, const QString& path) {
    QFile file(path);
    QList<PlaylistEntry> entries;
    if (file.open(QIODevice::ReadOnly) && file.size() <= maximumPlaylistSize)
        entries = ReadM3u(file.readAll(), path);
    (entries.isEmpty() ? gathered.unusable : gathered.playlists).append(path);
    gathered.entries += entries;
}

void ReadTags(PlaylistEntry& entry, bool takesTexts, clsAudioGenie& tags) {
    if (const auto fields = ReadTitleFields(tags, entry.path)) {
        entry.duration = fields->Zeit;
        if (takesTexts && !fields->Titel.isEmpty()) {
            entry.title = fields->Titel;
            entry.artist = fields->Interpret;
        }
    }
    if (entry.duration.isEmpty())
        entry.duration = QStringLiteral("0");
}

} // namespace

GatheredFiles GatherFiles(const QStringList& paths, bool takesTexts, FileProgress& progress) {
    GatheredFiles gathered;
    for (const QString& path : paths) {
        if (IsM3uName(path)) {
            AppendPlaylist(gathered, path);
        } else if (QFileInfo(path).isDir()) {
            for (const QString& file : MusicBelow(path, progress))
                AppendFile(gathered.entries, file);
        } else if (FileName::IsMusic(path)) {
            AppendFile(gathered.entries, path);
        }
    }
    progress.total = static_cast<int>(gathered.entries.size());
    clsAudioGenie tags;
    for (PlaylistEntry& entry : gathered.entries) {
        if (progress.cancelled)
            break;
        if (takesTexts || entry.duration.isEmpty())
            ReadTags(entry, takesTexts, tags);
        ++progress.done;
    }
    return gathered;
}

QSet<QString> MissingFiles(const QStringList& paths, FileProgress& progress) {
    progress.total = static_cast<int>(paths.size());
    QSet<QString> missing;
    for (const QString& path : paths) {
        if (progress.cancelled)
            break;
        if (!QFileInfo(path).isFile())
            missing.insert(path);
        ++progress.done;
    }
    return missing;
}

} // namespace kalvo
