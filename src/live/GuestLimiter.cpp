#include "live/GuestLimiter.h"

#include <algorithm>

namespace kalvo {

namespace {

constexpr qsizetype kMostKeys = 4096;

} // namespace

bool GuestLimiter::MayAllow(const QByteArray& key) const {
    const std::lock_guard lock(mutex_);
    return HasRoom(key, clock_.Milliseconds());
}

bool GuestLimiter::Allow(const QByteArray& key) {
    const std::lock_guard lock(mutex_);
    const qint64 now = clock_.Milliseconds();
    if (!HasRoom(key, now))
        return false;
    if (!fullAt_.contains(key) && fullAt_.size() >= kMostKeys && !FreeSomeRoom(now))
        return false;
    qint64& fullAt = fullAt_[key];
    fullAt = std::max(fullAt, now) + rate_.interval;
    return true;
}

bool GuestLimiter::HasRoom(const QByteArray& key, qint64 now) const {
    return fullAt_.value(key, now) - now <= (rate_.burst - 1) * rate_.interval;
}

bool GuestLimiter::FreeSomeRoom(qint64 now) {
    fullAt_.removeIf([now](const auto& entry) { return entry.value() <= now; });
    return fullAt_.size() < kMostKeys;
}

} // namespace kalvo
