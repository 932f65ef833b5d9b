#include "audio/OpenDecoder.h"

#include "DecodeSupport.h"

#include <gmock/gmock.h>
#include <random>

namespace kalvo::audio::test {

namespace {

struct Case {
    const char* name;
    const char* file;
    SoundSpec spec;
    std::int64_t frames; ///< -1: the encoder tells nobody, only the decoded number counts
    int bitrate;         ///< kbit/s; 0 = whatever it comes to
    bool variable;
};

void PrintTo(const Case& one, std::ostream* out) {
    *out << one.name;
}

const Case kCases[] = {
    {"Mp3Constant", "a.mp3", Spec(3.3, 44100, 2, "-b 128"), 145530, 128, false},
    {"Mp3ConstantWithoutHeader", "a.mp3", Spec(3.3, 44100, 2, "-b 160 -t"), -1, 160, false},
    {"Mp3Variable", "a.mp3", Spec(5, 48000, 2, "-V 2"), 240000, 0, true},
    {"Mp3VariableWithoutHeader", "a.mp3", Spec(5, 44100, 2, "-V 2 -t"), -1, 0, true},
    {"Mp3LowRateMono", "a.mp3", Spec(4, 22050, 1, "-b 64"), 88200, 64, false},
    {"Mp3Cover", "a.mp3", Spec(2, 44100, 2, "-b 192 --tt Lied", 120000), 88200, 192, false},
    {"Mp3OldTagOnly", "a.mp3", Spec(2, 44100, 2, "-b 128 --id3v1-only --tt Lied"), 88200, 128, false},
    {"Vorbis", "a.ogg", Spec(3.21, 44100, 2), 141561, 0, true},
    {"VorbisMono", "a.ogg", Spec(2.5, 32000, 1), 80000, 0, true},
    {"Opus", "a.opus", Spec(3.5, 48000, 2), 168000, 0, true},
    {"OpusMono", "a.opus", Spec(2, 48000, 1), 96000, 0, true},
    {"Wave", "a.wav", Spec(1.5, 44100, 2), 66150, 1411, false},
    {"WaveMono", "a.wav", Spec(1.5, 8000, 1), 12000, 128, false},
};

class OpenDecoderTest : public ::testing::TestWithParam<Case> {};

} // namespace

TEST_P(OpenDecoderTest, TellsTheExactLengthAndFormatAndSeeksToTheFrame) {
    const Case& one = GetParam();
    const OpenedFile opened(SoundBytes(one.file, one.spec));
    ASSERT_TRUE(opened.decoder);
    Decoder& decoder = *opened.decoder;
    const SourceFormat& format = decoder.Format();
    const std::int64_t frames = format.frames;
    EXPECT_EQ(format.sampleRate, one.spec.rate);
    EXPECT_EQ(format.channels, one.spec.channels);
    EXPECT_EQ(format.variableRate, one.variable);
    EXPECT_THAT(format.bitrate, one.bitrate > 0 ? testing::Matcher<int>(one.bitrate) : testing::Gt(10));
    EXPECT_THAT(frames, one.frames >= 0 ? testing::Matcher<std::int64_t>(one.frames) : testing::Gt(0));
    ReadResult last{};
    const std::vector<float> whole = DecodeRest(decoder, &last);
    EXPECT_EQ(static_cast<std::int64_t>(whole.size() / 2), frames);
    EXPECT_EQ(last, ReadResult::End);
    EXPECT_NEAR(Peak(whole, 0, frames / 4, frames / 2), 0.5, 0.03);
    EXPECT_NEAR(Peak(whole, 1, frames / 4, frames / 2), one.spec.channels == 1 ? 0.5 : 0.25, 0.03);
    for (const std::int64_t target : {frames / 2, std::int64_t{1}, frames - 1, frames / 3, std::int64_t{0}, frames}) {
        ASSERT_TRUE(decoder.Seek(target)) << target;
        const std::vector<float> rest = DecodeRest(decoder);
        EXPECT_EQ(static_cast<std::int64_t>(rest.size() / 2), frames - target);
        EXPECT_LE(Difference(whole, target, rest), 0.0001F) << target;
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, OpenDecoderTest, ::testing::ValuesIn(kCases),
                         [](const auto& one) { return std::string(one.param.name); });

TEST(OpenDecoder, PassesOverWhatStandsBeforeTheSound) {
    const QByteArray sound = SoundBytes("a.mp3", Spec(1, 44100, 2, "-b 128 --tt Lied --id3v2-only"));
    const QByteArray tag = sound.left(10) + QByteArray(sound.indexOf('\xFF') - 10, '\0');
    const QByteArray beginnings[] = {QByteArray(700000, '\0'), QByteArray(5000, 'x'), tag + QByteArray(3000, '\0'),
                                     QByteArray("ID3\x03\x00\x00\x7F\x7F\x7F\x7F", 10)};
    for (const QByteArray& beginning : beginnings) {
        const OpenedFile opened(beginning + sound);
        ASSERT_TRUE(opened.decoder) << beginning.size();
        EXPECT_EQ(opened.decoder->Format().frames, 44100) << beginning.size();
    }
}

TEST(OpenDecoder, RefusesWhatIsNoSound) {
    const QByteArray page("<p>Die Datei wurde nicht gefunden \xE4\xF6\xFC</p>\n");
    const QByteArray contents[] = {"",
                                   "x",
                                   "<html><head><title>404</title></head><body>" + page.repeated(2500),
                                   QByteArray(300000, '\0'),
                                   QByteArray(300000, '\xFF'),
                                   QByteArray("RIFF\x10\x00\x00\x00WAVE", 12),
                                   "OggS" + QByteArray(500, '\1'),
                                   QByteArray("ID3\x04\x00\x00\x00\x00\x7F\x7F", 10)};
    for (const QByteArray& content : contents)
        EXPECT_FALSE(OpenedFile(content).decoder) << content.left(8).toStdString();
}

TEST(OpenDecoder, NoiseIsNeverTakenForSound) {
    std::mt19937 random(7);
    const char* const beginnings[] = {"", "\xFF\xFB\x90\x64", "ID3\x03\x01\x01\x01", "RIFF\xFF\xFF\xFF\xFFWAVEfmt "};
    for (int round = 0; round < 120; ++round) {
        QByteArray bytes(beginnings[round % 4]);
        const int size = round % 3 == 0 ? 400000 : static_cast<int>(random() % 30000);
        while (bytes.size() < size)
            bytes.append(static_cast<char>(random()));
        EXPECT_FALSE(OpenedFile(bytes).decoder) << round << " of " << size << " bytes";
    }
}

TEST(OpenDecoder, DamageNeitherCrashesNorHangs) {
    std::mt19937 random(11);
    const auto upTo = [&random](qsizetype size) { return static_cast<int>(random() % static_cast<unsigned>(size)); };
    for (const char* name : {"a.mp3", "a.ogg", "a.opus", "a.wav"}) {
        const QByteArray sound = SoundBytes(name, Spec(1.5, 48000, 2));
        for (int round = 0; round < 40; ++round) {
            QByteArray bytes = sound.left(upTo(sound.size()));
            for (int hits = 1 + round; hits > 0 && !bytes.isEmpty(); --hits)
                bytes[upTo(bytes.size())] = static_cast<char>(random());
            const OpenedFile opened(bytes);
            if (!opened.decoder)
                continue;
            EXPECT_LE(DecodeRest(*opened.decoder).size(), 2U * 96000U) << name << round;
            opened.decoder->Seek(opened.decoder->Format().frames / 2);
            EXPECT_LE(DecodeRest(*opened.decoder).size(), 2U * 96000U) << name << round;
        }
    }
}

TEST(OpenDecoder, CutFilesEndExactlyWhereTheyAreCut) {
    for (const char* name : {"a.mp3", "b.mp3", "a.ogg", "a.opus", "a.wav"}) {
        const QByteArray sound = SoundBytes(name, Spec(4, 48000, 2, name[0] == 'b' ? "-V 4" : ""));
        const OpenedFile opened(sound.left(sound.size() / 2 + 13));
        ASSERT_TRUE(opened.decoder) << name;
        const std::int64_t frames = opened.decoder->Format().frames;
        EXPECT_GT(frames, 40000) << name;
        EXPECT_LT(frames, 144000) << name;
        EXPECT_EQ(static_cast<std::int64_t>(DecodeRest(*opened.decoder).size() / 2), frames) << name;
    }
}

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
        EXPECT_NEAR(double(frames), 4 * 44100, 8000);
        const std::vector<float> all = DecodeRest(*opened.decoder);
        // A header found by chance in the damage may count for a frame that sounds shorter.
        EXPECT_NEAR(double(all.size() / 2), double(frames), 1152);
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
