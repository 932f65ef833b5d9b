#include "audio/StereoMix.h"

#include <gtest/gtest.h>

namespace kalvo::audio::test {

TEST(StereoMix, PutsEveryChannelWhereItBelongs) {
    const struct {
        int channels;
        StereoMix::Order order;
        int channel;
        float left;
        float right;
    } cases[] = {
        {1, StereoMix::Order::Wave, 0, 1, 1},        {2, StereoMix::Order::Wave, 0, 1, 0},
        {2, StereoMix::Order::Vorbis, 1, 0, 1},      {3, StereoMix::Order::Vorbis, 1, 0.414F, 0.414F}, // centre
        {6, StereoMix::Order::Wave, 1, 0, 0.414F},                                                     // right
        {6, StereoMix::Order::Wave, 3, 0, 0},                                                          // low frequency
        {6, StereoMix::Order::Vorbis, 3, 0.293F, 0},                                                   // surround left
        {6, StereoMix::Order::Vorbis, 5, 0, 0},                                                        // low frequency
        {9, StereoMix::Order::Wave, 8, 0.2F, 0}, // of no known layout
    };
    for (const auto& one : cases) {
        std::vector<float> input(static_cast<std::size_t>(one.channels), 0.0F);
        input[static_cast<std::size_t>(one.channel)] = 1;
        float stereo[2];
        StereoMix(one.channels, one.order).MixInterleaved(input.data(), 1, stereo);
        EXPECT_NEAR(stereo[0], one.left, 0.001) << one.channels << " channels, " << one.channel;
        EXPECT_NEAR(stereo[1], one.right, 0.001) << one.channels << " channels, " << one.channel;
    }
}

TEST(StereoMix, PlanesAndFramesGiveTheSame) {
    const float frames[] = {0.1F, 0.2F, 0.3F, -0.4F, -0.5F, -0.6F};
    const float left[] = {0.1F, -0.4F};
    const float right[] = {0.2F, -0.5F};
    const float centre[] = {0.3F, -0.6F};
    const float* const planes[] = {left, right, centre};
    float one[4];
    float other[4];
    const StereoMix mix(3, StereoMix::Order::Wave);
    mix.MixInterleaved(frames, 2, one);
    mix.MixPlanes(planes, 2, other);
    for (int i = 0; i < 4; ++i)
        EXPECT_FLOAT_EQ(one[i], other[i]);
    EXPECT_NEAR(one[0], (0.1 + 0.7071 * 0.3) / 1.7071, 0.0001);
}

} // namespace kalvo::audio::test
