#include "audio/StereoMix.h"

#include <gtest/gtest.h>

namespace kalvo::audio::test {

TEST(StereoMix, PutsEveryChannelWhereItBelongs) {
    const struct {
        int channels;
        StereoMix::Order order;
        int channel;
        float left, right;
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
        SCOPED_TRACE(testing::Message() << one.channels << " channels, " << one.channel);
        std::vector<float> input(static_cast<std::size_t>(one.channels), 0.0F);
        input[static_cast<std::size_t>(one.channel)] = 1;
        std::vector<const float*> planes;
        for (const float& sample : input)
            planes.push_back(&sample);
        const StereoMix mix(one.channels, one.order);
        float interleaved[2], planar[2];
        mix.MixInterleaved(input.data(), 1, interleaved);
        mix.MixPlanes(planes.data(), 1, planar);
        for (const float* stereo : {interleaved, planar}) {
            EXPECT_NEAR(stereo[0], one.left, 0.001);
            EXPECT_NEAR(stereo[1], one.right, 0.001);
        }
    }
}

} // namespace kalvo::audio::test
