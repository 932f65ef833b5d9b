#include "OfflineDesk.h"

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
