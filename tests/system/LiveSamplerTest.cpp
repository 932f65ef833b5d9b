#include "live/SampleFile.h"
#include "system/LiveDesk.h"
#include "system/SoundServerTest.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>

#include <algorithm>
#include <iostream>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

const std::vector<double> kTones{440, 1000, 2500}; // Player 1, Player 2, the sample
constexpr int kPresses = 5;
constexpr double kHold = 0.4; // seconds

/** One of the tones, which begins at once. */
QString AbruptTone(const TestFolder& folder, std::size_t which) {
    return MakeSound(folder.Path(), u"%1.wav"_s.arg(which),
                     {.seconds = 20, .frequency = kTones[which], .amplitude = 0.2});
}

void Key(QEvent::Type type) {
    QKeyEvent event(type, Qt::Key_7, Qt::KeypadModifier);
    QApplication::sendEvent(QApplication::activeWindow(), &event);
}

/** How long it takes from a key to the first sample that is rendered; nothing else sounds. */
void TellRenderLatency(audio::AudioLibrary& audio) {
    RunFor(1); // the sound server takes its time to begin
    for (int press = 0; press < kPresses; ++press) {
        RunFor(0.1 + 0.007 * press);
        audio.GetOutputLevels(audio::Output::Main);
        QElapsedTimer clock;
        clock.start();
        Key(QEvent::KeyPress);
        WaitUntil([&audio] { return audio.GetOutputLevels(audio::Output::Main).left > 0; });
        std::cout << "key to first sample rendered: " << double(clock.nsecsElapsed()) / 1e6 << " ms" << std::endl;
        Key(QEvent::KeyRelease);
    }
}

/**
 * With the fader in the middle Player 2 is the one that is turned down. Player 1, unmuted right before each press,
 * shows when a plain volume command gets through: it waits for the output's buffer as the sample does, and for nothing
 * else.
 */
ToneMeter RecordPresses(const TestFolder& sounds) {
    const TestFolder data;
    const DataFolder folder(data.Path(u"Kalvo"_s));
    EXPECT_TRUE(folder.CreateAll());
    SampleSlots slots;
    slots[6] = {u"Tusch"_s, AbruptTone(sounds, 2)};
    const SystemClock clock;
    EXPECT_TRUE(SampleFile(folder.Path(u"\\sample.dll"_s), clock).Write(slots));
    data.Write(u"Kalvo/kalvo.ini"_s, "[Sample]\nPegelabsenkung=40\n");
    LiveDesk desk(folder.Root());
    desk.Activate("List1");
    desk.Fill(1, {AbruptTone(sounds, 0)});
    desk.Fill(2, {AbruptTone(sounds, 1)});
    Mixer& players = desk.Players();
    TellRenderLatency(players.Layer().Audio());
    players.Play(1, -1);
    players.Play(2, -1);
    players.ToggleMute(1);
    RunFor(0.5);
    PulseRecording recording(kMain);
    EXPECT_TRUE(recording.WaitFor(0.3));
    for (int press = 0; press < kPresses; ++press) {
        RunFor(kHold + 0.013 * press); // at another place of the buffer each time
        players.ToggleMute(1);
        Key(QEvent::KeyPress);
        RunFor(kHold);
        Key(QEvent::KeyRelease);
        players.ToggleMute(1);
    }
    RunFor(kHold);
    return Measure(recording);
}

class LiveSamplerTest : public SoundServerTest {};

TEST_F(LiveSamplerTest, AKeyIsHeardWithTheNextBufferAndTurnsTheMusicDown) {
    const ToneMeter meter = RecordPresses(folder_);
    std::vector<double> delays;
    double from = 0;
    for (int press = 0; press < kPresses; ++press) {
        const double command = meter.Onset(kTones, 0, kFull / 2, from);
        const double sample = meter.Onset(kTones, 2, kFull / 2, from);
        ASSERT_TRUE(command > 0 && sample > 0) << press;
        delays.push_back(sample - command);
        std::cout << "sample after a volume command: " << delays.back() * 1000 << " ms" << std::endl;
        const std::vector<double> before = meter.Levels(kTones, sample - 0.1);
        const std::vector<double> held = meter.Levels(kTones, sample + kHold / 2);
        EXPECT_NEAR(before[1], kFull, 0.05 * kFull);
        EXPECT_NEAR(held[1], 0.6 * kFull, 0.03 * kFull) << "turned down by 40 %";
        EXPECT_NEAR(held[2], kFull, 0.05 * kFull);
        from = sample + kHold + 0.2;
        const std::vector<double> after = meter.Levels(kTones, from);
        EXPECT_NEAR(after[1], kFull, 0.05 * kFull);
        EXPECT_LT(after[2], 0.02 * kFull) << "ends with its key";
    }
    // The meter's step is 5 ms. A sound that is opened by its key comes a buffer (23 ms) later at least, and so does
    // one whose key falls on the other side of a buffer's end than the command before it: that happens to few.
    std::nth_element(delays.begin(), delays.begin() + kPresses / 2, delays.end());
    EXPECT_NEAR(delays[kPresses / 2], 0, 0.0125);
}

} // namespace
} // namespace kalvo::test
