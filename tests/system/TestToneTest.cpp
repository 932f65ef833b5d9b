#include "app/TestTone.h"

#include "playback/AudioLayer.h"
#include "playback/AudioModule.h"
#include "system/SoundServerTest.h"

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

using audio::Output;
using Result = TestTone::Result;

constexpr double kTone = 660;  // Hz
constexpr double kMusic = 440; // Hz
constexpr double kFullTone = 0.25;

ToneMeter MeasureChannel(const PulseRecording& recording, std::size_t which) {
    const std::vector<float> stereo = recording.Stereo();
    std::vector<float> one;
    for (std::size_t at = which; at < stereo.size(); at += 2)
        one.push_back(stereo[at]);
    return {one, PulseRecording::kSampleRate};
}

class TestToneTest : public SoundServerTest {
protected:
    int Device(const QString& sink) {
        const int device = static_cast<int>(layer.DeviceNames().indexOf(PulseServer::DeviceName(sink)));
        EXPECT_GE(device, 0) << sink.toStdString();
        return device;
    }
    bool WaitForEnd() {
        return WaitUntil([this] { return !tone.IsPlaying(); });
    }

    AudioModule module{qEnvironmentVariable("KALVO_BIN")};
    AudioLayer layer{module.Create()};
    TestTone tone{layer};
};

TEST_F(TestToneTest, SoundsOnTheChosenCardWithoutDisturbingTheMusic) {
    ASSERT_TRUE(layer.InitAudio(Device(kMain), 1024));
    ASSERT_TRUE(layer.LoadStream(1, Tone("m.ogg", kMusic, 30)) != 0);
    ASSERT_TRUE(layer.Audio().StreamPlay(layer.Record(1).stream, true));
    PulseRecording main(kMain);
    PulseRecording headphones(kOther);
    ASSERT_TRUE(main.WaitFor(0.5) && headphones.WaitFor(0.5));
    ASSERT_EQ(tone.Play(Device(kOther)), Result::Playing);
    EXPECT_EQ(tone.Play(Device(kOther)), Result::Busy);
    ASSERT_TRUE(WaitForEnd());
    audio::OutputInfo info;
    EXPECT_FALSE(layer.Audio().GetInfo(Output::Headphones, info)) << "closed again";
    EXPECT_EQ(tone.Play(Device(kMain)), Result::MusicRuns);
    EXPECT_EQ(tone.Play(audio::kDefaultDevice), Result::MusicRuns) << "the same sink under another number";

    const ToneMeter left = MeasureChannel(headphones, 0);
    const ToneMeter right = MeasureChannel(headphones, 1);
    const double begin = left.Onset({kTone}, 0, kFullTone * 0.9);
    ASSERT_GT(begin, 0);
    EXPECT_NEAR(left.Levels({kTone}, begin + 0.2)[0], kFullTone, 0.01);
    EXPECT_LT(right.Levels({kTone}, begin + 0.2)[0], 0.001);
    EXPECT_NEAR(right.Onset({kTone}, 0, kFullTone * 0.9) - begin, 0.45, 0.03);
    EXPECT_LT(left.TreblePeak(begin - 0.1, begin + 1.2), -60) << "no click at its start or end";
    EXPECT_LT(right.TreblePeak(begin - 0.1, begin + 1.2), -60);
    const ToneMeter music = Measure(main);
    EXPECT_LT(music.ResidualPeak({kMusic}, 0.4, music.Seconds() - 0.2), -40) << "and the music goes on";
    layer.Audio().ChannelStop(layer.Record(1).stream);
    EXPECT_EQ(tone.Play(Device(kMain)), Result::Playing) << "nothing runs there any more";
    EXPECT_TRUE(WaitForEnd());
}

TEST_F(TestToneTest, LeavesOthersAlone) {
    ASSERT_TRUE(layer.InitAudio(audio::kNoSound, 1024));
    EXPECT_EQ(tone.Play(audio::kNoSound), Result::NoDevice);
    EXPECT_EQ(tone.Play(4711), Result::NoDevice);
    EXPECT_EQ(TestTone::Text(Result::NoDevice, 4711), u"Soundkarte existiert an Device: 4711 nicht!"_s);
    const int headphones = Device(kOther);
    ASSERT_EQ(tone.Play(headphones), Result::Playing);
    ASSERT_TRUE(layer.Audio().Init(Output::Headphones, headphones, 44100, 1024)) << "the headphone window opens";
    ASSERT_TRUE(WaitForEnd());
    audio::OutputInfo info;
    EXPECT_TRUE(layer.Audio().GetInfo(Output::Headphones, info)) << "and keeps its output";
    EXPECT_EQ(tone.Play(headphones), Result::Busy);
}

} // namespace
} // namespace kalvo::test
