#include "audio/ReadAheadFile.h"

#include "DecodeSupport.h"

#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>

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

/** A file that can be made to hang, fail or end; opened unless it hangs at once. */
struct Held {
    explicit Held(const QByteArray& bytes, std::int64_t hang = -1) {
        control->HangFrom(hang);
        file = std::make_unique<ReadAheadFile>(std::make_unique<FakeBytes>(bytes, control));
        EXPECT_TRUE(hang == 0 || file->WaitUntilOpen());
    }
    ~Held() { control->Release(); }

    std::shared_ptr<FakeBytes::Control> control = std::make_shared<FakeBytes::Control>();
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

TEST(ReadAheadFile, StaysAheadWhileTheFileHangs) {
    const QByteArray bytes = Noise(12000000);
    const Held held(bytes, 96 * kBlock);
    char byte = 0;
    ASSERT_EQ(held.file->Read(&byte, 0), 0);
    // Reading on makes room; the reader then runs into the hanging block, far ahead of what has been taken.
    QByteArray piece(12 * kBlock, '\0');
    ASSERT_EQ(held.file->Read(piece.data(), 12 * kBlock), 12 * kBlock);
    ASSERT_TRUE(held.file->Read(&byte, 1) == 1 && held.control->AwaitHanging());
    QByteArray rest(80 * kBlock, '\0');
    EXPECT_EQ(held.file->Read(rest.data(), static_cast<std::size_t>(rest.size())), rest.size());
    EXPECT_EQ(rest, bytes.mid(12 * kBlock + 1, rest.size()));
}

TEST(ReadAheadFile, CancelEndsEveryWait) {
    const Held opening(Noise(10), 0);
    ASSERT_TRUE(opening.control->AwaitHanging());
    opening.file->Cancel();
    EXPECT_FALSE(opening.file->WaitUntilOpen());

    const Held reading(Noise(3 * kBlock), kBlock);
    ASSERT_TRUE(reading.control->AwaitHanging());
    std::thread canceller([&] { reading.file->Cancel(); });
    QByteArray piece(3 * kBlock, '\0');
    EXPECT_LT(reading.file->Read(piece.data(), static_cast<std::size_t>(piece.size())), 3 * kBlock);
    EXPECT_EQ(reading.file->Read(piece.data(), 1), -1);
    EXPECT_TRUE(reading.file->Failed());
    canceller.join();
}

TEST(ReadAheadFile, ClosesWithoutWaitingForAHangingFile) {
    auto control = std::make_shared<FakeBytes::Control>();
    control->HangFrom(kBlock);
    {
        ReadAheadFile file(std::make_unique<FakeBytes>(Noise(3 * kBlock), control));
        ASSERT_TRUE(file.WaitUntilOpen() && control->AwaitHanging());
    }
    EXPECT_EQ(control->Reached(), 2 * kBlock);
    control->Release();
    // The reader drops its share of the control when it has come back and closed the bytes.
    while (control.use_count() > 1)
        std::this_thread::yield();
}

TEST(ReadAheadFile, FailuresAndCutsAreToldWhereTheyAre) {
    QByteArray piece(4 * kBlock, '\0');
    auto control = std::make_shared<FakeBytes::Control>();
    control->FailFrom(2 * kBlock);
    ReadAheadFile failing(std::make_unique<FakeBytes>(Noise(4 * kBlock), control));
    ASSERT_TRUE(failing.WaitUntilOpen());
    EXPECT_EQ(failing.Read(piece.data(), 4 * kBlock), 2 * kBlock);
    EXPECT_TRUE(failing.Failed());
    EXPECT_EQ(failing.Read(piece.data(), 1), -1);
    EXPECT_TRUE(failing.Seek(5) && failing.Read(piece.data(), 9) == 9) << "the part before can still be read";

    control = std::make_shared<FakeBytes::Control>();
    control->CutAt(kBlock + 77);
    ReadAheadFile cut(std::make_unique<FakeBytes>(Noise(4 * kBlock), control));
    ASSERT_TRUE(cut.WaitUntilOpen());
    EXPECT_EQ(cut.Read(piece.data(), 4 * kBlock), kBlock + 77);
    EXPECT_EQ(cut.Read(piece.data(), 1), 0);
    EXPECT_FALSE(cut.Failed());
    EXPECT_EQ(cut.Size(), kBlock + 77);
}

TEST(ReadAheadFile, OpensRegularFilesOnly) {
    const TestFolder folder;
    const std::string pipe = folder.Path(QStringLiteral("pipe")).toStdString();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& path : {folder.Path().toStdString(), pipe, std::string("/nowhere/a.mp3"), std::string()}) {
        ReadAheadFile file(MakeFileSource(path));
        EXPECT_FALSE(file.WaitUntilOpen()) << path;
    }
    ReadAheadFile empty(MakeFileSource(folder.Write(QStringLiteral("empty"), {}).toStdString()));
    char byte = 0;
    EXPECT_TRUE(empty.WaitUntilOpen());
    EXPECT_EQ(empty.Read(&byte, 1), 0);
}

} // namespace kalvo::audio::test
