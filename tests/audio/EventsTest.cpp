#include "OfflineDesk.h"

#include "support/TestFolder.h"

#include <gtest/gtest.h>
#include <sndfile.h>

#include <cmath>

using namespace kalvo::audio;
using namespace kalvo::test;

namespace {

struct Heard {
    std::vector<Handle> channels;
    AudioLibrary* toFreeIn = nullptr;

    static void Procedure(Handle, Handle channel, std::uint32_t, void* user) {
        auto* heard = static_cast<Heard*>(user);
        heard->channels.push_back(channel);
        if (heard->toFreeIn != nullptr)
            heard->toFreeIn->StreamFree(channel);
    }
};

Handle OnEnd(AudioLibrary& library, Handle stream, Heard& heard, std::uint32_t flags = 0) {
    return library.ChannelSetSync(stream, std::uint32_t(SyncType::End) | flags, 0, &Heard::Procedure, &heard);
}

} // namespace

TEST(EventsTest, TheEndComesWithTheLastFrameAndOnceForEachEnd) {
    OfflineDesk desk;
    AudioLibrary& library = desk.Audio();
    const Handle stream = desk.Play(Constant(0.5F, 1000));
    Heard always;
    Heard once;
    Heard removed;
    OnEnd(library, stream, always);
    OnEnd(library, stream, once, kOneTime);
    ASSERT_TRUE(library.ChannelRemoveSync(stream, OnEnd(library, stream, removed)));
    desk.Render(999, 999);
    library.DispatchEvents();
    EXPECT_EQ(library.ChannelIsActive(stream), Activity::Playing);
    EXPECT_TRUE(always.channels.empty());
    desk.Render(1);
    EXPECT_EQ(library.ChannelIsActive(stream), Activity::Stopped);
    EXPECT_EQ(library.ChannelGetPosition(stream), 4000U);
    EXPECT_TRUE(always.channels.empty()) << "procedures run in DispatchEvents() only";
    library.DispatchEvents();
    EXPECT_EQ(always.channels, std::vector{stream});
    ASSERT_TRUE(library.StreamPlay(stream, false)); // at the end: from the start again
    desk.Render(2000);
    library.DispatchEvents();
    library.DispatchEvents();
    EXPECT_EQ(always.channels.size(), 2U);
    EXPECT_EQ(once.channels.size(), 1U);
    EXPECT_TRUE(removed.channels.empty());
}

TEST(EventsTest, ABrokenFileEndsLikeAnother) {
    OfflineDesk desk;
    auto delivery = std::make_shared<Delivery>();
    delivery->brokenAt = 3000;
    const Handle stream = desk.Open(Constant(0.5F), delivery);
    Heard heard;
    OnEnd(desk.Audio(), stream, heard, kOneTime);
    ASSERT_TRUE(desk.Audio().StreamPlay(stream, true));
    const auto out = desk.Render(5000);
    desk.Audio().DispatchEvents();
    EXPECT_EQ(heard.channels.size(), 1U);
    EXPECT_EQ(out[kDelay + 2999], 0.5F);
    EXPECT_EQ(out[kDelay + 3000], 0);
}

TEST(EventsTest, AProcedureMayFreeItsStream) {
    OfflineDesk desk;
    Heard heard;
    heard.toFreeIn = &desk.Audio();
    const Handle stream = desk.Play(Constant(0.5F, 100));
    OnEnd(desk.Audio(), stream, heard);
    OnEnd(desk.Audio(), stream, heard);
    desk.Render(1000);
    desk.Audio().DispatchEvents();
    desk.Audio().DispatchEvents();
    EXPECT_EQ(heard.channels.size(), 1U) << "the second sync went with the stream";
    EXPECT_FALSE(desk.Audio().StreamPlay(stream, true));
}

TEST(EventsTest, ASlideIsEvenAndTellsItsEndOnce) {
    OfflineDesk desk;
    AudioLibrary& library = desk.Audio();
    const Handle stream = desk.Play(Constant(0.5F));
    Heard heard;
    library.ChannelSetSync(stream, std::uint32_t(SyncType::SlideEnd), 0, &Heard::Procedure, &heard);
    desk.Render(1000);
    ASSERT_TRUE(library.ChannelSlideAttributes(stream, kKeepFrequency, 0, kKeepPan, 100)); // 4,410 frames
    const auto out = desk.Render(4409, 100);
    for (std::size_t i = kDelay; i < out.size(); ++i)
        ASSERT_NEAR(out[i], 0.5 * (1 - double(i - kDelay + 1) / 4410), 1e-6);
    Attributes attributes;
    ASSERT_TRUE(library.ChannelGetAttributes(stream, attributes));
    library.DispatchEvents();
    EXPECT_TRUE(heard.channels.empty());
    desk.Render(1);
    library.DispatchEvents();
    library.DispatchEvents();
    EXPECT_EQ(heard.channels.size(), 1U);
    EXPECT_EQ(desk.Render(200).back(), 0);
}

TEST(EventsTest, SettingAnAttributeEndsItsSlideWithoutAnEvent) {
    OfflineDesk desk;
    AudioLibrary& library = desk.Audio();
    const Handle stream = desk.Play(Constant(0.5F));
    Heard heard;
    library.ChannelSetSync(stream, std::uint32_t(SyncType::SlideEnd), 0, &Heard::Procedure, &heard);
    ASSERT_TRUE(library.ChannelSlideAttributes(stream, kKeepFrequency, 0, kKeepPan, 100));
    desk.Render(2205);
    Attributes attributes;
    ASSERT_TRUE(library.ChannelGetAttributes(stream, attributes));
    EXPECT_EQ(attributes.volume, 50) << "in the middle of the slide";
    ASSERT_TRUE(library.ChannelSetAttributes(stream, kKeepFrequency, 80, kKeepPan));
    desk.Render(10000);
    library.DispatchEvents();
    EXPECT_TRUE(heard.channels.empty());
    ASSERT_TRUE(library.ChannelGetAttributes(stream, attributes));
    EXPECT_EQ(attributes.volume, 80);
}

TEST(EventsTest, AFileOfItsOwnRatePlaysBitByBitToItsEnd) {
    const TestFolder folder;
    const std::string path = folder.Path(QStringLiteral("ton.wav")).toStdString();
    SF_INFO format{};
    format.samplerate = 44100;
    format.channels = 2;
    format.format = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    std::vector<float> expected(2 * 40000);
    for (std::size_t i = 0; i < expected.size(); ++i)
        expected[i] = float(0.5 * std::sin(0.1 * double(i)));
    SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &format);
    ASSERT_NE(file, nullptr);
    ASSERT_EQ(sf_writef_float(file, expected.data(), 40000), 40000);
    sf_close(file);

    AudioLibraryImpl library;
    ASSERT_TRUE(library.Init(Output::Main, kOffline, 44100, 1024));
    const Handle stream = library.StreamCreateFile(Output::Main, path);
    ASSERT_NE(stream, 0U);
    EXPECT_EQ(library.StreamGetLength(stream), 40000U * 4);
    ASSERT_TRUE(library.StreamPlay(stream, true));
    std::vector<float> out(expected.size() + 2 * kDelay);
    ASSERT_TRUE(library.Render(Output::Main, out.data(), out.size() / 2));
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), out.begin() + std::ptrdiff_t(2 * kDelay)));
    EXPECT_EQ(library.ChannelIsActive(stream), Activity::Stopped);
    EXPECT_EQ(library.StreamCreateFile(Output::Main, folder.Path(QStringLiteral("fehlt.mp3")).toStdString()), 0U);
    EXPECT_EQ(library.ErrorGetCode(), ErrorCode::File);
}
