#include "base/Settings.h"
#include "playback/OutputChoice.h"
#include "playlists/CueText.h"
#include "support/PulseServer.h"
#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "support/ToneMeter.h"
#include "support/WaitUntil.h"
#include "system/LiveDesk.h"

#include <QDir>
#include <gtest/gtest.h>

#include <algorithm>

namespace kalvo::test {
namespace {

constexpr double kMusic = 440;    // Hz
constexpr double kListened = 700; // Hz
/** Level of a tone after the two channels are averaged: half of the second channel is missing. */
constexpr double kFull = 0.2 * 0.75;

ToneMeter Measure(const PulseRecording& recording) {
    return {recording.Mono(), PulseRecording::kSampleRate};
}

QString Tone(const TestFolder& folder, const char* name, double frequency) {
    SoundSpec sound;
    sound.seconds = 60;
    sound.frequency = frequency;
    sound.amplitude = 0.2;
    sound.fadeIn = 0.05;
    sound.options = {QStringLiteral("-q"), QStringLiteral("9")};
    return MakeSound(folder.Path(), QString::fromLatin1(name), sound);
}

} // namespace

TEST(LiveHeadphonesTest, HearOnlyTheirTitleAndLeaveTheMusicUntouched) {
    if (!PulseServer::IsInstalled())
        GTEST_SKIP() << "pulseaudio is not installed";
    const QString other = QStringLiteral("kopfhoerer");
    PulseServer server;
    const TestFolder folder;
    {
        ASSERT_TRUE(QDir().mkpath(folder.Path(QStringLiteral("Kalvo"))));
        Settings settings(folder.Path(QStringLiteral("Kalvo/kalvo.ini")));
        OutputChoice{3, PulseServer::DeviceName(other)}.Write(settings, audio::Output::Headphones);
    }
    LiveDesk desk(folder.Path(QStringLiteral("Kalvo")));
    ASSERT_TRUE(desk.IsOpen());
    desk.Fill(1, {Tone(folder, "musik.ogg", kMusic), Tone(folder, "vorher.ogg", kListened)});
    desk.Click("cmdPlay1");
    RunFor(0.5);
    const PulseRecording main(QStringLiteral("haupt"));
    PulseRecording headphones(other);
    ASSERT_TRUE(headphones.WaitFor(0.5));
    desk.Select("List1", 1);
    desk.Trigger("TitelVorhoerenWL");
    desk.Press("frmKopfhoerer/VScroll1", Qt::Key_End);
    RunFor(2);
    desk.Click("frmKopfhoerer/Command8"); // pause
    desk.Click("frmKopfhoerer/Command5"); // back
    desk.Click("frmKopfhoerer/Command3");
    EXPECT_GT(CueText::Read(desk.List(1).At(1).info).value_or(-1), 1);
    desk.Click("frmKopfhoerer/Command2");
    RunFor(1);
    ASSERT_TRUE(server.RemoveSink(other));
    EXPECT_TRUE(WaitUntil([&] { return desk.Text("lblStatus") == QStringLiteral("pause"); }));
    ASSERT_TRUE(server.AddSink(other));
    EXPECT_TRUE(desk.IsShown("frmKopfhoerer")) << "the window stays";
    desk.Trigger("TitelVorhoerenWL");
    RunFor(1);
    desk.Close("frmKopfhoerer");
    RunFor(0.3);

    const ToneMeter heard = Measure(headphones);
    const double begin = heard.Onset({kListened, kMusic}, 0, kFull * 0.9);
    ASSERT_GT(begin, 0);
    const std::vector<double> levels = heard.Levels({kListened, kMusic}, begin + 0.8);
    EXPECT_NEAR(levels[0], kFull, kFull * 0.03);
    EXPECT_LT(levels[1], 0.0005) << "no music in the headphones";
    const ToneMeter music = Measure(main);
    EXPECT_LT(music.ResidualPeak({kMusic}, 0.1, music.Seconds() - 0.1), -50) << "no gap, no click, nothing else";
    for (double second = 0.2; second < music.Seconds() - 0.2; second += 0.2)
        EXPECT_NEAR(music.Levels({kMusic}, second)[0], kFull, kFull * 0.02) << second;
}

} // namespace kalvo::test
