#pragma once

#include "base/Clock.h"
#include "playlists/PlaylistEntry.h"

#include <QList>

#include <array>

namespace kalvo {

class SqliteDatabase;

/**
 * A playlist file ("default.mav", ".wil"): a database with the tables "Player1" and "Player2". Opened for each
 * operation and closed again. UI thread; the clock outlives this.
 */
class PlaylistFile {
public:
    /** What both lists hold; red, icons and playlist name are not kept. */
    using Lists = std::array<QList<PlaylistEntry>, 2>;

    enum class Outcome {
        Done,
        SetAside, ///< done, after an unreadable file was moved away under a dated name
        Failed    ///< nothing has changed
    };
    struct Result {
        Outcome outcome = Outcome::Done;
        QString message; ///< for the status line, German; empty when all went well
    };
    enum class Content { Replace, Append };

    PlaylistFile(QString path, const Clock& clock);

    bool Exists() const;
    /** The folder that the file belongs into, should it have gone. */
    void CreateFolder() const;
    /** Makes sure that a file with both tables is there. One that is no database is set aside, never overwritten. */
    Result CreatePlaylistDatabase();
    /** Appends to the lists in the tables' order. On failure they keep what was read so far; the file stays. */
    Result Load(Lists& lists) const;
    /** Both lists in one transaction; creates the file as CreatePlaylistDatabase() does. On failure the file holds what
     * it held. */
    Result Save(const Lists& lists, Content content = Content::Replace);
    /** Renames the file, together with its -wal and -shm, to "name.defekt-…". */
    Result SetAside();

private:
    Result OpenForWriting(SqliteDatabase& database);
    Result SaveInto(SqliteDatabase& database, const Lists& lists, Content content);
    Result Failure(const QString& what, const QString& reason) const;

    QString path_;
    const Clock& clock_;
};

} // namespace kalvo
