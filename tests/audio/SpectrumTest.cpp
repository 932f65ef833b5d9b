#include "audio/Spectrum.h"

#include "OfflineDesk.h"

using namespace kalvo::audio;
using namespace kalvo::test;

namespace {

void Fill(TapRing& tap, const Tone& tone, std::int64_t frames) {
    for (std::int64_t i = 0; i < frames; ++i) {
        const float frame[2] = {tone.sample(i), tone.sample(i)};
        tap.Write(frame, 1);
    }
}

} // namespace

TEST(SpectrumTest, ASineOfFullScaleShowsAsOneAtItsLine) {
    const std::pair<DataKind, std::size_t> kinds[] = {
        {DataKind::Fft512, 512}, {DataKind::Fft1024, 1024}, {DataKind::Fft2048, 2048}};
    for (const auto& [kind, size] : kinds) {
        for (const std::size_t line : {3, 40, 200}) {
            TapRing tap;
            Fill(tap, Sine(double(line) * 44100 / double(size), 1), 10000);
            std::vector<float> values(size);
            ASSERT_EQ(ReadTap(tap, kind, values.data(), size), size / 2);
            const auto peak = std::max_element(values.begin(), values.begin() + std::ptrdiff_t(size / 2));
            EXPECT_EQ(std::size_t(peak - values.begin()), line);
            EXPECT_NEAR(*peak, 1, 0.01);
            EXPECT_LT(values[line + 20], 0.001);
        }
    }
}

TEST(SpectrumTest, SamplesEndWithTheNewestAndNoMoreIsWrittenThanThereIsRoomFor) {
    TapRing tap;
    std::vector<float> values(100, -1);
    EXPECT_EQ(ReadTap(tap, DataKind::Fft512, values.data(), 99), 99U);
    EXPECT_EQ(values[98], 0) << "nothing written yet is silence";
    EXPECT_EQ(values[99], -1);
    Fill(tap, {44100, 0, [](std::int64_t frame) { return float(frame); }}, 20000);
    ASSERT_EQ(ReadTap(tap, DataKind::Samples, values.data(), 20), 20U);
    EXPECT_EQ(values[0], 19990);
    EXPECT_EQ(values[19], 19999);
}
