#include "live/GuestBook.h"

#include <algorithm>

namespace kalvo {

namespace {

constexpr std::size_t kMostGuests = 500;
constexpr std::size_t kMostWishes = 20;

template<typename Pages>
auto PageOf(Pages& pages, const QByteArray& guest) {
    return std::find_if(pages.begin(), pages.end(), [&guest](const auto& page) { return page.guest == guest; });
}

} // namespace

void GuestBook::Note(const QByteArray& guest, const GuestWish& wish) {
    const std::lock_guard lock(mutex_);
    if (const auto page = PageOf(pages_, guest); page != pages_.end())
        pages_.splice(pages_.begin(), pages_, page);
    else
        pages_.push_front({guest, {}});
    if (pages_.size() > kMostGuests)
        pages_.pop_back();
    std::vector<GuestWish>& wishes = pages_.front().wishes;
    if (wishes.size() == kMostWishes)
        wishes.erase(wishes.begin());
    wishes.push_back(wish);
}

std::vector<GuestWish> GuestBook::WishesOf(const QByteArray& guest) const {
    const std::lock_guard lock(mutex_);
    const auto page = PageOf(pages_, guest);
    return page == pages_.end() ? std::vector<GuestWish>() : page->wishes;
}

QString GuestBook::NameOf(const QByteArray& guest) const {
    const std::vector<GuestWish> wishes = WishesOf(guest);
    return wishes.empty() ? QString() : wishes.back().name;
}

} // namespace kalvo
