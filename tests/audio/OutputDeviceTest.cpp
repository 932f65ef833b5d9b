#include "OfflineDesk.h"
#include "PulseServer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

using namespace kalvo::audio;
using namespace kalvo::test;

#if defined(__SANITIZE_THREAD__)
/** The sound server's library synchronises in ways that cannot be seen without its source being instrumented. */
extern "C" __attribute__((visibility("default"))) const char* __tsan_default_suppressions() {
    return "race:libpulse\nrace:libSDL2\nmutex:libpulse\n";
}
#endif

namespace {

/** The library on a real output, playing a tone without end. */
class LiveDesk {
public:
    LiveDesk()
        : library([](const std::string&, ErrorCode&) {
              return std::make_unique<ToneSource>(Sine(440, 0.5, 1 << 30), std::make_shared<Delivery>());
          }) {}

    Handle Play(Output output = Output::Main) {
        const Handle stream = library.StreamCreateFile(output, "tone");
        EXPECT_TRUE(library.ChannelSetSync(stream, std::uint32_t(SyncType::DeviceLost), 0, &LiveDesk::Lost, this));
        EXPECT_TRUE(library.StreamPlay(stream, true));
        return stream;
    }

    /** Dispatches as the display timer does until the condition holds; false after 20 seconds. */
    template<class Condition>
    bool Until(Condition condition) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end)
                return false;
            library.DispatchEvents();
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return true;
    }
    bool Advances(Handle stream) {
        const auto before = library.ChannelGetPosition(stream);
        return Until([&] { return library.ChannelGetPosition(stream) > before + 4 * 4410U; });
    }
    /** "Karte_A (2)" is card A as well: it came back before its going was noticed. */
    bool On(const std::string& card, Output output = Output::Main) { return Device(output).rfind(card, 0) == 0; }
    std::string Device(Output output = Output::Main) {
        OutputInfo info;
        library.GetInfo(output, info);
        return info.deviceName;
    }
    int Number(const std::string& name) {
        library.GetDeviceDescription(0);
        for (int number = 2;; ++number) {
            const std::string description = library.GetDeviceDescription(number);
            if (description == name || description.empty())
                return number;
        }
    }

    AudioLibraryImpl library;
    int losses = 0;

private:
    static void Lost(Handle, Handle, std::uint32_t, void* user) { ++static_cast<LiveDesk*>(user)->losses; }
};

} // namespace

TEST(OutputDeviceTest, TheSilentDeviceKeepsTheTime) {
    LiveDesk desk;
    EXPECT_EQ(desk.library.GetDeviceDescription(0), "Kein Ton");
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_TRUE(desk.library.Init(Output::Main, kNoSound, 44100, 512));
    const Handle stream = desk.Play();
    ASSERT_TRUE(desk.Until([&] { return desk.library.ChannelGetPosition(stream) >= 4 * 22050U; }));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(480)) << "not faster than real time";
    OutputInfo info;
    ASSERT_TRUE(desk.library.GetInfo(Output::Main, info));
    EXPECT_EQ(info.device, kNoSound);
    EXPECT_GT(info.callbacks, 40U);
    EXPECT_GT(desk.library.GetOutputLevels(Output::Main).left, 0.4F);
}

TEST(OutputDeviceTest, WhatDoesNotExistIsRefused) {
    qputenv("SDL_AUDIODRIVER", "pulseaudio");
    qputenv("PULSE_SERVER", "unix:/nowhere/native");
    LiveDesk desk;
    EXPECT_FALSE(desk.library.Init(Output::Main, kDefaultDevice, 44100, 1024)) << "no sound server";
    EXPECT_EQ(desk.library.ErrorGetCode(), ErrorCode::Device);
    EXPECT_FALSE(desk.library.Init(Output::Main, 99, 44100, 1024));
    EXPECT_EQ(desk.library.ErrorGetCode(), ErrorCode::Device);
    EXPECT_FALSE(desk.library.Init(Output::Main, kNoSound, 44100, 1000));
    EXPECT_EQ(desk.library.ErrorGetCode(), ErrorCode::Argument);
    EXPECT_EQ(desk.library.StreamCreateFile(Output::Main, "tone"), 0U);
    EXPECT_EQ(desk.library.ErrorGetCode(), ErrorCode::NotInitialised);
    qunsetenv("SDL_AUDIODRIVER");
    qunsetenv("PULSE_SERVER");
}

TEST(OutputDeviceTest, ARealDeviceRendersAndClosesWhilePlaying) {
    qputenv("SDL_AUDIODRIVER", "dummy");
    {
        LiveDesk desk;
        ASSERT_TRUE(desk.library.Init(Output::Main, kDefaultDevice, 44100, 512));
        EXPECT_EQ(desk.Device(), "Standardausgabe");
        EXPECT_TRUE(desk.Advances(desk.Play()));
        ASSERT_TRUE(desk.library.Init(Output::Main, kNoSound, 44100, 512)) << "closes the other first";
        EXPECT_TRUE(desk.Advances(desk.Play()));
    }
    qunsetenv("SDL_AUDIODRIVER");
}

TEST(OutputDeviceTest, AVanishedCardIsReplacedAndTakenBack) {
    if (!PulseServer::Installed())
        GTEST_SKIP() << "pulseaudio is not installed";
    PulseServer server;
    LiveDesk desk;
    ASSERT_TRUE(desk.library.Init(Output::Main, desk.Number("Karte_A"), 44100, 1024));
    ASSERT_TRUE(desk.library.Init(Output::Headphones, desk.Number("Karte_B"), 44100, 1024));
    const Handle stream = desk.Play();
    EXPECT_TRUE(server.SoundArrivesAt("a"));
    EXPECT_EQ(desk.Device(), "Karte_A");

    server.UnloadSink("a");
    ASSERT_TRUE(desk.Until([&] { return desk.losses == 1 && desk.Device() == "Karte_B"; }));
    EXPECT_TRUE(server.SoundArrivesAt("b"));
    EXPECT_TRUE(desk.Advances(stream));
    EXPECT_EQ(desk.Device(Output::Headphones), "Karte_B");

    server.LoadSink("a");
    ASSERT_TRUE(desk.Until([&] { return desk.On("Karte_A"); }));
    EXPECT_TRUE(server.SoundArrivesAt("a"));
    EXPECT_EQ(desk.losses, 1);
}

TEST(OutputDeviceTest, TheHeadphonesNeverMoveToTheMainCard) {
    if (!PulseServer::Installed())
        GTEST_SKIP() << "pulseaudio is not installed";
    PulseServer server;
    LiveDesk desk;
    ASSERT_TRUE(desk.library.Init(Output::Main, desk.Number("Karte_A"), 44100, 1024));
    ASSERT_TRUE(desk.library.Init(Output::Headphones, desk.Number("Karte_B"), 44100, 1024));
    const Handle stream = desk.Play(Output::Headphones);
    ASSERT_TRUE(desk.Advances(stream));
    server.UnloadSink("b");
    ASSERT_TRUE(desk.Until([&] { return desk.Device(Output::Headphones) == "Kein Ton"; }));
    EXPECT_TRUE(desk.Advances(stream)) << "the time runs on";
    EXPECT_EQ(desk.Device(), "Karte_A");
    server.LoadSink("b");
    ASSERT_TRUE(desk.Until([&] { return desk.On("Karte_B", Output::Headphones); }));
    EXPECT_EQ(desk.Device(), "Karte_A");
}

TEST(OutputDeviceTest, ARestartedSoundServerIsFoundAgain) {
    if (!PulseServer::Installed())
        GTEST_SKIP() << "pulseaudio is not installed";
    PulseServer server;
    LiveDesk desk;
    ASSERT_TRUE(desk.library.Init(Output::Main, kDefaultDevice, 44100, 1024));
    const Handle stream = desk.Play();
    ASSERT_TRUE(desk.Advances(stream));
    const std::string device = desk.Device();
    server.Stop();
    ASSERT_TRUE(desk.Until([&] { return desk.Device() == "Kein Ton"; }));
    EXPECT_TRUE(desk.Advances(stream)) << "the time runs on";
    server.Start();
    ASSERT_TRUE(desk.Until([&] { return desk.Device() == device; }));
    EXPECT_TRUE(desk.Advances(stream));
}
