#include "audio/FrameRing.h"

#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace kalvo::audio::test {

namespace {

/** Writes frames `next`, `next` + 1, ... as far as there is room, at most `count`; returns how many. */
std::size_t Fill(FrameRing& ring, float next, std::size_t count) {
    std::size_t room = count;
    float* const place = ring.Writable(room);
    for (std::size_t i = 0; i < room; ++i) {
        place[i * 2] = next + static_cast<float>(i);
        place[i * 2 + 1] = -place[i * 2];
    }
    ring.Commit(room);
    return room;
}

} // namespace

TEST(FrameRing, KeepsTheOrderAcrossItsSeamAndDropsEverythingOnClear) {
    FrameRing ring(8);
    float stereo[16];
    EXPECT_EQ(ring.Read(stereo, 8), 0U);
    EXPECT_EQ(Fill(ring, 0, 6), 6U);
    EXPECT_EQ(ring.Read(stereo, 5), 5U);
    EXPECT_EQ(Fill(ring, 6, 5), 2U) << "up to the seam";
    EXPECT_EQ(Fill(ring, 8, 9), 5U) << "up to what has not been read";
    EXPECT_EQ(ring.Free(), 0U);
    EXPECT_EQ(Fill(ring, 13, 1), 0U);
    ASSERT_EQ(ring.Read(stereo, 20), 8U);
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(stereo[i * 2], static_cast<float>(5 + i));
        EXPECT_EQ(stereo[i * 2 + 1], static_cast<float>(-5 - i));
    }
    Fill(ring, 14, 5);
    ring.Clear();
    EXPECT_EQ(ring.Available(), 0U);
    EXPECT_EQ(ring.Read(stereo, 1), 0U);
    Fill(ring, 40, 1);
    ASSERT_EQ(ring.Read(stereo, 1), 1U);
    EXPECT_EQ(stereo[0], 40.0F);
}

TEST(FrameRing, NothingIsTornWhileOneSideWritesAndClears) {
    constexpr float kFrames = 200000;
    FrameRing ring(256);
    std::thread producer([&] {
        for (float next = 0; next < kFrames;) {
            next += static_cast<float>(Fill(ring, next, 100));
            if (static_cast<int>(next) % 97 == 0 && next < kFrames - 1000)
                ring.Clear();
        }
    });
    std::vector<float> stereo(2 * 64);
    float last = -1;
    while (last < kFrames - 1) {
        const std::size_t got = ring.Read(stereo.data(), 64);
        for (std::size_t i = 0; i < got; ++i) {
            ASSERT_GT(stereo[i * 2], last);
            ASSERT_EQ(stereo[i * 2 + 1], -stereo[i * 2]);
            last = stereo[i * 2];
        }
    }
    producer.join();
}

} // namespace kalvo::audio::test
