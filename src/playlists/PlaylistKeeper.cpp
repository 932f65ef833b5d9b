#include "playlists/PlaylistKeeper.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace kalvo {

namespace {

bool IsSameContent(const PlaylistEntry& left, const PlaylistEntry& right) {
    return left.path == right.path && left.title == right.title && left.artist == right.artist &&
           left.duration == right.duration && left.shuffleKey == right.shuffleKey && left.info == right.info;
}

bool IsSameContent(const QList<PlaylistEntry>& left, const QList<PlaylistEntry>& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const PlaylistEntry& one, const PlaylistEntry& other) { return IsSameContent(one, other); });
}

} // namespace

PlaylistKeeper::PlaylistKeeper(Playlist& first, Playlist& second, const QString& path, const Clock& clock,
                               BeforeWriting beforeWriting, QObject* parent)
    : QObject(parent), first_(first), second_(second), file_(path, clock), beforeWriting_(std::move(beforeWriting)) {
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &PlaylistKeeper::SaveBehind);
}

PlaylistKeeper::~PlaylistKeeper() {
    if (running_.valid())
        running_.wait();
}

void PlaylistKeeper::Restore() {
    const PlaylistFile::Result created = file_.CreatePlaylistDatabase();
    PlaylistFile::Lists lists;
    const PlaylistFile::Result loaded = file_.Load(lists);
    unread_ = loaded.outcome == PlaylistFile::Outcome::Failed;
    first_.Append(lists[0]);
    second_.Append(lists[1]);
    stored_ = lists;
    Tell(unread_ ? loaded.message : created.message);
    for (const Playlist* list : {&first_, &second_})
        connect(list, &Playlist::Changed, this, &PlaylistKeeper::ListChanged, Qt::UniqueConnection);
}

void PlaylistKeeper::ListChanged() {
    changed_ = true;
    timer_.start(saveDelay);
}

bool PlaylistKeeper::IsNew(const PlaylistFile::Lists& lists) {
    changed_ = changed_ && (unread_ || !IsSameContent(lists[0], stored_[0]) || !IsSameContent(lists[1], stored_[1]));
    const bool isEmpty = lists[0].isEmpty() && lists[1].isEmpty();
    changed_ = changed_ || (!isEmpty && !file_.Exists()); // deleted under the program
    return changed_;
}

bool PlaylistKeeper::SaveNow() {
    TakeRunning();
    timer_.stop();
    if (const PlaylistFile::Lists lists = Present(); IsNew(lists)) {
        Q_EMIT Saving();
        Take(Write(file_, {lists, unread_, false, {}}, beforeWriting_));
    }
    return !changed_;
}

void PlaylistKeeper::SaveBehind() {
    TakeRunning();
    const PlaylistFile::Lists lists = Present();
    if (!IsNew(lists))
        return;
    Q_EMIT Saving();
    try {
        running_ = std::async(std::launch::async, [this, file = file_, attempt = Attempt{lists, unread_, false, {}},
                                                   before = beforeWriting_] {
            Attempt written = Write(file, attempt, before);
            QMetaObject::invokeMethod(this, &PlaylistKeeper::TakeRunning, Qt::QueuedConnection);
            return written;
        });
    } catch (const std::system_error&) { // no further thread
        Take(Write(file_, {lists, unread_, false, {}}, beforeWriting_));
    }
}

PlaylistKeeper::Attempt PlaylistKeeper::Write(PlaylistFile file, Attempt attempt, const BeforeWriting& beforeWriting) {
    if (beforeWriting)
        beforeWriting();
    if (attempt.isUnread && file.Exists()) {
        const PlaylistFile::Result aside = file.SetAside();
        attempt.messages.append(aside.message);
        if (aside.outcome == PlaylistFile::Outcome::Failed)
            return attempt;
    }
    attempt.isUnread = false;
    file.CreateFolder();
    const PlaylistFile::Result saved = file.Save(attempt.lists);
    attempt.isSaved = saved.outcome != PlaylistFile::Outcome::Failed;
    attempt.messages.append(saved.message);
    return attempt;
}

void PlaylistKeeper::TakeRunning() {
    if (running_.valid())
        Take(running_.get());
}

void PlaylistKeeper::Take(const Attempt& attempt) {
    unread_ = attempt.isUnread;
    if (attempt.isSaved) {
        stored_ = attempt.lists;
        if (IsNew(Present()) && !timer_.isActive())
            timer_.start(saveDelay);
    } else {
        timer_.start(retryDelay);
    }
    for (const QString& message : attempt.messages)
        Tell(message);
}

void PlaylistKeeper::Tell(const QString& message) {
    if (!message.isEmpty() && message != told_)
        Q_EMIT Told(message);
    told_ = message;
}

} // namespace kalvo
