#include "playback/FileProbe.h"

#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

TEST(FileProbe, SeesFilesAndNothingElse) {
    const test::TestFolder folder;
    const QString file = folder.Write(QStringLiteral("da.mp3"), "x");
    FileProbe probe;
    probe.SetPatience(std::chrono::seconds(20));
    EXPECT_TRUE(probe.Exists(file));
    EXPECT_FALSE(probe.Exists(folder.Path(QStringLiteral("weg.mp3"))));
    EXPECT_FALSE(probe.Exists(folder.Path())) << "a folder";
    EXPECT_FALSE(probe.Exists({}));
}

TEST(FileProbe, GoesOnAfterAnAnswerThatCameTooLate) {
    const test::TestFolder folder;
    FileProbe probe;
    probe.SetPatience(std::chrono::milliseconds(0));
    for (int i = 0; i < 50; ++i) {
        probe.Exists(folder.Path(QString::number(i))); // answered or not: never a hang
    }
    probe.SetPatience(std::chrono::seconds(20));
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (probe.Exists(folder.Path(QStringLiteral("weg.mp3"))) && std::chrono::steady_clock::now() < end) {
    }
    EXPECT_FALSE(probe.Exists(folder.Path(QStringLiteral("weg.mp3"))));
}

} // namespace
} // namespace kalvo
