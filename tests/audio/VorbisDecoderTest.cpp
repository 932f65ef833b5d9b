#include "audio/VorbisDecoder.h"

#include "DecodeSupport.h"

#include <gtest/gtest.h>

namespace kalvo::audio::test {

/** Three links, each with a serial number of its own: the second is mono and at another rate. */
TEST(VorbisDecoder, BringsChainedLinksToTheFirstRateAndSeeksIntoEach) {
    SoundSpec last = Spec(1, 44100, 2, "-s 3");
    last.frequency = 880;
    const OpenedFile opened(SoundBytes("a.ogg", Spec(2, 44100, 2, "-s 1")) +
                            SoundBytes("b.ogg", Spec(1.5, 32000, 1, "-s 2")) + SoundBytes("c.ogg", last));
    ASSERT_TRUE(opened.decoder);
    EXPECT_EQ(opened.decoder->Format().sampleRate, 44100);
    EXPECT_EQ(opened.decoder->Format().channels, 2);
    EXPECT_EQ(opened.decoder->Format().frames, 198450);
    const std::vector<float> all = DecodeRest(*opened.decoder);
    ASSERT_EQ(all.size(), 2U * 198450U);
    // The mono link comes at full level on both sides, at the right pitch.
    EXPECT_NEAR(Peak(all, 1, 20000, 80000), 0.25, 0.03);
    EXPECT_NEAR(Peak(all, 0, 100000, 150000), 0.5, 0.03);
    EXPECT_NEAR(Peak(all, 1, 100000, 150000), 0.5, 0.03);
    EXPECT_NEAR(Waves(all, 100000), 440, 1);

    for (const std::int64_t target : {170000, 1000, 88199, 88200, 154350}) {
        ASSERT_TRUE(opened.decoder->Seek(target));
        const std::vector<float> rest = DecodeRest(*opened.decoder);
        ASSERT_EQ(rest.size() / 2, static_cast<std::size_t>(198450 - target));
        EXPECT_LE(Difference(all, target, rest), 0.01F) << target;
    }
    // In the converted link a place between two of its own frames is met to the nearest one.
    ASSERT_TRUE(opened.decoder->Seek(120000));
    const std::vector<float> rest = DecodeRest(*opened.decoder);
    ASSERT_EQ(rest.size() / 2, 78450U);
    EXPECT_LE(Difference(all, 121000, {rest.begin() + 2000, rest.end()}), 0.05F);
}

} // namespace kalvo::audio::test
