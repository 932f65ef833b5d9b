#include "playlists/DisplayName.h"

#include "base/FileName.h"

namespace kalvo {

void SetFromDisplayName(PlaylistEntry& entry, const QString& name) {
    const QString shown = FileName::WithoutMusicExtension(name.trimmed());
    const qsizetype hyphen = shown.indexOf(u'-');
    entry.artist = hyphen < 0 ? QString() : shown.left(hyphen).trimmed();
    entry.title = shown.mid(hyphen + 1).trimmed();
}

PlaylistEntry EntryFromFile(const QString& path) {
    PlaylistEntry entry;
    SetFromDisplayName(entry, FileName::Last(path));
    entry.duration = QStringLiteral("0");
    entry.path = path;
    return entry;
}

} // namespace kalvo
