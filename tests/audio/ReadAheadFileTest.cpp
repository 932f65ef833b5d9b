#include "audio/ReadAheadFile.h"

#include "DecodeSupport.h"

#include <gtest/gtest.h>
#include <random>

namespace kalvo::audio::test {

namespace {

constexpr std::int64_t kBlock = ReadAheadFile::kBlockBytes;

QByteArray Noise(std::int64_t size) {
    std::mt19937 random(3);
    QByteArray bytes(size, Qt::Uninitialized);
    for (char& byte : bytes)
        byte = static_cast<char>(random());
    return bytes;
}

using Control = FakeBytes::Control;

/** A file that hangs, fails or is cut at a place; opened unless it hangs at once. */
struct Held {
    explicit Held(const QByteArray& bytes, void (Control::*fault)(std::int64_t) = &Control::HangFrom,
                  std::int64_t place = -1) {
        ((*control).*fault)(place);
        file = std::make_unique<ReadAheadFile>(std::make_unique<FakeBytes>(bytes, control));
        EXPECT_TRUE(place == 0 || file->WaitUntilOpen());
    }
    ~Held() { control->Release(); }

    std::shared_ptr<Control> control = std::make_shared<Control>();
    std::unique_ptr<ReadAheadFile> file;
};

} // namespace

TEST(ReadAheadFile, ReadsAnywhereWhatTheFileHolds) {
    const QByteArray bytes = Noise(9000001);
    const Held held(bytes);
    std::mt19937 random(5);
    QByteArray piece(200000, '\0');
    for (int round = 0; round < 300; ++round) {
        const auto place = static_cast<std::int64_t>(random() % 9100000);
        const auto wanted = static_cast<std::int64_t>(random() % (round % 10 == 0 ? 200000 : 700));
        ASSERT_TRUE(held.file->Seek(place));
        const std::int64_t got = held.file->Read(piece.data(), static_cast<std::size_t>(wanted));
        ASSERT_EQ(got, std::clamp<std::int64_t>(bytes.size() - place, 0, wanted)) << place;
        ASSERT_EQ(piece.left(got), bytes.mid(place, got)) << place;
        ASSERT_EQ(held.file->Tell(), place + got);
    }
    EXPECT_FALSE(held.file->Seek(-1));
    EXPECT_EQ(held.file->Seek(-1, SEEK_END), bytes.size() - 1);
}

TEST(ReadAheadFile, CancelEndsEveryWait) {
    const Held opening(Noise(10), &Control::HangFrom, 0);
    ASSERT_TRUE(opening.control->AwaitHanging());
    opening.file->Cancel();
    EXPECT_FALSE(opening.file->WaitUntilOpen());

    const Held reading(Noise(3 * kBlock), &Control::HangFrom, kBlock);
    ASSERT_TRUE(reading.control->AwaitHanging());
    std::thread canceller([&] { reading.file->Cancel(); });
    QByteArray piece(3 * kBlock, '\0');
    EXPECT_LT(reading.file->Read(piece.data(), static_cast<std::size_t>(piece.size())), 3 * kBlock);
    EXPECT_EQ(reading.file->Read(piece.data(), 1), -1);
    EXPECT_TRUE(reading.file->Failed());
    canceller.join();
}

TEST(ReadAheadFile, ClosesWithoutWaitingForAHangingFile) {
    auto control = std::make_shared<Control>();
    control->HangFrom(kBlock);
    {
        ReadAheadFile file(std::make_unique<FakeBytes>(Noise(3 * kBlock), control));
        ASSERT_TRUE(file.WaitUntilOpen() && control->AwaitHanging());
    }
    control->Release();
    // The reader drops its share of the control when it has come back and closed the bytes.
    while (control.use_count() > 1)
        std::this_thread::yield();
}

TEST(ReadAheadFile, FailuresAndCutsAreToldWhereTheyAre) {
    QByteArray piece(4 * kBlock, '\0');
    const Held failing(Noise(4 * kBlock), &Control::FailFrom, 2 * kBlock);
    EXPECT_EQ(failing.file->Read(piece.data(), 4 * kBlock), 2 * kBlock);
    EXPECT_TRUE(failing.file->Failed());
    EXPECT_EQ(failing.file->Read(piece.data(), 1), -1);
    EXPECT_TRUE(failing.file->Seek(5) && failing.file->Read(piece.data(), 9) == 9) << "the part before";

    const Held cut(Noise(4 * kBlock), &Control::CutAt, kBlock + 77);
    EXPECT_EQ(cut.file->Read(piece.data(), 4 * kBlock), kBlock + 77);
    EXPECT_EQ(cut.file->Read(piece.data(), 1), 0);
    EXPECT_FALSE(cut.file->Failed());
    EXPECT_EQ(cut.file->Size(), kBlock + 77);
}

} // namespace kalvo::audio::test
