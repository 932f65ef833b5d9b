#include "audio/VorbisDecoder.h"

#include "DecodeSupport.h"
#include "support/SoundMaker.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace kalvo::audio::test {

using kalvo::test::MakeSound;
using kalvo::test::SoundSpec;
using kalvo::test::TestFolder;

namespace {

/** Three links: 2 s stereo at 44,100 Hz, 1.5 s mono at 32,000 Hz, 1 s stereo at 44,100 Hz. */
QString MakeChain(const TestFolder& folder) {
    QByteArray chain;
    int number = 0;
    const auto append = [&](double seconds, double frequency, int rate, int channels) {
        SoundSpec spec;
        spec.seconds = seconds;
        spec.frequency = frequency;
        spec.rate = rate;
        spec.channels = channels;
        // Each link needs a serial number of its own.
        spec.options = QStringList{QStringLiteral("-s"), QString::number(++number)};
        MakeSound(folder.Path(), QStringLiteral("link.ogg"), spec);
        chain += folder.Read(QStringLiteral("link.ogg"));
    };
    append(2, 440, 44100, 2);
    append(1.5, 440, 32000, 1);
    append(1, 880, 44100, 2);
    return folder.Write(QStringLiteral("chain.ogg"), chain);
}

} // namespace

TEST(VorbisDecoder, BringsChainedLinksToTheFirstRate) {
    const TestFolder folder;
    const OpenedFile opened(MakeChain(folder));
    ASSERT_TRUE(opened.decoder);
    EXPECT_EQ(opened.decoder->Format().sampleRate, 44100);
    EXPECT_EQ(opened.decoder->Format().channels, 2);
    EXPECT_EQ(opened.decoder->Format().frames, 198450);
    const std::vector<float> all = DecodeRest(*opened.decoder);
    ASSERT_EQ(all.size(), 2U * 198450U);
    // The mono link comes at full level on both sides, at the right pitch: 440 waves a second.
    EXPECT_NEAR(Peak(all, 1, 20000, 80000), 0.25, 0.03);
    EXPECT_NEAR(Peak(all, 0, 100000, 150000), 0.5, 0.03);
    EXPECT_NEAR(Peak(all, 1, 100000, 150000), 0.5, 0.03);
    int rises = 0;
    for (std::size_t frame = 100000; frame < 144100; ++frame)
        rises += all[frame * 2] < 0 && all[frame * 2 + 2] >= 0 ? 1 : 0;
    EXPECT_NEAR(rises, 440, 1);
}

TEST(VorbisDecoder, SeeksIntoEveryLink) {
    const TestFolder folder;
    const OpenedFile opened(MakeChain(folder));
    ASSERT_TRUE(opened.decoder);
    const std::vector<float> all = DecodeRest(*opened.decoder);
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
    const std::vector<float> behindStart(rest.begin() + 2000, rest.end());
    EXPECT_LE(Difference(all, 121000, behindStart), 0.05F);
}

} // namespace kalvo::audio::test
