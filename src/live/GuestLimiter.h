#pragma once

#include "base/Clock.h"

#include <QByteArray>
#include <QHash>

#include <mutex>

namespace kalvo {

/** So many at once, then one more after each interval. */
struct GuestRate {
    int burst = 1;
    qint64 interval = 1000; ///< ms
};

/**
 * How much one guest or address may do. Any thread, if the clock allows it. Remembers at most 4096 keys; when all are
 * busy, further ones are refused until one of them has its full allowance again.
 */
class GuestLimiter {
public:
    /** The clock outlives the limiter. */
    GuestLimiter(const Clock& clock, GuestRate rate) : clock_(clock), rate_(rate) {}

    /** Takes one of the key's allowance; false when there is none. */
    bool Allow(const QByteArray& key);
    /** Whether Allow() would be true. */
    bool MayAllow(const QByteArray& key) const;

private:
    bool HasRoom(const QByteArray& key, qint64 now) const;
    bool FreeSomeRoom(qint64 now);

    const Clock& clock_;
    GuestRate rate_;
    mutable std::mutex mutex_;
    QHash<QByteArray, qint64> fullAt_; ///< when the key has its full allowance again, ms of the clock
};

} // namespace kalvo
