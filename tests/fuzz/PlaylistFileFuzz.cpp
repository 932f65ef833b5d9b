// ".wil" files that are damaged: reading never changes them, saving over them works and loses nothing of the lists.

#include "FuzzInput.h"

#include "playlists/PlaylistFile.h"

#include <QDir>
#include <QTemporaryDir>

using kalvo::PlaylistFile;
using kalvo::fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/kalvo-XXXXXX"));
    static const kalvo::SystemClock clock;
    const QString path = folder.filePath(QStringLiteral("a.wil"));
    for (const QString& name : QDir(folder.path()).entryList(QDir::Files))
        QFile::remove(folder.filePath(name));
    kalvo::fuzz::WriteFile(path, kalvo::fuzz::Input(data, size).Rest());
    PlaylistFile playlist(path, clock);
    PlaylistFile::Lists lists;
    const PlaylistFile::Result loaded = playlist.Load(lists);
    Require(loaded.outcome != PlaylistFile::Outcome::SetAside, "reading moves nothing");
    kalvo::PlaylistEntry entry;
    entry.title = QStringLiteral("a");
    entry.path = QStringLiteral("/m/a.mp3");
    if (playlist.Save({QList{entry}, {}}).outcome == PlaylistFile::Outcome::Failed)
        return 0; // a schema of its own that refuses our rows
    PlaylistFile::Lists saved;
    Require(playlist.Load(saved).outcome == PlaylistFile::Outcome::Done, "what was saved can be read");
    Require(saved[0].size() == 1 && saved[0][0].path == entry.path && saved[1].isEmpty(), "and is what was saved");
    return 0;
}
