// M3U and PLS files: whatever is in them, titles are whole, and what the writer makes of them is read back the same.

#include "FuzzInput.h"

#include "base/FileName.h"
#include "playlists/M3uReader.h"
#include "playlists/M3uWriter.h"

using kalvo::PlaylistEntry;
using kalvo::fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString file = QStringLiteral("/m/list.m3u");
    const QList<PlaylistEntry> entries = kalvo::ReadM3u(kalvo::fuzz::Input(data, size).Rest(), file);
    for (const PlaylistEntry& entry : entries) {
        Require(kalvo::FileName::IsMusic(entry.path), "only music is taken");
        Require(!entry.path.contains(u'\n'), "a path is one line");
    }
    const QByteArray written = kalvo::WriteM3u(
        entries, [](const QString&) { return 1.0; }, true);
    Require(written.startsWith("#EXTM3U\r\n"), "an extended file comes out");
    Require(written.count("\r\n") == 1 + 2 * entries.size(), "two lines for each title");
    Require(kalvo::ReadM3u(written, file).size() <= entries.size(), "and no titles are made up");
    return 0;
}
