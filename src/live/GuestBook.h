#pragma once

#include "live/GuestWish.h"

#include <QByteArray>

#include <list>
#include <mutex>
#include <vector>

namespace kalvo {

/**
 * Who wished what: the latest wishes of the guests who wished last. Any thread. Keeps 500 guests and 20 wishes of each,
 * the oldest go first.
 */
class GuestBook {
public:
    void Note(const QByteArray& guest, const GuestWish& wish);
    /** The latest last; empty for an unknown guest. */
    std::vector<GuestWish> WishesOf(const QByteArray& guest) const;
    /** The name that he used last. */
    QString NameOf(const QByteArray& guest) const;

private:
    struct Page {
        QByteArray guest;
        std::vector<GuestWish> wishes;
    };

    mutable std::mutex mutex_;
    std::list<Page> pages_; ///< who wished last stands first
};

} // namespace kalvo
