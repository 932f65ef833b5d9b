#include "OfflineDesk.h"

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

struct EventsTest : DeskTest {
    Handle Sync(Handle stream, Heard& heard, SyncType type = SyncType::End, std::uint32_t flags = 0) {
        return library.ChannelSetSync(stream, std::uint32_t(type) | flags, 0, &Heard::Procedure, &heard);
    }
};

} // namespace

TEST_F(EventsTest, TheEndComesWithTheLastFrameAndOnceForEachEnd) {
    const Handle stream = desk.Play(Constant(0.5F, 1000));
    Heard always, once, removed;
    Sync(stream, always);
    Sync(stream, once, SyncType::End, kOneTime);
    ASSERT_TRUE(library.ChannelRemoveSync(stream, Sync(stream, removed)));
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

TEST_F(EventsTest, AProcedureMayFreeItsStream) {
    Heard heard;
    heard.toFreeIn = &library;
    const Handle stream = desk.Play(Constant(0.5F, 100));
    Sync(stream, heard);
    Sync(stream, heard);
    desk.Render(1000);
    library.DispatchEvents();
    library.DispatchEvents();
    EXPECT_EQ(heard.channels.size(), 1U) << "the second sync went with the stream";
    EXPECT_FALSE(library.StreamPlay(stream, true));
}

TEST_F(EventsTest, ASlideIsEvenAndTellsItsEndOnce) {
    const Handle stream = desk.Play(Constant(0.5F));
    Heard heard;
    Sync(stream, heard, SyncType::SlideEnd);
    desk.Render(1000);
    ASSERT_TRUE(library.ChannelSlideAttributes(stream, kKeepFrequency, 0, kKeepPan, 100)); // 4,410 frames
    const auto out = desk.Render(4409, 100);
    for (std::size_t i = kDelay; i < out.size(); ++i)
        ASSERT_NEAR(out[i], 0.5 * (1 - double(i - kDelay + 1) / 4410), 1e-6);
    library.DispatchEvents();
    EXPECT_TRUE(heard.channels.empty());
    desk.Render(1);
    library.DispatchEvents();
    library.DispatchEvents();
    EXPECT_EQ(heard.channels.size(), 1U);
    EXPECT_EQ(desk.Render(200).back(), 0);
}

TEST_F(EventsTest, SettingAnAttributeEndsItsSlideWithoutAnEvent) {
    const Handle stream = desk.Play(Constant(0.5F));
    Heard heard;
    Sync(stream, heard, SyncType::SlideEnd);
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
