#pragma once

#include "playlists/Playlist.h"
#include "playlists/PlaylistFile.h"

#include <QStringList>
#include <QTimer>

#include <chrono>
#include <functional>
#include <future>

namespace kalvo {

/**
 * Keeps both lists in the working playlist file: brings them back at the start, saves them two seconds after the last
 * change and, through SaveNow, at the end. A failed save is tried again every half minute. What the file does not hold,
 * marks and icons, is no reason to write it.
 *
 * Threads: UI thread. A save by itself writes on a thread of its own, so that the desk does not wait for the disk; one
 * at a time. That thread works on copies; SaveNow and the end wait for it.
 */
class PlaylistKeeper : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds saveDelay{2000};
    static constexpr std::chrono::milliseconds retryDelay{30000};
    /** Called on the writing thread, before it writes. */
    using BeforeWriting = std::function<void()>;

    /** Lists and clock outlive this. Nothing is watched before Restore(). */
    PlaylistKeeper(Playlist& first, Playlist& second, const QString& path, const Clock& clock,
                   BeforeWriting beforeWriting = {}, QObject* parent = nullptr);
    ~PlaylistKeeper() override;

    /**
     * Creates the file when it is missing and appends its content to the lists. What cannot be read is never
     * overwritten: before the next save the file is moved aside.
     */
    void Restore();
    /** Saves when something has changed since the last save; waits for the disk. False when that failed. */
    bool SaveNow();
    /** Whether the file holds what the lists hold. */
    bool IsSaved() const { return !changed_; }

Q_SIGNALS:
    /** The lists are about to be written. */
    void Saving();
    /** German, for the status line: a file was set aside, or a load or save failed. The same one is told once only. */
    void Told(const QString& message);

private:
    struct Attempt {
        PlaylistFile::Lists lists;
        bool isUnread = false;
        bool isSaved = false;
        QStringList messages;
    };

    void ListChanged();
    void SaveBehind();
    PlaylistFile::Lists Present() const { return {first_.Entries(), second_.Entries()}; }
    /** Whether there is something to write. */
    bool IsNew(const PlaylistFile::Lists& lists);
    /** On any thread. */
    static Attempt Write(PlaylistFile file, Attempt attempt, const BeforeWriting& beforeWriting);
    void Take(const Attempt& attempt);
    void TakeRunning();
    void Tell(const QString& message);

    Playlist& first_;
    Playlist& second_;
    PlaylistFile file_;
    BeforeWriting beforeWriting_;
    QTimer timer_;
    QString told_;
    PlaylistFile::Lists stored_; ///< what the file holds
    bool changed_ = false;
    bool unread_ = false; ///< the file holds something that the lists do not
    std::future<Attempt> running_;
};

} // namespace kalvo
