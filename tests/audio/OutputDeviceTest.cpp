#include "OfflineDesk.h"
#include "support/PulseServer.h"
#include "support/WaitUntil.h"

#include <optional>

using namespace kalvo::audio;
using namespace kalvo::test;

namespace {

/** The library on a real output, playing a tone without end. */
class LiveDesk {
public:
    LiveDesk()
        : audio([](const std::string&, ErrorCode&) {
              return std::make_unique<ToneSource>(Sine(440, 0.5, 1 << 30), std::make_shared<Delivery>());
          }) {}

    Handle Play(Output output = Output::Main) {
        const Handle stream = audio.StreamCreateFile(output, "tone");
        EXPECT_TRUE(audio.ChannelSetSync(stream, std::uint32_t(SyncType::DeviceLost), 0, &LiveDesk::Lost, this));
        EXPECT_TRUE(audio.StreamPlay(stream, true));
        return stream;
    }
    /** Dispatches as the display timer does until the condition holds; false after 20 seconds. */
    template<class Condition>
    bool Until(Condition condition) {
        return WaitUntil([&] {
            audio.DispatchEvents();
            return condition();
        });
    }
    bool Advances(Handle stream) {
        const auto before = audio.ChannelGetPosition(stream);
        return Until([&] { return audio.ChannelGetPosition(stream) > before + 4 * 4410U; });
    }
    /** "Karte (2)" is the card as well: it came back before its going was noticed. */
    bool On(const std::string& card, Output output = Output::Main) { return Device(output).rfind(card, 0) == 0; }
    std::string Device(Output output = Output::Main) {
        OutputInfo info;
        audio.GetInfo(output, info);
        return info.deviceName;
    }
    ErrorCode Init(Output output, int device, int buffer = 1024) {
        return audio.Init(output, device, 44100, buffer) ? ErrorCode::None : audio.ErrorGetCode();
    }
    /** Opens the card of this name. */
    bool Init(Output output, const std::string& card) {
        audio.GetDeviceDescription(0);
        int number = 2;
        while (audio.GetDeviceDescription(number) != card && !audio.GetDeviceDescription(number).empty())
            ++number;
        return Init(output, number) == ErrorCode::None;
    }

    AudioLibraryImpl audio;
    int losses = 0;

private:
    static void Lost(Handle, Handle, std::uint32_t, void* user) { ++static_cast<LiveDesk*>(user)->losses; }
};

/** Without the machine's sound system, whose daemon may take seconds to start. */
struct OutputDeviceTest : ::testing::Test {
    void SetUp() override { qputenv("SDL_AUDIODRIVER", "dummy"); }
    void TearDown() override { qunsetenv("SDL_AUDIODRIVER"); }
};

/** With two cards on a sound server. */
struct CardsTest : ::testing::Test {
    void SetUp() override {
        if (!PulseServer::IsInstalled())
            GTEST_SKIP() << "pulseaudio is not installed";
        server.emplace(QStringList{a, b});
        desk.emplace();
    }
    static bool SoundArrivesAt(const QString& sink) {
        const PulseRecording recording(sink);
        return WaitUntil([&] {
            const std::vector<float> heard = recording.Mono();
            return std::any_of(heard.begin(), heard.end(), [](float sample) { return sample != 0; });
        });
    }

    const QString a = QStringLiteral("a"), b = QStringLiteral("b");
    const std::string cardA = PulseServer::DeviceName(a).toStdString(),
                      cardB = PulseServer::DeviceName(b).toStdString();
    std::optional<PulseServer> server;
    std::optional<LiveDesk> desk;
};

} // namespace

TEST_F(OutputDeviceTest, TheSilentDeviceKeepsTheTime) {
    LiveDesk desk;
    EXPECT_EQ(desk.audio.GetDeviceDescription(0), "Kein Ton");
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_EQ(desk.Init(Output::Main, kNoSound, 512), ErrorCode::None);
    const Handle stream = desk.Play();
    ASSERT_TRUE(desk.Until([&] { return desk.audio.ChannelGetPosition(stream) >= 4 * 22050U; }));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(480)) << "not faster than real time";
    OutputInfo info;
    ASSERT_TRUE(desk.audio.GetInfo(Output::Main, info));
    EXPECT_EQ(info.device, kNoSound);
    EXPECT_GT(info.callbacks, 40U);
    EXPECT_GT(desk.audio.GetOutputLevels(Output::Main).left, 0.4F);
}

TEST_F(OutputDeviceTest, WhatDoesNotExistIsRefused) {
    qputenv("SDL_AUDIODRIVER", "pulseaudio");
    qputenv("PULSE_SERVER", "unix:/nowhere/native");
    LiveDesk desk;
    EXPECT_EQ(desk.Init(Output::Main, kDefaultDevice), ErrorCode::Device) << "no sound server";
    EXPECT_EQ(desk.Init(Output::Main, 99), ErrorCode::Device);
    EXPECT_EQ(desk.Init(Output::Main, kNoSound, 1000), ErrorCode::Argument);
    EXPECT_EQ(desk.audio.StreamCreateFile(Output::Main, "tone"), 0U);
    EXPECT_EQ(desk.audio.ErrorGetCode(), ErrorCode::NotInitialised);
    qunsetenv("PULSE_SERVER");
}

TEST_F(OutputDeviceTest, ARealDeviceRendersAndClosesWhilePlaying) {
    LiveDesk desk;
    ASSERT_EQ(desk.Init(Output::Main, kDefaultDevice, 512), ErrorCode::None);
    EXPECT_EQ(desk.Device(), "Standardausgabe");
    EXPECT_TRUE(desk.Advances(desk.Play()));
    ASSERT_EQ(desk.Init(Output::Main, kNoSound, 512), ErrorCode::None) << "closes the other first";
    EXPECT_TRUE(desk.Advances(desk.Play()));
}

TEST_F(CardsTest, TheMusicFollowsTheCardsThatAreThereAndTheHeadphonesOnlyTheirOwn) {
    ASSERT_TRUE(desk->Init(Output::Main, cardA) && desk->Init(Output::Headphones, cardB));
    const Handle music = desk->Play();
    const Handle listened = desk->Play(Output::Headphones);
    EXPECT_TRUE(SoundArrivesAt(a));
    EXPECT_EQ(desk->Device(), cardA);
    server->RemoveSink(a);
    ASSERT_TRUE(desk->Until([&] { return desk->losses == 1 && desk->Device() == cardB; }));
    EXPECT_TRUE(SoundArrivesAt(b));
    EXPECT_TRUE(desk->Advances(music));
    EXPECT_EQ(desk->Device(Output::Headphones), cardB);

    server->RemoveSink(b);
    const auto isSilent = [this] {
        return desk->Device() == "Kein Ton" && desk->Device(Output::Headphones) == "Kein Ton";
    };
    ASSERT_TRUE(desk->Until(isSilent));
    EXPECT_TRUE(desk->Advances(music) && desk->Advances(listened)) << "the time runs on";
    EXPECT_EQ(LiveDesk().Init(Output::Main, kDefaultDevice), ErrorCode::Device);

    server->AddSink(a);
    ASSERT_TRUE(desk->Until([&] { return desk->On(cardA); }));
    EXPECT_TRUE(SoundArrivesAt(a));
    EXPECT_EQ(desk->Device(Output::Headphones), "Kein Ton") << "never the music's card";
    server->AddSink(b);
    ASSERT_TRUE(desk->Until([&] { return desk->On(cardB, Output::Headphones); }));
    EXPECT_TRUE(desk->On(cardA));

    server->Kill();
    ASSERT_TRUE(desk->Until(isSilent));
    EXPECT_TRUE(desk->Advances(music));
    server->Start();
    ASSERT_TRUE(desk->Until([&] { return desk->On(cardA); }));
    EXPECT_TRUE(desk->Advances(music));
}
