#include "playlists/PlaylistKeeper.h"

namespace kalvo {

PlaylistKeeper::PlaylistKeeper(Playlist& first, Playlist& second, const QString& path, const Clock& clock,
                               QObject* parent)
    : QObject(parent), first_(first), second_(second), file_(path, clock) {
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &PlaylistKeeper::SaveNow);
}

void PlaylistKeeper::Restore() {
    const PlaylistFile::Result created = file_.Create();
    PlaylistFile::Lists lists;
    const PlaylistFile::Result loaded = file_.Load(lists);
    unread_ = loaded.outcome == PlaylistFile::Outcome::Failed;
    first_.Append(lists[0]);
    second_.Append(lists[1]);
    Tell(unread_ ? loaded.message : created.message);
    for (const Playlist* list : {&first_, &second_})
        connect(list, &Playlist::Changed, this, &PlaylistKeeper::ListChanged, Qt::UniqueConnection);
}

bool PlaylistKeeper::SaveNow() {
    timer_.stop();
    if (!changed_)
        return true;
    Q_EMIT Saving();
    const bool isFree = !unread_ || !file_.Exists() || PutUnreadAside();
    const PlaylistFile::Result saved = isFree ? file_.Save({first_.Entries(), second_.Entries()})
                                              : PlaylistFile::Result{PlaylistFile::Outcome::Failed, {}};
    if (saved.outcome == PlaylistFile::Outcome::Failed)
        timer_.start(retryDelay);
    else
        changed_ = unread_ = false;
    if (isFree)
        Tell(saved.message);
    return !changed_;
}

void PlaylistKeeper::ListChanged() {
    changed_ = true;
    timer_.start(saveDelay);
}

bool PlaylistKeeper::PutUnreadAside() {
    const PlaylistFile::Result aside = file_.SetAside();
    unread_ = aside.outcome == PlaylistFile::Outcome::Failed;
    Tell(aside.message);
    return !unread_;
}

void PlaylistKeeper::Tell(const QString& message) {
    if (!message.isEmpty() && message != told_)
        Q_EMIT Told(message);
    told_ = message;
}

} // namespace kalvo
