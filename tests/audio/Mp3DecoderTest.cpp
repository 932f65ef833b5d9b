#include "audio/Mp3Decoder.h"

#include "DecodeSupport.h"

#include <gtest/gtest.h>

namespace kalvo::audio::test {

TEST(Mp3Decoder, PassesOverDamageInside) {
    const QByteArray sound = SoundBytes("a.mp3", Spec(6, 44100, 2, "-b 128 -t"));
    // Two seconds are overwritten, one way or the other, and a foreign tag stands in the middle.
    const QByteArray fillings[] = {QByteArray(32000, '\0'), QByteArray(32000, 'x'),
                                   QByteArray("ID3\x03\x00\x00\x00\x01\x77\x76", 10) + QByteArray(31990, '\0')};
    for (const QByteArray& filling : fillings) {
        const OpenedFile opened(QByteArray(sound).replace(sound.size() / 2, filling.size(), filling));
        ASSERT_TRUE(opened.decoder);
        EXPECT_EQ(opened.decoder->Format().bitrate, 128);
        EXPECT_FALSE(opened.decoder->Format().variableRate);
        const std::int64_t frames = opened.decoder->Format().frames;
        EXPECT_NEAR(static_cast<double>(frames), 4 * 44100, 8000);
        const std::vector<float> all = DecodeRest(*opened.decoder);
        // A header found by chance in the damage may count for a frame that sounds shorter.
        EXPECT_NEAR(static_cast<double>(all.size() / 2), static_cast<double>(frames), 1152);
        EXPECT_NEAR(Peak(all, 0, frames - 22050, frames - 6000), 0.5, 0.03) << "the part behind the damage";
    }
}

TEST(Mp3Decoder, KeepsTheFirstRateWhenThePiecesDiffer) {
    const OpenedFile opened(SoundBytes("a.mp3", Spec(2, 44100, 2, "-t")) +
                            SoundBytes("b.mp3", Spec(2, 48000, 1, "-t")));
    ASSERT_TRUE(opened.decoder);
    EXPECT_EQ(opened.decoder->Format().sampleRate, 44100);
    const std::vector<float> all = DecodeRest(*opened.decoder);
    ASSERT_GT(all.size(), 2U * 170000U);
    EXPECT_NEAR(Waves(all, 110000), 440, 2) << "the second piece at its own pitch";
    EXPECT_NEAR(Peak(all, 1, 110000, 150000), 0.5, 0.05);
}

} // namespace kalvo::audio::test
