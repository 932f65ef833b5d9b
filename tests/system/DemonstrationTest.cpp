#include "support/PulseServer.h"
#include "support/ToneMeter.h"
#include "support/WaitUntil.h"
#include "system/DrivenProgram.h"

#include <QRegularExpression>

#include <algorithm>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

QStringList Demonstration(const TestFolder& folder) {
    return {u"--vorfuehrung"_s, u"--datenordner"_s, folder.Path(u"Kalvo"_s)};
}

TEST(Demonstration, MixesItsDozenTitlesIntoAFileWithoutAScreen) {
    const TestFolder folder;
    const ProgramResult result = RunProgram(Demonstration(folder) + QStringList{u"--mix"_s, folder.Path(u"mix.wav"_s)});
    EXPECT_EQ(result.exitCode, 0) << result.errors.toStdString();
    EXPECT_EQ(result.output.count(QRegularExpression(u" s  Player [12]: "_s)), 12) << result.output.toStdString();
    EXPECT_EQ(result.output.count(u"Übergabe an Player "_s), 11);
}

TEST(Demonstration, PlaysAndHandsOverWithinAMinute) {
    if (!XServer::IsInstalled() || !PulseServer::IsInstalled())
        GTEST_SKIP() << "Xvfb or pulseaudio is not installed";
    const PulseServer sound;
    const XServer screen;
    const TestFolder folder;
    const PulseRecording recording(u"haupt"_s);
    const DrivenProgram program(screen.Display(), Demonstration(folder),
                                {{}, {{u"SDL_AUDIODRIVER"_s, u"pulseaudio"_s}}, {}});
    const auto isHeard = [&recording] {
        const std::vector<float> heard = recording.Mono();
        return std::any_of(heard.begin(), heard.end(), [](float sample) { return sample > 0.05F; });
    };
    ASSERT_TRUE(WaitUntil(isHeard, std::chrono::minutes(2)));
    const auto onAir = [&folder] { return folder.Read(u"Kalvo/meta.dat"_s); };
    ASSERT_TRUE(WaitUntil([&onAir] { return !onAir().isEmpty(); }));
    const QByteArray first = onAir();
    EXPECT_TRUE(WaitUntil([&] { return onAir() != first; }, std::chrono::minutes(2)));
    EXPECT_FALSE(onAir().isEmpty());
}

} // namespace
} // namespace kalvo::test
