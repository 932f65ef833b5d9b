#pragma once

#include <QMetaType>
#include <QString>

#include <memory>
#include <mutex>
#include <unordered_map>

namespace kalvo {

/** A wish from a guest's telephone. */
struct GuestWish {
    quint64 ticket = 0; ///< given by the site, from 1; tells the wish apart from all others of this run
    qint64 nr = 0;      ///< of the title in the archive
    QString title;
    QString artist;
    QString name; ///< of the guest as he wrote it, cleaned; may be empty
};

enum class WishStage {
    Noted,  ///< on its way to the list of wishes
    Waits,  ///< in the list of wishes
    Queued, ///< in a playlist, still to come
    OnAir,
    Played,
    Gone ///< taken out of the list of wishes without being played
};

struct WishPlace {
    WishStage stage = WishStage::Noted;
    int place = 0; ///< in the list of wishes, from 1; 0 unless it waits there

    bool operator==(const WishPlace&) const = default;
};

/** What the guests are told of the desk, at one moment. */
struct GuestBoard {
    bool playing = false;
    QString title; ///< on air
    QString artist;
    int waiting = 0; ///< wishes in the list, from whomever
    std::unordered_map<quint64, WishPlace> places;

    bool operator==(const GuestBoard&) const = default;
    /** Noted for a ticket that is not known yet. */
    WishPlace PlaceOf(quint64 ticket) const {
        const auto found = places.find(ticket);
        return found == places.end() ? WishPlace{} : found->second;
    }
};

/** A value that one thread publishes and others read; who has read it keeps what he read. Any thread. */
template<typename Value>
class Published {
public:
    /** value: not null. */
    void Set(std::shared_ptr<const Value> value) {
        const std::lock_guard lock(mutex_);
        value_.swap(value); // the old one goes outside of the lock
    }
    std::shared_ptr<const Value> Get() const {
        const std::lock_guard lock(mutex_);
        return value_;
    }

private:
    mutable std::mutex mutex_;
    std::shared_ptr<const Value> value_ = std::make_shared<const Value>();
};

} // namespace kalvo

Q_DECLARE_METATYPE(kalvo::GuestWish)
