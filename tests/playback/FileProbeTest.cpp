#include "playback/FileProbe.h"

#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

TEST(FileProbe, SeesFilesAndNothingElseAlsoAfterAnAnswerThatCameTooLate) {
    const test::TestFolder folder;
    FileProbe probe;
    probe.SetPatience(std::chrono::milliseconds(0));
    for (int i = 0; i < 50; ++i)
        probe.Exists(folder.Path(QString::number(i))); // answered or not: never a hang
    probe.SetPatience(std::chrono::seconds(20));
    EXPECT_TRUE(probe.Exists(folder.Write(QStringLiteral("da.mp3"), "x")));
    const QString gone = folder.Path(QStringLiteral("weg.mp3"));
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (probe.Exists(gone) && std::chrono::steady_clock::now() < end) {
    }
    EXPECT_FALSE(probe.Exists(gone));
    EXPECT_FALSE(probe.Exists(folder.Path())) << "a folder";
    EXPECT_FALSE(probe.Exists({}));
}

} // namespace
} // namespace kalvo
