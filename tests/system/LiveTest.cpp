#include "playback/FaderLaw.h"
#include "support/PulseServer.h"
#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "support/ToneMeter.h"
#include "support/WaitUntil.h"
#include "system/LiveDesk.h"

#include <QElapsedTimer>
#include <QFile>
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace kalvo::test {
namespace {

/** Level of a tone at full volume after the two channels are averaged: half of the second channel is missing. */
constexpr double kFull = 0.2 * 0.75;
constexpr double kInaudible = -60; ///< dBFS
const QString kMain = QStringLiteral("haupt");
const QString kOther = QStringLiteral("kopfhoerer");

class LiveTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!PulseServer::IsInstalled())
            GTEST_SKIP() << "pulseaudio is not installed";
        server_ = std::make_unique<PulseServer>(QStringList{kMain, kOther});
    }

    /** MP3 at 44.1 kHz, OGG at 48 kHz, so finely coded that the coding is not heard. */
    QString Tone(const char* name, double frequency, double seconds) {
        SoundSpec sound;
        sound.seconds = seconds;
        sound.frequency = frequency;
        sound.amplitude = 0.2;
        sound.fadeIn = 0.05; // an abrupt start would look like a click
        const QString file = QLatin1String(name);
        const bool isMp3 = file.endsWith(QStringLiteral(".mp3"));
        sound.rate = isMp3 ? 44100 : 48000;
        sound.options = isMp3 ? QStringList{QStringLiteral("-b"), QStringLiteral("320")}
                              : QStringList{QStringLiteral("-q"), QStringLiteral("9")};
        return MakeSound(folder_.Path(), file, sound);
    }

    QString DataFolderPath() const { return folder_.Path(QStringLiteral("Kalvo")); }

    static double Recorded(const PulseRecording& recording) {
        return static_cast<double>(recording.Mono().size()) / PulseRecording::kSampleRate;
    }

    static ToneMeter Measure(const PulseRecording& recording) {
        return {recording.Mono(), PulseRecording::kSampleRate};
    }

    TestFolder folder_;
    std::unique_ptr<PulseServer> server_;
};

/** Where the fader stood when, in seconds of a clock of its own. */
class FaderLog {
public:
    explicit FaderLog(Mixer& mixer) {
        clock_.start();
        QObject::connect(&mixer, &Mixer::FaderMoved, &context_, [this](int position) {
            steps_.push_back({static_cast<double>(clock_.nsecsElapsed()) / 1e9, position});
        });
    }

    struct Step {
        double second;
        int position;
    };
    /** The steps of the last fade from Player 2 to Player 1. */
    std::vector<Step> LastFadeToPlayer1() const {
        const auto full = std::find_if(steps_.rbegin(), steps_.rend(),
                                       [](const Step& step) { return step.position == FaderEndOf(2); });
        return {full.base(), steps_.end()};
    }

private:
    QObject context_;
    QElapsedTimer clock_;
    std::vector<Step> steps_;
};

TEST_F(LiveTest, HandOversFollowRuleAndVolumeLawWithoutGapOrClick) {
    const std::vector<double> tones{440, 700, 1000};
    const double length = 14;
    const double handOverAt = 4.5; // the rounded position and the standard switch-over time of 9 s reach the length
    LiveDesk desk(DataFolderPath());
    ASSERT_TRUE(desk.IsOpen());
    desk.Fill(1, {Tone("erster.mp3", tones[0], length), Tone("dritter.mp3", tones[2], length)});
    desk.Fill(2, {Tone("zweiter.ogg", tones[1], length)});
    desk.Press("cboTempo", Qt::Key_Down); // "schnell": 15 ms a step
    const FaderLog log(desk.Players());
    PulseRecording recording(kMain);
    desk.Click("cmdPlay1");
    ASSERT_TRUE(WaitUntil([&] { return desk.Players().Fader() == FaderEndOf(1); }, std::chrono::seconds(30)));
    RunFor(0.5);

    const ToneMeter meter = Measure(recording);
    const double first = meter.Onset(tones, 0, 0.5 * kFull);
    // A title's abrupt start holds a little of every tone.
    const double second = first < 0 ? -1 : meter.Onset(tones, 1, 0.01 * kFull, first + 1);
    const double third = second < 0 ? -1 : meter.Onset(tones, 2, 0.01 * kFull, second + 1);
    ASSERT_TRUE(first >= 0 && second > 0 && third > 0);
    EXPECT_NEAR(second - first, handOverAt, 0.3);
    EXPECT_NEAR(third - second, handOverAt, 0.3);

    // The first fade starts in the centre, both full; the second goes from end to end.
    for (const double level : {meter.Levels(tones, second + 0.05)[0], meter.Levels(tones, second + 0.05)[1]})
        EXPECT_NEAR(level / kFull, 1, 0.1);
    const std::vector<FaderLog::Step> fade = log.LastFadeToPlayer1();
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
    EXPECT_EQ(desk.Text("lblAussetzer"), QStringLiteral("Aussetzer 0"));
}

TEST_F(LiveTest, NoControlMakesAClick) {
    const double frequency = 440;
    const double other = 700;
    LiveDesk desk(DataFolderPath());
    ASSERT_TRUE(desk.IsOpen());
    desk.Fill(1, {Tone("eins.mp3", frequency, 20)});
    desk.Fill(2, {Tone("zwei.ogg", other, 20)});
    desk.Press("cboTempo", Qt::Key_Down, 2); // "sehr schnell": 5 ms a step
    struct Act {
        const char* name;
        std::function<void()> run;
        double frequency; ///< heard afterwards; 0: silence
    };
    const double faster = frequency * 1.05;
    const std::vector<Act> acts{
        {"play", [&] { desk.Click("cmdPlay1"); }, frequency},
        {"pause", [&] { desk.Click("cmdPause1"); }, 0},
        {"resume", [&] { desk.Click("cmdPlay1"); }, frequency},
        {"seek", [&] { desk.ClickAt("SPos1", 0.25); }, frequency},
        {"pitch", [&] { desk.Press("HScroll2", Qt::Key_PageUp, 5); }, faster},
        {"mute", [&] { desk.Click("Command2"); }, 0},
        {"unmute", [&] { desk.Click("Command2"); }, faster},
        {"pitch back", [&] { desk.Press("HScroll2", Qt::Key_PageDown, 5); }, frequency},
        {"fade by button",
         [&] {
             desk.Click("Command6");
             RunFor(1);
         },
         other},
        {"fade by hand", [&] { desk.Press("SFader", Qt::Key_Left, 30); }, other},
        {"stop", [&] { desk.Click("cmdStop2"); }, 0},
    };
    PulseRecording recording(kMain);
    RunFor(0.3);
    struct Span {
        double begin;
        double end;
    };
    std::vector<Span> steady;
    for (const Act& act : acts) {
        act.run();
        const double begin = Recorded(recording);
        RunFor(0.7);
        steady.push_back({begin + 0.3, Recorded(recording)});
    }
    const ToneMeter meter = Measure(recording);
    for (std::size_t i = 0; i < acts.size(); ++i) {
        SCOPED_TRACE(acts[i].name);
        const auto [begin, end] = steady[i];
        if (acts[i].frequency == 0) {
            EXPECT_LT(meter.ResidualPeak({frequency}, begin, end), kInaudible);
            EXPECT_GE(meter.LongestSilence(0.001, begin, end), end - begin - 0.001);
        } else {
            EXPECT_LT(meter.ResidualPeak({acts[i].frequency}, begin, end), kInaudible);
            EXPECT_GT(meter.Levels({acts[i].frequency}, (begin + end) / 2)[0], 0.45 * kFull);
        }
    }
    EXPECT_LT(meter.TreblePeak(0, meter.Seconds()), kInaudible);
}

TEST_F(LiveTest, VanishedCutAndBrokenFilesDoNotStopTheMusic) {
    const QString vanishing = Tone("weg.mp3", 440, 4);
    const QString cut = Tone("halb.mp3", 700, 6);
    ASSERT_TRUE(QFile::resize(cut, QFileInfo(cut).size() / 2));
    QByteArray noise("ID3");
    for (unsigned value = 1; noise.size() < 200'000; value = value * 1664525U + 1013904223U)
        noise.append(static_cast<char>(value >> 24U));
    const QString random = folder_.Write(QStringLiteral("Zufall.mp3"), noise);
    LiveDesk desk(DataFolderPath());
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
    EXPECT_EQ(desk.Told().filter(QStringLiteral("Die Datei kann nicht abgespielt werden: ") + random).size(), 2)
        << desk.Told().join(u'\n').toStdString();
}

TEST_F(LiveTest, TheMusicGoesOnWhenTheSoundCardIsPulledOut) {
    LiveDesk desk(DataFolderPath());
    ASSERT_TRUE(desk.IsOpen());
    desk.Fill(1, {Tone("ton.mp3", 440, 30)});
    EXPECT_TRUE(desk.Text("lblAusgabe").contains(PulseServer::DeviceName(kMain)))
        << desk.Text("lblAusgabe").toStdString();
    PulseRecording recording(kOther);
    desk.Click("cmdPlay1");
    RunFor(2);
    const double pulled = Recorded(recording);
    ASSERT_TRUE(server_->RemoveSink(kMain));
    RunFor(4);

    const ToneMeter meter = Measure(recording);
    const double back = meter.Onset({440}, 0, 0.9 * kFull);
    EXPECT_GT(back, pulled - 0.1);
    EXPECT_LT(back, pulled + 2);
    EXPECT_LT(meter.ResidualPeak({440}, back + 0.3, meter.Seconds()), kInaudible);
    EXPECT_EQ(
        desk.Told()
            .filter(QStringLiteral("Soundkarte nicht mehr da, Wiedergabe auf: ") + PulseServer::DeviceName(kOther))
            .size(),
        1)
        << desk.Told().join(u'\n').toStdString();
    EXPECT_TRUE(desk.Text("lblAusgabe").contains(PulseServer::DeviceName(kOther)));
}

TEST_F(LiveTest, WithoutASoundServerTheOutputFailsAndOpensOnceThereIsOne) {
    AudioModule module(qEnvironmentVariable("KALVO_BIN"));
    AudioLayer layer(module.Create());
    server_->Kill();
    EXPECT_FALSE(layer.InitAudio(audio::kDefaultDevice, 1024));
    EXPECT_EQ(layer.Audio().ErrorGetCode(), audio::ErrorCode::Device);
    EXPECT_TRUE(layer.InitAudio(audio::kNoSound, 1024));
    ASSERT_TRUE(server_->Start());
    EXPECT_TRUE(layer.InitAudio(audio::kDefaultDevice, 1024));
}

} // namespace
} // namespace kalvo::test
