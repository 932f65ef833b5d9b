#include "base/Settings.h"
#include "playback/OutputChoice.h"
#include "playlists/CueText.h"
#include "system/LiveDesk.h"
#include "system/SoundServerTest.h"

#include <QDir>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

constexpr double kMusic = 440;    // Hz
constexpr double kListened = 700; // Hz

class LiveHeadphonesTest : public SoundServerTest {};

TEST_F(LiveHeadphonesTest, HearOnlyTheirTitleAndLeaveTheMusicUntouched) {
    {
        ASSERT_TRUE(QDir().mkpath(data_));
        Settings settings(data_ + u"/kalvo.ini"_s);
        OutputChoice{3, PulseServer::DeviceName(kOther)}.Write(settings, audio::Output::Headphones);
    }
    LiveDesk desk(data_);
    ASSERT_TRUE(desk.IsOpen());
    desk.Fill(1, {Tone("musik.ogg", kMusic, 60), Tone("vorher.ogg", kListened, 60)});
    desk.Click("cmdPlay1");
    RunFor(0.5);
    const PulseRecording main(kMain);
    PulseRecording headphones(kOther);
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
    ASSERT_TRUE(server_->RemoveSink(kOther));
    EXPECT_TRUE(WaitUntil([&] { return desk.Text("lblStatus") == u"pause"_s; }));
    ASSERT_TRUE(server_->AddSink(kOther));
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

} // namespace
} // namespace kalvo::test
