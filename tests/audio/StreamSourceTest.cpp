#include "audio/StreamSource.h"

#include "DecodeSupport.h"

#include <cmath>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>

namespace kalvo::audio::test {

using std::chrono::milliseconds;
using std::chrono::seconds;

namespace {

constexpr seconds kPatience{20};

using Control = FakeBytes::Control;

std::shared_ptr<Control> HangingFrom(std::int64_t position) {
    auto control = std::make_shared<Control>();
    control->HangFrom(position);
    return control;
}

/** measuring: of the access by which the length is measured; null: there is none. */
std::unique_ptr<StreamSource> OpenStream(const QByteArray& bytes,
                                         std::shared_ptr<Control> control = std::make_shared<Control>(),
                                         std::shared_ptr<Control> measuring = nullptr) {
    ErrorCode error{};
    auto file = std::make_unique<FakeBytes>(bytes, std::move(control), std::move(measuring));
    auto source = StreamSource::Open(std::move(file), kPatience, error);
    if (!source)
        throw std::runtime_error("not opened: error " + std::to_string(static_cast<int>(error)));
    return source;
}

/** Takes everything up to the end. */
std::vector<float> Drain(StreamSource& source) {
    std::vector<float> all;
    float piece[2 * 500];
    while (!source.AtEnd()) {
        if (!source.WaitFor(500, kPatience))
            throw std::runtime_error("no frames came");
        const std::size_t got = source.Read(piece, 500);
        all.insert(all.end(), piece, piece + got * 2);
    }
    return all;
}

/** A WAV whose left side counts up by one 16-bit step a frame, so that each frame tells where it stands. */
QByteArray CountingWave(int frames) {
    QByteArray bytes = SoundBytes("a.wav", Spec(frames / 44100.0));
    for (int frame = 0; frame < frames; ++frame) {
        bytes[44 + frame * 4] = static_cast<char>(frame & 0xFF);
        bytes[45 + frame * 4] = static_cast<char>(frame >> 8 & 0x7F);
    }
    return bytes;
}

int Count(float value) {
    return static_cast<int>(std::lround(value * 32768));
}

/** Takes one frame as soon as it is there. */
int NextCount(StreamSource& source) {
    float frame[2]{};
    EXPECT_TRUE(source.WaitFor(1, kPatience) && source.Read(frame, 1) == 1);
    return Count(frame[0]);
}

} // namespace

TEST(StreamSource, PlaysAFileToItsEnd) {
    for (const char* name : {"a.mp3", "a.ogg", "a.wav"}) {
        const QByteArray bytes = SoundBytes(name, Spec(4));
        const auto source = OpenStream(bytes);
        EXPECT_EQ(source->Format().frames, 176400) << name;
        EXPECT_FALSE(source->AtEnd());
        EXPECT_EQ(Drain(*source), DecodeRest(*OpenedFile(bytes).decoder)) << name;
        source->Seek(176000);
        EXPECT_FALSE(source->AtEnd());
        EXPECT_EQ(Drain(*source).size(), 2U * 400U) << name;
    }
}

TEST(StreamSource, TellsWhyAFileCannotBeOpened) {
    const TestFolder folder;
    const QString pipe = folder.Path(QStringLiteral("pipe"));
    ASSERT_EQ(::mkfifo(qPrintable(pipe), 0600), 0);
    const std::pair<QString, ErrorCode> cases[] = {
        {folder.Path(QStringLiteral("missing.mp3")), ErrorCode::File},
        {folder.Path(), ErrorCode::File},
        {pipe, ErrorCode::File},
        {{}, ErrorCode::File},
        {folder.Write(QStringLiteral("empty.mp3"), {}), ErrorCode::Format},
        {folder.Write(QStringLiteral("page.mp3"), QByteArray("<html></html>")), ErrorCode::Format},
    };
    for (const auto& [path, expected] : cases) {
        ErrorCode error{};
        EXPECT_FALSE(StreamSource::Open(path.toStdString(), kPatience, error));
        EXPECT_EQ(error, expected) << path.toStdString();
    }
}

TEST(StreamSource, GivesUpOnAFileThatHangsWhenOpened) {
    for (const std::int64_t hang : {0, 40}) {
        const auto control = HangingFrom(hang);
        ErrorCode error{};
        auto bytes = std::make_unique<FakeBytes>(CountingWave(30000), control);
        EXPECT_FALSE(StreamSource::Open(std::move(bytes), milliseconds(30), error));
        EXPECT_EQ(error, ErrorCode::Timeout);
        control->Release();
        while (control.use_count() > 1) // closed by itself
            std::this_thread::yield();
    }
}

TEST(StreamSource, ALongTitlePlaysBeforeItsLengthIsKnown) {
    // Silence for the first third, then a tone: the rate of the start says little about the rest.
    SoundSpec spec = Spec(20, 44100, 2, "-V 2 -t");
    const QByteArray tone = SoundBytes("a.mp3", spec);
    spec.frequency = 0;
    QByteArray bytes = SoundBytes("a.mp3", spec) + tone + tone;
    constexpr int kLong = 17 << 20;
    bytes = bytes.repeated(1 + kLong / static_cast<int>(bytes.size()));

    const auto measuring = HangingFrom(1 << 20);
    const auto source = OpenStream(bytes, std::make_shared<Control>(), measuring);
    ASSERT_TRUE(measuring->AwaitHanging());
    EXPECT_TRUE(source->WaitFor(44100, kPatience)) << "plays meanwhile";
    const std::int64_t estimate = source->Frames();
    EXPECT_GT(estimate, 0);

    measuring->Release();
    const OpenedFile whole(bytes);
    ASSERT_TRUE(whole.decoder);
    const std::int64_t exact = whole.decoder->Format().frames;
    EXPECT_NE(estimate, exact);
    source->AwaitLength(kPatience);
    EXPECT_EQ(source->Frames(), exact);
    EXPECT_EQ(source->Bitrate(), whole.decoder->Format().bitrate);
    source->Seek(exact - 1000);
    EXPECT_EQ(Drain(*source).size(), 2000U);
}

TEST(StreamSource, ASeekDropsWhatWasDecoded) {
    const auto source = OpenStream(CountingWave(200000));
    ASSERT_TRUE(source->WaitFor(65536, kPatience));
    EXPECT_EQ(source->Available(), 65536U);
    for (const int target : {31000, 5, 150000, 199999, 0}) {
        source->Seek(target);
        EXPECT_EQ(NextCount(*source), target % 32768);
    }
    source->Seek(9999999);
    EXPECT_TRUE(Drain(*source).empty());
    source->Seek(-5);
    EXPECT_EQ(Drain(*source).size(), 2U * 200000U);
}

TEST(StreamSource, AFileThatBreaksOffEndsThere) {
    const QByteArray wave = CountingWave(2500000);
    constexpr std::int64_t kGone = 8000000;
    for (const auto breakOff : {&Control::CutAt, &Control::FailFrom}) {
        auto control = std::make_shared<Control>();
        (*control.*breakOff)(kGone);
        const auto source = OpenStream(wave, control);
        const auto frames = static_cast<std::int64_t>(Drain(*source).size() / 2);
        EXPECT_GE(frames, (kGone - 65536 - 44) / 4);
        EXPECT_LE(frames, kGone / 4);
    }
}

TEST(StreamSource, TenSecondsOfAStallAreNotHeardAndALongerOneIsNoEnd) {
    constexpr std::size_t kHigh = 96000; // 3 Mbit/s; MP3 and OGG need far less
    const auto control = HangingFrom(9000000);
    const auto source = OpenStream(SoundBytes("a.wav", Spec(60, kHigh)), control);
    std::vector<float> piece(2 * 1000);
    std::size_t taken = 0;
    const auto take = [&](milliseconds patience) {
        const bool there = source->WaitFor(1000, patience);
        taken += there ? source->Read(piece.data(), 1000) : 0;
        return there;
    };
    while (taken < 800000)
        ASSERT_TRUE(take(kPatience));
    ASSERT_TRUE(control->AwaitHanging()) << "the reader is as far ahead as it goes";
    while (taken < 800000 + 10 * kHigh)
        ASSERT_TRUE(take(seconds(2))) << taken;
    while (take(milliseconds(200))) {
    }
    EXPECT_FALSE(source->AtEnd());
    control->Release();
    EXPECT_EQ(taken + Drain(*source).size() / 2, 60 * kHigh);
}

/** A file that comes like water from a pipe: a little faster than it is played, with pauses of nine seconds. */
TEST(StreamSource, AFileThatTricklesInIsHeardWithoutAGap) {
    constexpr int kBytesASecond = 4 * 44100;
    std::int64_t given = 2 * kBytesASecond;
    const auto control = HangingFrom(given);
    const auto source = OpenStream(SoundBytes("a.wav", Spec(100)), control);
    std::vector<float> piece(2 * 44100);
    std::size_t taken = 0;
    for (int second = 0; second < 100; ++second) {
        const bool pause = second % 30 >= 21;
        given += pause ? 0 : 3 * kBytesASecond / 2;
        control->HangFrom(given);
        ASSERT_TRUE(source->WaitFor(44100, seconds(5))) << "second " << second;
        taken += source->Read(piece.data(), 44100);
    }
    control->Release();
    EXPECT_EQ(taken, 100U * 44100U);
    EXPECT_TRUE(Drain(*source).empty()) << "the end follows";
}

} // namespace kalvo::audio::test
