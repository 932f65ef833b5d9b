#include "base/Waveform.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using ::testing::FloatNear;

/** Four parts of equal length. */
Waveform Quarters(const std::array<Waveform::Column, 4>& parts) {
    Waveform waveform;
    for (int i = 0; i < Waveform::kColumns; ++i)
        waveform.columns[std::size_t(i)] = parts[std::size_t(4 * i / Waveform::kColumns)];
    waveform.known = Waveform::kColumns;
    return waveform;
}

TEST(WaveformTest, BarsAreHalfPeakHalfMeanAndTheLoudestIsWhole) {
    const Waveform waveform = Quarters({{{255, 180}, {255, 51}, {51, 0}, {0, 0}}});
    EXPECT_THAT(WaveBars(waveform, 4), ElementsAre(1.0F, FloatNear(0.7F, 1e-6F), FloatNear(0.1F, 1e-6F), 0.0F));
}

TEST(WaveformTest, ASingleBeatIsSeenAtEveryWidth) {
    Waveform waveform;
    waveform.columns[777] = {255, 255};
    for (const int count : {1, 7, 250, 1023, 1024, 1500, 4000}) {
        const std::vector<float> bars = WaveBars(waveform, count);
        ASSERT_EQ(int(bars.size()), count);
        EXPECT_EQ(*std::max_element(bars.begin(), bars.end()), 1.0F) << count;
    }
    EXPECT_TRUE(WaveBars(waveform, 0).empty());
    EXPECT_TRUE(WaveBars(waveform, -3).empty());
}

} // namespace
} // namespace kalvo
