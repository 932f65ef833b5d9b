#include "app/DeckPresenter.h"

#include "app/FakeWindow.h"

namespace kalvo {
namespace {

struct DeckPresenterTest : test::FakeWindow {
    DeckPresenterTest() {
        desk->layer.InitAudio(1, 1024);
        Append(1, {"a-200"});
        Append(2, {"b-100"});
    }
    DeckView View(int player) { return PresentDeck(desk->mixer, player, 0.5F, 0); }

    Mixer* mixer = &desk->mixer;
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

} // namespace
} // namespace kalvo
