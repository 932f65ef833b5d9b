#include "OfflineDesk.h"

#include <cmath>

using namespace kalvo::audio;
using namespace kalvo::test;

namespace {

EffectParameters Parameters(float gain, float mix) {
    EffectParameters parameters;
    parameters.centre = 80;
    parameters.gain = gain;
    parameters.reverbMix = mix;
    return parameters;
}

struct EffectsTest : DeskTest {};

} // namespace

TEST_F(EffectsTest, FlatAndDryEffectsChangeNotABit) {
    const Tone tone = Sine(3000, 0.7);
    const Handle stream = desk.Play(tone);
    for (int i = 0; i < 10; ++i)
        ASSERT_NE(library.ChannelSetFX(stream, EffectType::EqualiserBand), 0U);
    ASSERT_NE(library.ChannelSetFX(stream, EffectType::Reverb), 0U);
    const auto out = desk.Render(3000);
    for (std::size_t i = kDelay; i < out.size(); ++i)
        ASSERT_EQ(out[i], tone.sample(std::int64_t(i - kDelay)));
}

TEST_F(EffectsTest, HandlesParametersAndLimitsAreChecked) {
    const Handle stream = desk.Open(Constant(0));
    const Handle other = desk.Open(Constant(0));
    const Handle band = library.ChannelSetFX(stream, EffectType::EqualiserBand);
    EXPECT_TRUE(library.FXSetParameters(band, Parameters(15, -96)));
    EXPECT_FALSE(library.FXSetParameters(band, Parameters(15.5F, -96)));
    EXPECT_EQ(library.ErrorGetCode(), ErrorCode::Argument);
    EffectParameters read;
    ASSERT_TRUE(library.FXGetParameters(band, read));
    EXPECT_EQ(read.gain, 15);
    EXPECT_FALSE(library.ChannelRemoveFX(other, band));
    EXPECT_EQ(library.ErrorGetCode(), ErrorCode::InvalidHandle);
    EXPECT_EQ(library.ChannelSetFX(stream, EffectType(3)), 0U);
    EXPECT_TRUE(library.ChannelRemoveFX(stream, band));
    EXPECT_FALSE(library.FXSetParameters(band, Parameters(0, -96)));
}

TEST_F(EffectsTest, ChangesMakeNoClickAndEndExact) {
    const Tone tone = Sine(50, 0.3, 1 << 20);
    const Handle stream = desk.Play(tone);
    std::vector<float> out = desk.Render(4000);
    const Handle band = library.ChannelSetFX(stream, EffectType::EqualiserBand);
    const Handle reverb = library.ChannelSetFX(stream, EffectType::Reverb);
    for (const auto& [gain, mix] : {std::pair(7.F, -20.F), {-15.F, -40.F}, {0.F, -96.F}, {6.F, -10.F}}) {
        ASSERT_TRUE(library.FXSetParameters(band, Parameters(gain, -96)));
        ASSERT_TRUE(library.FXSetParameters(reverb, Parameters(0, mix)));
        desk.RenderTo(out, gain == 0 ? 90000 : 4000); // what is flat and dry rings out
        if (gain == 0) {
            EXPECT_EQ(out.back(), tone.sample(std::int64_t(out.size() - 1 - kDelay)));
        }
    }
    ASSERT_TRUE(library.ChannelRemoveFX(stream, band) && library.ChannelRemoveFX(stream, reverb));
    desk.RenderTo(out, 20000);
    EXPECT_LT(LargestJump(out), 0.001);
}

TEST_F(EffectsTest, TheReverberationFallsBy60DecibelInItsTime) {
    const Handle stream =
        desk.Play({44100, 1 << 20, [](std::int64_t frame) { return frame < 200 && frame % 2 == 0 ? 0.9F : 0.0F; }});
    const Handle reverb = library.ChannelSetFX(stream, EffectType::Reverb);
    ASSERT_TRUE(library.FXSetParameters(reverb, Parameters(0, 0)));
    const auto out = desk.Render(66150);
    const auto energy = [&](std::size_t from) {
        double sum = 1e-30;
        for (std::size_t i = from; i < from + 8820; ++i)
            sum += double(out[i]) * out[i];
        return 10 * std::log10(sum);
    };
    EXPECT_NEAR(energy(13230) - energy(13230 + 22050), 30, 8) << "half of the 1,000 ms";
}
