#include "audio/Mp3Decoder.h"

#include "DecodeSupport.h"
#include "support/SoundMaker.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace kalvo::audio::test {

using kalvo::test::MakeSound;
using kalvo::test::SoundSpec;
using kalvo::test::TestFolder;

TEST(Mp3Decoder, PassesOverDamageInside) {
    const TestFolder folder;
    SoundSpec spec;
    spec.seconds = 6;
    spec.options = QStringList{QStringLiteral("-b"), QStringLiteral("128"), QStringLiteral("-t")};
    MakeSound(folder.Path(), QStringLiteral("a.mp3"), spec);
    const QByteArray sound = folder.Read(QStringLiteral("a.mp3"));
    // Two seconds are overwritten, one way or the other, and a foreign tag stands in the middle.
    const qsizetype middle = sound.size() / 2;
    const QByteArray fillings[] = {QByteArray(32000, '\0'), QByteArray(32000, 'x'),
                                   QByteArray("ID3\x03\x00\x00\x00\x01\x77\x76", 10) + QByteArray(31990, '\0')};
    for (const QByteArray& filling : fillings) {
        QByteArray damaged = sound;
        damaged.replace(middle, filling.size(), filling);
        const OpenedFile opened(folder.Write(QStringLiteral("b.mp3"), damaged));
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
    const TestFolder folder;
    SoundSpec spec;
    spec.seconds = 2;
    spec.options = QStringList{QStringLiteral("-t")};
    MakeSound(folder.Path(), QStringLiteral("a.mp3"), spec);
    spec.rate = 48000;
    spec.channels = 1;
    MakeSound(folder.Path(), QStringLiteral("b.mp3"), spec);
    const OpenedFile opened(folder.Write(QStringLiteral("c.mp3"),
                                         folder.Read(QStringLiteral("a.mp3")) + folder.Read(QStringLiteral("b.mp3"))));
    ASSERT_TRUE(opened.decoder);
    EXPECT_EQ(opened.decoder->Format().sampleRate, 44100);
    const std::vector<float> all = DecodeRest(*opened.decoder);
    ASSERT_GT(all.size(), 2U * 170000U);
    int rises = 0;
    for (std::size_t frame = 110000; frame < 154100; ++frame)
        rises += all[frame * 2] < 0 && all[frame * 2 + 2] >= 0 ? 1 : 0;
    EXPECT_NEAR(rises, 440, 2) << "the second piece at its own pitch";
    EXPECT_NEAR(Peak(all, 1, 110000, 150000), 0.5, 0.05);
}

} // namespace kalvo::audio::test
