#include "audio/EncoderLibraryImpl.h"

#include "DecodeSupport.h"
#include "FakeSink.h"
#include "OfflineDesk.h"
#include "support/ToneMeter.h"
#include "support/WaitUntil.h"

#include <QFile>
#include <sndfile.h>

namespace kalvo::test {
namespace {

using namespace audio;

constexpr std::size_t kSecond = 44100;
const std::vector<double> kTone{1000};

struct Sound {
    std::vector<float> stereo;
    int rate = 0;
    std::string title;

    std::size_t Frames() const { return stereo.size() / 2; }
    ToneMeter Meter() const {
        std::vector<float> left;
        for (std::size_t i = 0; i < stereo.size(); i += 2)
            left.push_back(stereo[i]);
        return {std::move(left), 44100};
    }
};

/** By libsndfile; nothing for a file that it does not open. */
Sound ReadFile(const QString& path) {
    Sound sound;
    SF_INFO info{};
    SNDFILE* file = sf_open(QFile::encodeName(path).constData(), SFM_READ, &info);
    if (file == nullptr)
        return sound;
    sound.rate = info.samplerate;
    const char* title = sf_get_string(file, SF_STR_TITLE);
    sound.title = title != nullptr ? title : "";
    std::vector<float> piece(2 * 4096);
    while (const sf_count_t got = sf_readf_float(file, piece.data(), 4096))
        sound.stereo.insert(sound.stereo.end(), piece.begin(), piece.begin() + 2 * got);
    sf_close(file);
    return sound;
}

/** By the library's own decoders. */
std::size_t DecodedFrames(const QString& path) {
    const audio::test::OpenedFile file(path);
    return file.decoder != nullptr ? audio::test::DecodeRest(*file.decoder).size() / 2 : 0;
}

EncodeSettings Settings(EncodeFormat format, int bits = 16, int bitrate = 0, double quality = 0.6) {
    EncodeSettings settings;
    settings.format = format;
    settings.bits = bits;
    settings.bitrate = bitrate;
    settings.quality = quality;
    return settings;
}

const EncodeSettings kWav = Settings(EncodeFormat::Wav);

const struct {
    const char* name;
    EncodeSettings settings;
    double residual; ///< dBFS that differ from the tone
    double missing;  ///< seconds that the encoder may still hold while it is written
} kFormats[] = {{"a.wav", kWav, -88, 0},
                {"b.wav", Settings(EncodeFormat::Wav, 24), -110, 0},
                {"c.wav", Settings(EncodeFormat::Wav, 32), -110, 0},
                {"d.flac", Settings(EncodeFormat::Flac), -88, 0.2},
                {"e.flac", Settings(EncodeFormat::Flac, 24), -110, 0.2},
                {"f.ogg", Settings(EncodeFormat::Ogg, 16, 0, 0.8), -45, 4},
                {"g.mp3", Settings(EncodeFormat::Mp3, 16, 192), -45, 0.2},
                {"h.mp3", Settings(EncodeFormat::Mp3, 16, 0, 0.9), -45, 0.2}};

class EncoderTest : public ::testing::Test {
protected:
    QString Path(const char* name) const { return folder_.Path(QString::fromLatin1(name)); }
    std::string Raw(const char* name) const { return QFile::encodeName(Path(name)).toStdString(); }
    Handle Record(const char* name, const EncodeSettings& settings = kWav, Output output = Output::Main) {
        return encoder_.Encode_Start(desk_.Audio(), output, Raw(name), settings);
    }
    EncodeState State(Handle recording) {
        EncodeState state;
        EXPECT_TRUE(encoder_.Encode_GetState(recording, state));
        return state;
    }
    bool Finishes(Handle recording) {
        return WaitUntil([&] { return State(recording).status == EncodeStatus::Finished; });
    }

    TestFolder folder_;
    OfflineDesk desk_;
    EncoderLibraryImpl encoder_;
    FakeDisk disk_;
    EncoderLibraryImpl onDisk_{disk_.Opener()};
};

TEST_F(EncoderTest, EveryFormatHoldsTheToneInFullLengthAndLevelAndPlaysWhileItIsWritten) {
    const QString copy = Path("kopie");
    for (const auto& format : kFormats) {
        SCOPED_TRACE(format.name);
        EncodeSettings settings = format.settings;
        settings.title = "Größe";
        desk_.Play(Sine(1000, 0.5));
        desk_.Render(kSecond / 10); // past the limiter's delay
        const Handle recording = Record(format.name, settings);
        ASSERT_NE(recording, 0U);
        for (const std::size_t seconds : {5, 9}) {
            desk_.Render((seconds == 5 ? 5 : 4) * kSecond);
            const auto least = std::size_t((double(seconds) - format.missing) * 44100);
            EXPECT_TRUE(WaitUntil([&] {
                QFile::remove(copy);
                EXPECT_TRUE(QFile::copy(Path(format.name), copy));
                const bool flac = settings.format == EncodeFormat::Flac;
                return (flac ? ReadFile(copy).Frames() : DecodedFrames(copy)) >= least;
            }));
        }
        EXPECT_TRUE(encoder_.Encode_Stop(recording));
        ASSERT_TRUE(desk_.Audio().Stop(Output::Main));
        const Sound sound = ReadFile(Path(format.name));
        EXPECT_EQ(sound.Frames(), 9 * kSecond);
        EXPECT_EQ(sound.rate, 44100);
        EXPECT_EQ(sound.title, "Größe");
        if (settings.bitrate > 0) {
            EXPECT_NEAR(double(QFile(Path(format.name)).size()) / 9 / 125, settings.bitrate, settings.bitrate / 20.0);
        }
        const ToneMeter meter = sound.Meter();
        EXPECT_NEAR(meter.Levels(kTone, 1.5).front(), 0.5, format.residual > -50 ? 0.02 : 0.001);
        EXPECT_LT(meter.ResidualPeak(kTone, 0.5, 8.5), format.residual);
    }
}

TEST_F(EncoderTest, AFloatingPointWavHoldsExactlyWhatTheBusRendered) {
    desk_.Play(Sine(440, 0.9));
    desk_.Play(Sine(1234, 0.7)); // together the limiter has work
    const Handle recording = Record("mix.wav", Settings(EncodeFormat::Wav, 32));
    std::vector<float> rendered;
    for (int i = 0; i < 30; ++i) { // longer than the ring
        const auto left = desk_.Render(kSecond, 4096);
        for (std::size_t frame = 0; frame < left.size(); ++frame)
            rendered.insert(rendered.end(), {left[frame], desk_.right[frame]});
        if (i == 3) // the stream ends at ten seconds, the recording goes on
            desk_.Play(Sine(100, 0.2, 44100));
    }
    EXPECT_TRUE(encoder_.Encode_Stop(recording));
    EXPECT_TRUE(ReadFile(Path("mix.wav")).stereo == rendered);
}

TEST_F(EncoderTest, AFullDiskKeepsWhatFittedAndTheMusicGoesOn) {
    disk_.SetRoom(200000);
    const Handle recording = onDisk_.Encode_Start(desk_.Audio(), Output::Main, "x.wav", kWav);
    desk_.Play(Sine(1000, 0.5));
    desk_.Render(20 * kSecond);
    EncodeState state;
    EXPECT_TRUE(
        WaitUntil([&] { return onDisk_.Encode_GetState(recording, state) && state.status == EncodeStatus::Failed; }));
    EXPECT_EQ(state.error, EncodeError::DiskFull);
    EXPECT_EQ(state.lost, 0U);
    EXPECT_FALSE(onDisk_.Encode_Stop(recording));
    EXPECT_EQ(onDisk_.ErrorGetCode(), EncodeError::DiskFull);
    EXPECT_FALSE(onDisk_.Encode_GetState(recording, state)) << "the handle is gone";
    EXPECT_FALSE(disk_.Removed());
    const std::vector<char> content = disk_.Content();
    folder_.Write(QStringLiteral("voll.wav"), QByteArray(content.data(), qsizetype(content.size())));
    EXPECT_GT(ReadFile(Path("voll.wav")).Frames(), kSecond);
}

TEST_F(EncoderTest, ADiskThatIsTooSlowIsToldFrameByFrame) {
    EncodeError error = EncodeError::None;
    const auto encoder = Encoder::Start(disk_.Opener(), "x.wav", kWav, 44100, error);
    ASSERT_NE(encoder, nullptr);
    disk_.Hang();
    const std::vector<float> block(2 * 1000, 0.25F);
    const std::size_t blocks = Encoder::kRingFrames / 1000 + 100;
    for (std::size_t i = 0; i < blocks; ++i)
        encoder->Write(block.data(), 1000);
    EXPECT_GT(encoder->State().lost, 80000U);
    EXPECT_EQ(encoder->State().status, EncodeStatus::Running);
    encoder->Finish();
    EXPECT_FALSE(encoder->AwaitEnd(std::chrono::milliseconds(1)));
    disk_.Release();
    ASSERT_TRUE(encoder->AwaitEnd(std::chrono::seconds(20)));
    const EncodeState state = encoder->State();
    EXPECT_EQ(state.status, EncodeStatus::Finished);
    EXPECT_EQ(state.frames + state.lost, blocks * 1000);
}

TEST_F(EncoderTest, AHangingDiskDoesNotHoldUpTheStop) {
    const Handle recording = onDisk_.Encode_Start(desk_.Audio(), Output::Main, "x.wav", kWav);
    disk_.Hang();
    desk_.Render(kSecond);
    EXPECT_FALSE(onDisk_.Encode_Stop(recording));
    EXPECT_EQ(onDisk_.ErrorGetCode(), EncodeError::Timeout);
    disk_.Release();
    EXPECT_TRUE(WaitUntil([&] { return onDisk_.Encode_Stop(recording); }));
    EXPECT_FALSE(onDisk_.Encode_Stop(recording));
    EXPECT_EQ(onDisk_.ErrorGetCode(), EncodeError::InvalidHandle);
}

TEST_F(EncoderTest, WhatCannotBeRecordedIsRefusedAndLeavesNoFile) {
    folder_.Write(QStringLiteral("da.wav"), "bleibt");
    const struct {
        const char* name;
        EncodeSettings settings;
        Output output;
        EncodeError error;
    } cases[] = {{"da.wav", kWav, Output::Main, EncodeError::Exists},
                 {"da.wav/x.wav", kWav, Output::Main, EncodeError::File},
                 {"fehlt/x.wav", kWav, Output::Main, EncodeError::File},
                 {"x.wav", kWav, Output::Headphones, EncodeError::Source},
                 {"x.wav", Settings(EncodeFormat::Wav, 8), Output::Main, EncodeError::Argument},
                 {"x.flac", Settings(EncodeFormat::Flac, 32), Output::Main, EncodeError::Argument},
                 {"x.ogg", Settings(EncodeFormat::Ogg, 16, 0, 1.1), Output::Main, EncodeError::Argument},
                 {"x.wav", Settings(EncodeFormat(9)), Output::Main, EncodeError::Argument}};
    for (const auto& c : cases) {
        EXPECT_EQ(Record(c.name, c.settings, c.output), 0U) << c.name;
        EXPECT_EQ(encoder_.ErrorGetCode(), c.error) << c.name;
    }
    EXPECT_EQ(encoder_.Encode_Start(desk_.Audio(), Handle(99), Raw("x.wav"), kWav), 0U);
    EXPECT_EQ(encoder_.ErrorGetCode(), EncodeError::Source);
    for (int i = 0; i < 4; ++i)
        EXPECT_NE(Record(("viele" + std::to_string(i) + ".wav").c_str()), 0U);
    EXPECT_EQ(Record("x.wav"), 0U) << "four at most";
    EXPECT_EQ(encoder_.ErrorGetCode(), EncodeError::Source);
    EXPECT_TRUE(WaitUntil([&] { return !QFile::exists(Path("x.wav")); }));
    EXPECT_EQ(folder_.Read(QStringLiteral("da.wav")), "bleibt");
}

TEST_F(EncoderTest, ALongWavGoesOnInFurtherFilesWithoutAGap) {
    folder_.Write(QStringLiteral("lang-2.wav"), "bleibt");
    EncodeSettings settings = Settings(EncodeFormat::Wav, 32);
    settings.mostBytes = 500000;
    desk_.Play(Sine(1000, 0.5));
    desk_.Render(1000);
    const Handle recording = Record("lang.wav", settings);
    desk_.Render(3 * kSecond);
    EXPECT_TRUE(WaitUntil([&] { return State(recording).frames == 3 * kSecond; }));
    EXPECT_EQ(State(recording).path, Raw("lang-4.wav"));
    EXPECT_TRUE(encoder_.Encode_Stop(recording));
    Sound joined;
    for (const char* name : {"lang.wav", "lang-3.wav", "lang-4.wav"}) {
        const Sound part = ReadFile(Path(name));
        EXPECT_LE(QFile(Path(name)).size(), 501000) << name;
        joined.stereo.insert(joined.stereo.end(), part.stereo.begin(), part.stereo.end());
    }
    EXPECT_EQ(joined.Frames(), 3 * kSecond);
    EXPECT_LT(joined.Meter().ResidualPeak(kTone, 0, 3), -100);
    EXPECT_EQ(folder_.Read(QStringLiteral("lang-2.wav")), "bleibt");
}

TEST_F(EncoderTest, AnotherDeviceDoesNotEndARecordingButAnotherRateDoes) {
    AudioLibrary& audio = desk_.Audio();
    const Handle recording = Record("a.wav");
    desk_.Render(kSecond);
    ASSERT_FALSE(audio.Init(Output::Main, 99, 44100, 1024)) << "no such device";
    ASSERT_TRUE(audio.Init(Output::Main, kOffline, 44100, 512));
    desk_.Render(kSecond);
    EXPECT_EQ(State(recording).status, EncodeStatus::Running);
    ASSERT_TRUE(audio.Init(Output::Main, kOffline, 48000, 512));
    EXPECT_TRUE(Finishes(recording));
    EXPECT_EQ(State(recording).frames, 2 * kSecond);
    const Handle next = Record("b.wav");
    desk_.Render(48000);
    ASSERT_TRUE(audio.Free(Output::Main));
    EXPECT_TRUE(encoder_.Encode_Stop(next));
    EXPECT_EQ(ReadFile(Path("b.wav")).rate, 48000);
    EXPECT_EQ(ReadFile(Path("b.wav")).Frames(), 48000U);
}

TEST_F(EncoderTest, StartsAndStopsBesideARunningAudioThread) {
    AudioLibrary& audio = desk_.Audio();
    ASSERT_TRUE(audio.Init(Output::Main, kNoSound, 44100, 512));
    const Handle stream = desk_.Play(Sine(440, 0.5, 100 * 44100));
    const Handle whole = Record("ganz.wav");
    ASSERT_NE(whole, 0U);
    for (int i = 0; i < 8; ++i) {
        const Handle part = encoder_.Encode_Start(audio, stream, Raw("teil") + std::to_string(i), kWav);
        EXPECT_TRUE(WaitUntil([&] { return State(part).frames > 0; }));
        EXPECT_TRUE(encoder_.Encode_Stop(part));
    }
    EXPECT_TRUE(WaitUntil([&] { return State(whole).frames > kSecond / 4; }));
    EXPECT_EQ(State(whole).lost, 0U);
    EXPECT_TRUE(encoder_.Encode_Stop(whole));
    const ToneMeter meter = ReadFile(Path("ganz.wav")).Meter();
    EXPECT_LT(meter.ResidualPeak({440}, 0.05, meter.Seconds() - 0.05), -80) << "a gap in what was recorded";
}

} // namespace
} // namespace kalvo::test
