#include "live/GuestQueue.h"

namespace kalvo {

namespace {

constexpr std::size_t kMostFollowed = 1000;

/** Between a change and the new board, in ms: lists change often at once. */
constexpr int kAnswerPatience = 100;

} // namespace

GuestQueue::GuestQueue(const WishList& wishes, const Playlist& list1, const Playlist& list2, QObject* parent)
    : QObject(parent), wishes_(wishes), list1_(list1), list2_(list2) {
    soon_.setSingleShot(true);
    soon_.setInterval(kAnswerPatience);
    connect(&soon_, &QTimer::timeout, this, &GuestQueue::Renew);
    connect(&wishes, &WishList::Changed, &soon_, qOverload<>(&QTimer::start));
    connect(&list1, &Playlist::Changed, &soon_, qOverload<>(&QTimer::start));
    connect(&list2, &Playlist::Changed, &soon_, qOverload<>(&QTimer::start));
    soon_.start();
}

void GuestQueue::Follow(quint64 ticket, quint64 id, const QString& path) {
    followed_.push_back({ticket, id, path, WishStage::Waits});
    if (followed_.size() > kMostFollowed)
        followed_.pop_front();
    soon_.start();
}

void GuestQueue::SetNowPlaying(const GuestNowPlaying& title) {
    if (title == playing_)
        return;
    playing_ = title;
    soon_.start();
}

GuestQueue::Listed GuestQueue::ReadLists() const {
    Listed listed;
    for (const Playlist* list : {&list1_, &list2_}) {
        for (const PlaylistEntry& entry : list->Entries())
            (entry.icon == EntryIcon::Played ? listed.played : listed.coming).insert(entry.path);
    }
    return listed;
}

void GuestQueue::Advance(Followed& wish, const Listed& listed) const {
    if (wish.stage == WishStage::Played)
        return;
    if (wish.path == playing_.path && !wish.path.isEmpty())
        wish.stage = WishStage::OnAir;
    else if (wish.stage == WishStage::OnAir)
        wish.stage = WishStage::Played;
    else if (listed.coming.contains(wish.path))
        wish.stage = WishStage::Queued;
    else
        wish.stage = wishes_.RowOf(wish.id) >= 0 ? WishStage::Waits : WishStage::Gone;
}

QHash<quint64, int> GuestQueue::WaitingPlaces(const Listed& listed) const {
    QHash<quint64, WishStage> stages;
    for (const Followed& wish : followed_)
        stages.insert(wish.id, wish.stage);
    QHash<quint64, int> places;
    for (const Wish& wish : wishes_.Wishes()) {
        const bool taken = wish.path == playing_.path || listed.coming.contains(wish.path);
        const WishStage unknown =
            taken || listed.played.contains(wish.path) ? WishStage::Played : WishStage::Waits; // not from the page
        if (stages.value(wish.id, unknown) == WishStage::Waits)
            places.insert(wish.id, static_cast<int>(places.size()) + 1);
    }
    return places;
}

void GuestQueue::Renew() {
    const bool any = !followed_.empty() || !wishes_.Wishes().isEmpty();
    const Listed listed = any ? ReadLists() : Listed();
    for (Followed& wish : followed_)
        Advance(wish, listed);
    const QHash<quint64, int> places = WaitingPlaces(listed);
    auto board = std::make_shared<GuestBoard>();
    board->playing = !playing_.path.isEmpty();
    board->title = playing_.title;
    board->artist = playing_.artist;
    board->waiting = static_cast<int>(places.size());
    for (const Followed& wish : followed_)
        board->places.emplace(wish.ticket, WishPlace{wish.stage, places.value(wish.id)});
    if (*board == *board_)
        return;
    board_ = std::move(board);
    Q_EMIT Changed();
}

} // namespace kalvo
