#include "support/PulseServer.h"

#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "support/ToneMeter.h"

#include <QProcess>
#include <gtest/gtest.h>

namespace kalvo::test {
namespace {

class PulseServerTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!PulseServer::IsInstalled())
            GTEST_SKIP() << "pulseaudio is not installed";
    }

    TestFolder folder_;
};

TEST_F(PulseServerTest, RecordsWhatASinkPlaysAndNoOther) {
    PulseServer server;
    PulseRecording main(QStringLiteral("haupt"));
    PulseRecording headphones(QStringLiteral("kopfhoerer"));
    SoundSpec sound;
    sound.seconds = 30;
    sound.frequency = 1000;
    sound.amplitude = 0.5;
    QProcess player;
    player.start(QStringLiteral("paplay"), {MakeSound(folder_.Path(), QStringLiteral("ton.wav"), sound)});
    ASSERT_TRUE(player.waitForStarted());
    ASSERT_TRUE(main.WaitFor(3) && headphones.WaitFor(3));
    player.kill();
    player.waitForFinished();

    const ToneMeter meter(main.Mono(), PulseRecording::kSampleRate);
    const double onset = meter.Onset({1000}, 0, 0.3);
    ASSERT_GE(onset, 0);
    EXPECT_NEAR(meter.Levels({1000}, onset + 0.5)[0], 0.375, 0.01);
    EXPECT_EQ(ToneMeter(headphones.Mono(), PulseRecording::kSampleRate).Onset({1000}, 0, 0.001), -1);
}

TEST_F(PulseServerTest, CardsComeAndGo) {
    PulseServer server({QStringLiteral("eins")});
    const QStringList list{QStringLiteral("list"), QStringLiteral("short"), QStringLiteral("sinks")};
    ASSERT_TRUE(server.AddSink(QStringLiteral("zwei")));
    EXPECT_TRUE(server.Control(list).contains("zwei"));
    ASSERT_TRUE(server.RemoveSink(QStringLiteral("zwei")));
    EXPECT_FALSE(server.Control(list).contains("zwei"));
    EXPECT_FALSE(server.RemoveSink(QStringLiteral("zwei")));
}

TEST_F(PulseServerTest, DiesAndComesBackAndLeavesTheEnvironmentAsItWas) {
    const QByteArray before = qgetenv("PULSE_SERVER");
    {
        PulseServer server;
        EXPECT_NE(qgetenv("PULSE_SERVER"), before);
        server.Kill();
        EXPECT_FALSE(server.IsRunning());
        EXPECT_TRUE(server.Control({QStringLiteral("info")}).isEmpty());
        EXPECT_TRUE(server.Start());
        EXPECT_TRUE(server.Control({QStringLiteral("info")}).contains("haupt"));
    }
    EXPECT_EQ(qgetenv("PULSE_SERVER"), before);
}

} // namespace
} // namespace kalvo::test
