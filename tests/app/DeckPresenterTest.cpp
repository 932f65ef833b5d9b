#include "app/DeckPresenter.h"

#include "playback/FakeAudio.h"
#include "playback/Mixer.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

struct DeckPresenterTest : ::testing::Test {
    DeckPresenterTest() {
        auto library = std::make_unique<test::FakeAudio>();
        fake = library.get();
        layer = std::make_unique<AudioLayer>(std::move(library));
        layer->InitAudio(1, 1024);
        mixer = std::make_unique<Mixer>(*layer, list1, list2);
        Add(list1, QStringLiteral("a-200"));
        Add(list2, QStringLiteral("b-100"));
    }

    void Add(Playlist& list, const QString& name) {
        PlaylistEntry entry;
        entry.title = name;
        entry.path = folder.Write(name, "x");
        list.Append({entry});
    }

    DeckView View(int player) const { return PresentDeck(*mixer, player, 0.5F, 0); }

    test::TestFolder folder;
    SystemRandom random;
    Playlist list1{1, random};
    Playlist list2{2, random};
    test::FakeAudio* fake = nullptr;
    std::unique_ptr<AudioLayer> layer;
    std::unique_ptr<Mixer> mixer;
};

TEST_F(DeckPresenterTest, TellsWhoIsOnAirReadyAndPaused) {
    EXPECT_EQ(View(1).signal, DeckSignal::None);
    mixer->CheckHandOver();
    EXPECT_EQ(View(2).signal, DeckSignal::Ready);
    EXPECT_EQ(View(2).remaining, QStringLiteral("01:40"));
    EXPECT_EQ(View(2).time, QStringLiteral("00:00/00:00"));
    mixer->Play(1, -1);
    mixer->Play(2, -1);
    EXPECT_EQ(View(1).signal, DeckSignal::OnAir);
    EXPECT_EQ(View(2).signal, DeckSignal::Running);
    mixer->ToggleMute(1);
    EXPECT_EQ(View(1).signal, DeckSignal::Muted);
    mixer->Pause(2);
    EXPECT_EQ(View(2).signal, DeckSignal::Paused);
    EXPECT_EQ(View(1).bitrate, QStringLiteral(" 192 kbit/s")) << "no extension, no kind";
}

TEST_F(DeckPresenterTest, CountsDownAndWarnsBeforeTheHandOver) {
    mixer->Play(1, -1);
    mixer->CheckHandOver();
    fake->Advance(100.4);
    EXPECT_EQ(View(1).time, QStringLiteral("01:40/03:20"));
    EXPECT_EQ(View(1).remaining, QChar(0x2212) + QStringLiteral("01:40"));
    EXPECT_FALSE(View(1).warning);
    EXPECT_EQ(PresentHandOver(*mixer), (HandOverView{HandOverView::Kind::Rest, 0, 9}));
    fake->Advance(80);
    EXPECT_EQ(PresentHandOver(*mixer), (HandOverView{HandOverView::Kind::Coming, 2, 11}));
    EXPECT_TRUE(View(1).warning);
    MixerOptions options;
    options.mode = FadeMode::NoFading;
    mixer->SetOptions(options);
    EXPECT_EQ(PresentHandOver(*mixer).kind, HandOverView::Kind::Off);
    EXPECT_EQ(View(1).switchOverSeconds, 0);
}

TEST(LevelShare, IsEvenInDecibels) {
    EXPECT_EQ(LevelShare(0), 0);
    EXPECT_EQ(LevelShare(1), 1);
    EXPECT_NEAR(LevelShare(0.0630957F), 0.5F, 1e-3F); // -24 dB
    EXPECT_EQ(LevelShare(0.001F), 0);
}

} // namespace
} // namespace kalvo
