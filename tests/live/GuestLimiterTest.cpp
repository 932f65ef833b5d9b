#include "live/GuestLimiter.h"

#include "live/GuestSupport.h"

#include <gtest/gtest.h>

namespace kalvo::test {
namespace {

int Allowed(GuestLimiter& limiter, const QByteArray& key, int tries) {
    int allowed = 0;
    for (int i = 0; i < tries; ++i)
        allowed += limiter.Allow(key) ? 1 : 0;
    return allowed;
}

TEST(GuestLimiter, AllowsABurstThenOneAfterEachInterval) {
    GuestClock clock;
    GuestLimiter limiter(clock, {3, 1000});
    EXPECT_EQ(Allowed(limiter, "a", 10), 3);
    EXPECT_FALSE(limiter.MayAllow("a"));
    EXPECT_EQ(Allowed(limiter, "b", 10), 3);
    clock.milliseconds += 999;
    EXPECT_EQ(Allowed(limiter, "a", 10), 0);
    clock.milliseconds += 1;
    EXPECT_TRUE(limiter.MayAllow("a"));
    EXPECT_EQ(Allowed(limiter, "a", 10), 1);
    clock.milliseconds += 60'000;
    EXPECT_EQ(Allowed(limiter, "a", 10), 3) << "what was not used is not saved up";
}

TEST(GuestLimiter, ForgetsOnlyThoseWhoHaveWaited) {
    GuestClock clock;
    GuestLimiter limiter(clock, {1, 1000});
    for (int i = 0; i < 4096; ++i)
        ASSERT_TRUE(limiter.Allow(QByteArray::number(i)));
    EXPECT_FALSE(limiter.Allow("new"));
    EXPECT_FALSE(limiter.Allow("0"));
    clock.milliseconds += 1000;
    EXPECT_TRUE(limiter.Allow("new"));
    EXPECT_TRUE(limiter.Allow("0"));
}

} // namespace
} // namespace kalvo::test
