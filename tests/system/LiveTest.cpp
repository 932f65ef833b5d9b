#include "base/FaderLaw.h"
#include "live/SampleFile.h"
#include "system/LiveDesk.h"
#include "system/SoundServerTest.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QKeyEvent>

#include <algorithm>
#include <functional>
#include <iostream>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

double Recorded(const PulseRecording& recording) {
    return Measure(recording).Seconds();
}

class LiveTest : public SoundServerTest {
protected:
    /**
     * What the scenario recorded. The sink of a busy machine runs dry now and then, whatever the program does: with a
     * click in it the scenario is run once more, three times at most. A click of the program's own is in all of them.
     */
    template<typename Scenario>
    static auto Undisturbed(Scenario scenario) {
        auto recorded = scenario();
        for (int left = 2; left > 0 && recorded.meter.TreblePeak(0, recorded.meter.Seconds()) >= kInaudible; --left) {
            std::cout << "There is a click, once more." << std::endl;
            recorded = scenario();
        }
        return recorded;
    }

    /** Whether a tone comes at a card within some seconds. */
    static bool IsHeard(const QString& card, double frequency) {
        const PulseRecording recording(card);
        return WaitUntil([&] { return Measure(recording).Onset({frequency}, 0, 0.9 * kFull) >= 0; });
    }
};

/** Where the fader stood when, in seconds of a clock of its own. */
class FaderLog {
public:
    struct Step {
        double second;
        int position;
    };

    explicit FaderLog(Mixer& mixer) {
        clock_.start();
        QObject::connect(&mixer, &Mixer::FaderMoved, &context_, [this](int position) {
            steps_.push_back({static_cast<double>(clock_.nsecsElapsed()) / 1e9, position});
        });
    }

    /** The steps of the last fade from Player 2 to Player 1. */
    std::vector<Step> LastFadeToPlayer1() const {
        const auto isFull = [](const Step& step) { return step.position == FaderEndOf(2); };
        return {std::find_if(steps_.rbegin(), steps_.rend(), isFull).base(), steps_.end()};
    }

private:
    QObject context_;
    QElapsedTimer clock_;
    std::vector<Step> steps_;
};

struct RecordedMix {
    ToneMeter meter{{}, PulseRecording::kSampleRate};
    std::vector<FaderLog::Step> fade; ///< the second one, from Player 2 to Player 1
    audio::OutputInfo output;         ///< at the end
};

TEST_F(LiveTest, HandOversFollowRuleAndVolumeLawWithoutGapOrClick) {
    const std::vector<double> tones{440, 700, 1000};
    const double length = 14;
    const double handOverAt = 4.5; // the rounded position and the standard switch-over time of 9 s reach the length
    const QString first1 = Tone("erster.mp3", tones[0], length);
    const QString first2 = Tone("zweiter.ogg", tones[1], length);
    const QString second1 = Tone("dritter.mp3", tones[2], length);
    const RecordedMix mix = Undisturbed([&] {
        RecordedMix recorded;
        const TestFolder data;
        LiveDesk desk(data.Path(u"Kalvo"_s));
        if (!desk.IsOpen())
            return recorded;
        desk.Fill(1, {first1, second1});
        desk.Fill(2, {first2});
        desk.Press("cboTempo", Qt::Key_Down); // "schnell": 15 ms a step
        const FaderLog log(desk.Players());
        const PulseRecording recording(kMain);
        desk.Click("cmdPlay1");
        EXPECT_TRUE(WaitUntil([&] { return desk.Players().Fader() == FaderEndOf(1); }, std::chrono::seconds(30)));
        RunFor(0.5);
        recorded.meter = Measure(recording);
        recorded.fade = log.LastFadeToPlayer1();
        desk.Players().Layer().Audio().GetInfo(audio::Output::Main, recorded.output);
        EXPECT_TRUE(desk.Text("lblAussetzer").startsWith(u"Aussetzer "_s));
        return recorded;
    });
    const ToneMeter& meter = mix.meter;
    const double first = meter.Onset(tones, 0, 0.5 * kFull);
    // A title's abrupt start holds a little of every tone.
    const double second = first < 0 ? -1 : meter.Onset(tones, 1, 0.5 * kFull, first + 1);
    const double third = second < 0 ? -1 : meter.Onset(tones, 2, 0.01 * kFull, second + 1);
    ASSERT_TRUE(first >= 0 && second > 0 && third > 0);
    EXPECT_NEAR(second - first, handOverAt, 0.3);
    EXPECT_NEAR(third - second, handOverAt, 0.3);

    // The first fade starts in the centre, both full; the second goes from end to end.
    for (const std::size_t tone : {0U, 1U})
        EXPECT_NEAR(meter.Levels(tones, second + 0.05)[tone] / kFull, 1, 0.1);
    const std::vector<FaderLog::Step>& fade = mix.fade;
    ASSERT_EQ(fade.size(), 200U);
    const double delay = third - fade[1].second;
    for (std::size_t i = 10; i < fade.size(); i += 10) {
        const std::vector<double> levels = meter.Levels(tones, fade[i].second + delay);
        for (const int player : {1, 2})
            EXPECT_NEAR(levels[player == 1 ? 2 : 1] / kFull, FaderVolume(player, fade[i].position) / 100.0, 0.06)
                << "Player " << player << " at " << fade[i].position;
    }

    const double end = third + fade.back().second - fade.front().second + 0.3;
    EXPECT_LT(meter.LongestSilence(0.1 * kFull, first + 0.02, end), 0.005);
    EXPECT_LT(meter.ResidualPeak(tones, first + 0.1, second - 0.05), kInaudible);
    EXPECT_LT(meter.ResidualPeak(tones, second + 0.05, end), kInaudible);
    EXPECT_LT(meter.TreblePeak(0, end), kInaudible);
    EXPECT_EQ(mix.output.starvations, 0U);
}

struct Act {
    const char* name;
    std::vector<double> heard; ///< Hz, afterwards; none = silence
    std::function<void(LiveDesk&)> run;
    double level = 1; ///< of the first tone then
};

/** Holds a pad of the keypad or lets it go. */
std::function<void(LiveDesk&)> Pad(QEvent::Type type) {
    return [type](LiveDesk& desk) {
        desk.Activate("List1");
        QKeyEvent event(type, Qt::Key_7, Qt::KeypadModifier);
        QApplication::sendEvent(QApplication::activeWindow(), &event);
    };
}

constexpr double kPitched = 440 * 1.05;

const std::vector<Act> kActs{
    {"play", {440}, [](LiveDesk& desk) { desk.Click("cmdPlay1"); }},
    {"pause", {}, [](LiveDesk& desk) { desk.Click("cmdPause1"); }},
    {"resume", {440}, [](LiveDesk& desk) { desk.Click("cmdPlay1"); }},
    {"seek", {440}, [](LiveDesk& desk) { desk.ClickAt("SPos1", 0.25); }},
    {"pitch", {kPitched}, [](LiveDesk& desk) { desk.Press("HScroll2", Qt::Key_PageUp, 5); }},
    {"mute", {}, [](LiveDesk& desk) { desk.Click("Command2"); }},
    {"unmute", {kPitched}, [](LiveDesk& desk) { desk.Click("Command2"); }},
    {"pitch back", {440}, [](LiveDesk& desk) { desk.Press("HScroll2", Qt::Key_PageDown, 5); }},
    {"fade by button",
     {700},
     [](LiveDesk& desk) {
         desk.Click("Command6");
         EXPECT_TRUE(WaitUntil([&desk] { return desk.Players().Fader() == FaderEndOf(2); }));
     }},
    {"hold a pad", {700, 1000}, Pad(QEvent::KeyPress), 0.5}, // which turns the music down
    {"let it go", {700}, Pad(QEvent::KeyRelease)},
    {"fade by hand", {700}, [](LiveDesk& desk) { desk.Press("SFader", Qt::Key_Left, 30); }, 0.5},
    {"stop", {}, [](LiveDesk& desk) { desk.Click("cmdStop2"); }},
};

struct RecordedActs {
    ToneMeter meter{{}, PulseRecording::kSampleRate};
    std::vector<std::pair<double, double>> steady; ///< begin and end of what each act led to, in seconds
    double position = 0;                           ///< of Player 1 after the seek
};

RecordedActs Perform(const QString& title1, const QString& title2, const QString& sample) {
    RecordedActs recorded;
    const TestFolder data;
    const DataFolder folder(data.Path(u"Kalvo"_s));
    SampleSlots slots;
    slots[6] = {u"Tusch"_s, sample};
    EXPECT_TRUE(folder.CreateAll() && SampleFile(folder.Path(u"\\sample.dll"_s), SystemClock()).Write(slots));
    LiveDesk desk(folder.Root());
    if (!desk.IsOpen())
        return recorded;
    desk.Fill(1, {title1});
    desk.Fill(2, {title2});
    desk.Press("cboTempo", Qt::Key_Down, 2); // "sehr schnell": 5 ms a step
    const PulseRecording recording(kMain);
    RunFor(0.3);
    for (const Act& act : kActs) {
        act.run(desk);
        if (act.name == std::string("seek"))
            recorded.position = desk.Players().PositionSeconds(1);
        const double begin = Recorded(recording);
        RunFor(0.7);
        recorded.steady.emplace_back(begin + 0.3, Recorded(recording));
    }
    recorded.meter = Measure(recording);
    return recorded;
}

TEST_F(LiveTest, EveryControlDoesItsWorkWithoutAClick) {
    const QString title1 = Tone("eins.mp3", 440, 20);
    const QString title2 = Tone("zwei.ogg", 700, 20);
    const QString sample = Tone("tusch.ogg", 1000, 5);
    const RecordedActs recorded = Undisturbed([&] { return Perform(title1, title2, sample); });
    const ToneMeter& meter = recorded.meter;
    ASSERT_EQ(recorded.steady.size(), kActs.size());
    for (std::size_t i = 0; i < kActs.size(); ++i) {
        SCOPED_TRACE(kActs[i].name);
        const std::vector<double>& heard = kActs[i].heard;
        const auto [begin, end] = recorded.steady[i];
        if (heard.empty()) {
            EXPECT_GE(meter.LongestSilence(0.001, begin, end), end - begin - 0.001);
        } else {
            EXPECT_LT(meter.ResidualPeak(heard, begin, end), kInaudible);
            const std::vector<double> levels = meter.Levels(heard, (begin + end) / 2);
            EXPECT_NEAR(levels[0] / kFull, kActs[i].level, 0.05);
            EXPECT_NEAR(levels.back() / kFull, heard.size() > 1 ? 1 : kActs[i].level, 0.05);
        }
    }
    EXPECT_NEAR(recorded.position, 0.25 * 20, 0.3);
    EXPECT_LT(meter.TreblePeak(0, meter.Seconds()), kInaudible);
}

TEST_F(LiveTest, VanishedCutAndBrokenFilesDoNotStopTheMusic) {
    const QString vanishing = Tone("weg.mp3", 440, 4);
    const QString cut = Tone("halb.mp3", 700, 6);
    ASSERT_TRUE(QFile::resize(cut, QFileInfo(cut).size() / 2));
    QByteArray noise("ID3");
    for (unsigned value = 1; noise.size() < 200'000; value = value * 1664525U + 1013904223U)
        noise.append(static_cast<char>(value >> 24U));
    const QString random = folder_.Write(u"Zufall.mp3"_s, noise);
    LiveDesk desk(data_);
    ASSERT_TRUE(desk.IsOpen());
    desk.Fill(1, {vanishing, random, Tone("gut.ogg", 1000, 10)});
    desk.Fill(2, {random, cut});
    desk.Click("chkAutomatik"); // each title runs to its own end
    PulseRecording recording(kMain);
    desk.Click("cmdPlay1");
    RunFor(1);
    ASSERT_TRUE(QFile::remove(vanishing));
    ASSERT_TRUE(recording.WaitFor(10));

    const std::vector<double> tones{440, 700, 1000};
    const ToneMeter meter = Measure(recording);
    const double first = meter.Onset(tones, 0, 0.5 * kFull);
    ASSERT_GE(first, 0);
    EXPECT_NEAR(meter.Onset(tones, 1, 0.5 * kFull, first), first + 4, 0.3);
    EXPECT_NEAR(meter.Onset(tones, 2, 0.5 * kFull, first), first + 7, 0.5);
    EXPECT_LT(meter.LongestSilence(0.1 * kFull, first, 10), 0.25);
    EXPECT_EQ(desk.Told().filter(u"Die Datei kann nicht abgespielt werden: "_s + random).size(), 2)
        << desk.Told().join(u'\n').toStdString();
}

TEST_F(LiveTest, TheMusicGoesOnWhenTheSoundCardIsPulledOutOrTheSoundServerKilled) {
    const std::vector<double> tones{440, 700};
    LiveDesk desk(data_);
    ASSERT_TRUE(desk.IsOpen());
    desk.Fill(1, {Tone("eins.mp3", tones[0], 60)});
    desk.Fill(2, {Tone("zwei.ogg", tones[1], 60)});
    EXPECT_TRUE(desk.Text("lblAusgabe").contains(PulseServer::DeviceName(kMain)));
    PulseRecording recording(kOther);
    desk.Click("cmdPlay1");
    RunFor(1);
    desk.Click("Command6");
    const auto fader = [&desk] { return desk.Players().Fader(); };
    ASSERT_TRUE(WaitUntil([&] { return fader() > FaderEndOf(1) / 2; }));
    const double pulled = Recorded(recording);
    ASSERT_TRUE(server_->RemoveSink(kMain));
    RunFor(2);
    EXPECT_LT(fader(), FaderEndOf(2)) << "still in the fade";
    const int position = fader();

    const ToneMeter meter = Measure(recording);
    const double back = meter.Onset(tones, 0, 0.5 * kFull);
    std::cout << "music on the other card after " << back - pulled << " s" << std::endl;
    EXPECT_GT(back, pulled - 0.1);
    EXPECT_LT(back, pulled + 2);
    EXPECT_LT(meter.LongestSilence(0.1 * kFull, back + 0.3, meter.Seconds()), 0.1);
    const std::vector<double> levels = meter.Levels(tones, meter.Seconds() - 0.2);
    for (const int player : {1, 2})
        EXPECT_NEAR(levels[player - 1] / kFull, FaderVolume(player, position) / 100.0, 0.15);
    const QString moved = u"Soundkarte nicht mehr da, Wiedergabe auf: "_s + PulseServer::DeviceName(kOther);
    EXPECT_EQ(desk.Told().filter(moved).size(), 1) << desk.Told().join(u'\n').toStdString();
    EXPECT_TRUE(desk.Text("lblAusgabe").contains(PulseServer::DeviceName(kOther)));
    EXPECT_EQ(desk.Text("lblHinweis"), moved);

    ASSERT_TRUE(server_->AddSink(kMain));
    const QString returned = u"Soundkarte wieder da: "_s + PulseServer::DeviceName(kMain);
    EXPECT_TRUE(WaitUntil([&] { return !desk.Told().filter(returned).isEmpty(); }));
    EXPECT_EQ(desk.Told().filter(u"Soundkarte"_s).size(), 2) << desk.Told().join(u'\n').toStdString();
    EXPECT_TRUE(WaitUntil([&] { return fader() == FaderEndOf(2); }));
    EXPECT_TRUE(IsHeard(kMain, tones[1]));

    const double second = desk.Players().PositionSeconds(2);
    server_->Kill();
    EXPECT_TRUE(WaitUntil([&] { return desk.Players().PositionSeconds(2) > second + 1; })) << "without a card";
    ASSERT_TRUE(server_->Start());
    EXPECT_TRUE(IsHeard(kMain, tones[1])) << "the sound server was killed and started again";
}

} // namespace
} // namespace kalvo::test
