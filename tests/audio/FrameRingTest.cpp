#include "audio/FrameRing.h"

#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace kalvo::audio::test {

TEST(FrameRing, NothingIsTornWhileOneSideWritesAndClears) {
    constexpr float kFrames = 200000;
    FrameRing ring(256);
    std::thread producer([&] {
        for (float next = 0; next < kFrames;) {
            std::size_t room = 100;
            float* const place = ring.Writable(room);
            for (std::size_t i = 0; i < room; ++i, ++next) {
                place[i * 2] = next;
                place[i * 2 + 1] = -next;
            }
            ring.Commit(room);
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
