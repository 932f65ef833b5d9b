#pragma once

#include "live/GuestWish.h"
#include "live/WishList.h"
#include "playlists/Playlist.h"

#include <QHash>
#include <QSet>
#include <QTimer>

#include <deque>

namespace kalvo {

/** What is on air; empty texts when nothing plays. */
struct GuestNowPlaying {
    QString path;
    QString title;
    QString artist;

    bool operator==(const GuestNowPlaying&) const = default;
};

/**
 * Follows the guests' wishes from the list of wishes through the playlists to the air and tells the page about it.
 * Wishes stay in their list when they have been fulfilled; only those that wait count for a place. UI thread. Follows
 * the latest 1000.
 */
class GuestQueue : public QObject {
    Q_OBJECT

public:
    /** All outlive the queue. */
    GuestQueue(const WishList& wishes, const Playlist& list1, const Playlist& list2, QObject* parent = nullptr);

    /** A guest's wish stands in the list of wishes under this id. */
    void Follow(quint64 ticket, quint64 id, const QString& path);
    void SetNowPlaying(const GuestNowPlaying& title);

    const std::shared_ptr<const GuestBoard>& Board() const { return board_; }

Q_SIGNALS:
    /** Something on the board is different; many changes at once are told once. */
    void Changed();

private:
    struct Followed {
        quint64 ticket;
        quint64 id;
        QString path;
        WishStage stage;
    };

    /** Paths in both lists: what is still to come, and what was played. */
    struct Listed {
        QSet<QString> coming;
        QSet<QString> played;
    };

    void Renew();
    Listed ReadLists() const;
    void Advance(Followed& wish, const Listed& listed) const;
    /** Places by the ids of the wishes that still wait. */
    QHash<quint64, int> WaitingPlaces(const Listed& listed) const;

    const WishList& wishes_;
    const Playlist& list1_;
    const Playlist& list2_;
    GuestNowPlaying playing_;
    std::deque<Followed> followed_;
    QTimer soon_;
    std::shared_ptr<const GuestBoard> board_ = std::make_shared<const GuestBoard>();
};

} // namespace kalvo
