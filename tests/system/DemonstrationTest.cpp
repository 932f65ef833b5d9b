#include "support/PulseServer.h"
#include "support/TestFolder.h"
#include "support/ToneMeter.h"
#include "support/WaitUntil.h"
#include "support/XServer.h"
#include "system/DrivenProgram.h"
#include "system/Program.h"

#include <QRegularExpression>
#include <gtest/gtest.h>

#include <algorithm>

namespace kalvo::test {
namespace {

QStringList Demonstration(const TestFolder& folder) {
    return {QStringLiteral("--vorfuehrung"), QStringLiteral("--datenordner"), folder.Path(QStringLiteral("Kalvo"))};
}

TEST(Demonstration, MixesItsDozenTitlesIntoAFileWithoutAScreen) {
    const TestFolder folder;
    const ProgramResult result = RunProgram(
        Demonstration(folder) + QStringList{QStringLiteral("--mix"), folder.Path(QStringLiteral("mix.wav"))});
    EXPECT_EQ(result.exitCode, 0) << result.errors.toStdString();
    EXPECT_EQ(result.output.count(QRegularExpression(QStringLiteral(" s  Player [12]: "))), 12)
        << result.output.toStdString();
    EXPECT_EQ(result.output.count(QStringLiteral("Übergabe an Player ")), 11);
}

TEST(Demonstration, PlaysAndHandsOverWithinAMinute) {
    if (!XServer::IsInstalled() || !PulseServer::IsInstalled())
        GTEST_SKIP() << "Xvfb or pulseaudio is not installed";
    const PulseServer sound;
    const XServer screen;
    const TestFolder folder;
    const PulseRecording recording(QStringLiteral("haupt"));
    DrivenOptions options;
    options.environment.insert(QStringLiteral("SDL_AUDIODRIVER"), QStringLiteral("pulseaudio"));
    const DrivenProgram program(screen.Display(), Demonstration(folder), options);
    const auto isHeard = [&recording] {
        const std::vector<float> heard = recording.Mono();
        return std::any_of(heard.begin(), heard.end(), [](float sample) { return sample > 0.05F; });
    };
    ASSERT_TRUE(WaitUntil(isHeard, std::chrono::minutes(2)));
    const auto onAir = [&folder] { return folder.Read(QStringLiteral("Kalvo/meta.dat")); };
    ASSERT_TRUE(WaitUntil([&onAir] { return !onAir().isEmpty(); }));
    const QByteArray first = onAir();
    EXPECT_TRUE(WaitUntil([&] { return onAir() != first; }, std::chrono::minutes(2)));
    EXPECT_FALSE(onAir().isEmpty());
}

} // namespace
} // namespace kalvo::test
