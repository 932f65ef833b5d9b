#pragma once

#include "playlists/Playlist.h"
#include "playlists/PlaylistFile.h"

#include <QTimer>

#include <chrono>

namespace kalvo {

/**
 * Keeps both lists in the working playlist file: brings them back at the start, saves them two seconds after the last
 * change and, through SaveNow, at the end. A failed save is tried again every half minute. UI thread.
 */
class PlaylistKeeper : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds saveDelay{2000};
    static constexpr std::chrono::milliseconds retryDelay{30000};

    /** Lists and clock outlive this. Nothing is watched before Restore(). */
    PlaylistKeeper(Playlist& first, Playlist& second, const QString& path, const Clock& clock,
                   QObject* parent = nullptr);

    /**
     * Creates the file when it is missing and appends its content to the lists. What cannot be read is never
     * overwritten: before the next save the file is moved aside.
     */
    void Restore();
    /** Saves when something has changed since the last save. False when that failed. */
    bool SaveNow();
    /** Whether the file holds what the lists hold. */
    bool IsSaved() const { return !changed_; }

Q_SIGNALS:
    /** The lists are about to be written. */
    void Saving();
    /** German, for the status line: a file was set aside, or a load or save failed. The same one is told once only. */
    void Told(const QString& message);

private:
    void ListChanged();
    bool PutUnreadAside();
    void Tell(const QString& message);

    Playlist& first_;
    Playlist& second_;
    PlaylistFile file_;
    QTimer timer_;
    QString told_;
    bool changed_ = false;
    bool unread_ = false; ///< the file holds something that the lists do not
};

} // namespace kalvo
