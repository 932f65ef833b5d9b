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
