#include "OfflineDesk.h"

using namespace kalvo::audio;
using namespace kalvo::test;

namespace {

/** A tone whose file answers only when the test lets it. */
struct OpeningTest : ::testing::Test {
    OpeningTest() {
        delivery->opening = ErrorCode::Timeout;
        library.Init(Output::Main, kOffline, 44100, 1024);
    }

    std::shared_ptr<Delivery> delivery = std::make_shared<Delivery>();
    AudioLibraryImpl library{
        [this](const std::string&, ErrorCode&) { return std::make_unique<ToneSource>(Constant(0.5F), delivery); }};
};

TEST_F(OpeningTest, AStreamIsUsedFromTheMomentItsFileIsOpen) {
    const Handle stream = library.StreamOpenFile(Output::Main, "slow");
    ASSERT_NE(stream, 0U);
    EXPECT_EQ(library.StreamAwaitOpen(stream, 0), OpenState::Opening);
    EXPECT_EQ(library.ErrorGetCode(), ErrorCode::Timeout);
    EXPECT_FALSE(library.StreamPlay(stream, true));
    EXPECT_EQ(library.ChannelIsActive(stream), Activity::Stopped);
    library.DispatchEvents();

    delivery->opening = ErrorCode::None;
    EXPECT_EQ(library.StreamAwaitOpen(stream, 0), OpenState::Ready);
    EXPECT_TRUE(library.StreamPlay(stream, true));
    EXPECT_EQ(library.StreamAwaitOpen(stream, 0), OpenState::Ready);
    float sound[2 * 512]{};
    library.Render(Output::Main, sound, 512);
    EXPECT_FLOAT_EQ(sound[2 * 511], 0.5F);
}

TEST_F(OpeningTest, AFileThatFailsInvalidatesItsHandleAndWaitingInVainIsATimeout) {
    EXPECT_EQ(library.StreamCreateFile(Output::Main, "slow"), 0U);
    EXPECT_EQ(library.ErrorGetCode(), ErrorCode::Timeout);
    const Handle stream = library.StreamOpenFile(Output::Main, "bad");
    delivery->opening = ErrorCode::Format;
    EXPECT_EQ(library.StreamAwaitOpen(stream, 0), OpenState::Failed);
    EXPECT_EQ(library.ErrorGetCode(), ErrorCode::Format);
    EXPECT_FALSE(library.StreamFree(stream));
    EXPECT_EQ(library.StreamAwaitOpen(stream, 0), OpenState::Failed);
    EXPECT_EQ(library.ErrorGetCode(), ErrorCode::InvalidHandle);
}

TEST_F(OpeningTest, WhatIsStillOpeningCanBeFreedAndCounts) {
    const Handle first = library.StreamOpenFile(Output::Main, "slow");
    EXPECT_TRUE(library.StreamFree(first));
    EXPECT_FALSE(library.StreamFree(first));
    for (std::size_t i = 0; i < Bus::kMostVoices; ++i)
        ASSERT_NE(library.StreamOpenFile(Output::Main, "slow"), 0U);
    EXPECT_EQ(library.StreamOpenFile(Output::Main, "slow"), 0U);
    EXPECT_TRUE(library.Free(Output::Main));
    EXPECT_TRUE(library.Init(Output::Main, kOffline, 44100, 1024));
    EXPECT_NE(library.StreamOpenFile(Output::Main, "slow"), 0U);
}

} // namespace
