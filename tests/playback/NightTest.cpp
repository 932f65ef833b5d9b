#include "Night.h"
#include "audio/AudioLibraryImpl.h"
#include "support/Sanitized.h"

#include <gtest/gtest.h>

namespace kalvo::test {
namespace {

/** Sanitizers take their time. */
constexpr double kSeconds = kSanitized ? 120 : 1800;
/** What the allocator keeps in pieces too small to give back. */
constexpr std::size_t kKept = 8'000'000;

TEST(NightTest, HalfAnHourOfRandomActsIsNeverSilentNeverClicksAndKeepsItsMemory) {
    const NightReport night = Night(std::make_unique<audio::AudioLibraryImpl>(), 1).Run(kSeconds);
    EXPECT_TRUE(night.faults.isEmpty()) << night.faults.join(u'\n').toStdString();
    EXPECT_GE(night.seconds, kSeconds);
    EXPECT_GT(night.titles, kSeconds / 20);
    EXPECT_GT(night.acts, kSeconds / 10);
    EXPECT_GT(night.largestBend, 0.0001) << "there was music";
    if (kSanitized)
        return;
    EXPECT_GT(night.rescues, 0) << "the disk was pulled out";
    EXPECT_LT(night.memoryLate, night.memoryEarly + kKept);
}

} // namespace
} // namespace kalvo::test
