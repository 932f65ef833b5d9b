#include "playback/HeadphonePlayer.h"

#include "FakeCards.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;
using audio::Output;
using State = HeadphonePlayer::State;

struct HeadphonePlayerTest : ::testing::Test {
    HeadphonePlayerTest() {
        layer.InitAudio(2, 1024);
        QObject::connect(&player, &HeadphonePlayer::Told, [this](const QString& text) { told.append(text); });
    }
    void Begin(const char* name) {
        ASSERT_EQ(player.Open({3, {}}), QString());
        player.Load(folder.Write(QString::fromLatin1(name), "x"));
        player.Play();
    }
    void Run(double seconds) {
        for (double time = 0; time < seconds - 0.001; time += 0.05) {
            cards.Advance(0.05);
            player.Tick();
        }
    }

    test::TestFolder folder;
    std::unique_ptr<test::FakeCards> library = std::make_unique<test::FakeCards>();
    test::FakeCards& cards = *library;
    AudioLayer layer{std::move(library)};
    HeadphonePlayer player{layer};
    QStringList told;
};

TEST_F(HeadphonePlayerTest, RefusesACardThatIsNoneOrTheMusics) {
    for (const OutputChoice& choice : {OutputChoice{0, {}}, {2, {}}, {3, u"A"_s}, {4, {}}}) { // 4: under another number
        EXPECT_EQ(player.Open(choice), HeadphonePlayer::NoCardText());
        EXPECT_EQ(cards.opens.count(Output::Headphones), 0U);
    }
    cards.unpluggable = 3;
    EXPECT_EQ(player.Open({3, {}}), u"Soundkarte existiert an Device: 3 nicht!"_s);
    cards.unpluggable = -7;
    EXPECT_EQ(player.Open({3, u"C"_s}), u"Soundkarte existiert an Device: 3 nicht!"_s)
        << "another card has the number of the one that was chosen";
    EXPECT_FALSE(player.IsOpen());
    player.Load(folder.Write(u"a-5"_s, "x"));
    player.Play();
    EXPECT_EQ(player.Now(), State::Stop);
}

TEST_F(HeadphonePlayerTest, PlaysPausesAndStops) {
    Begin("a-20");
    Run(2);
    EXPECT_NEAR(player.Position(), 2, 0.01);
    player.Pause();
    Run(2);
    EXPECT_EQ(player.StatusText(), u"pause"_s);
    player.Play();
    Run(1);
    EXPECT_NEAR(player.Position(), 3, 0.01) << "resumed";
    player.PlayFrom(12.4);
    EXPECT_NEAR(player.Position(), 12.4, 0.001);
    player.Seek(0.9);
    EXPECT_NEAR(player.Position(), 18, 0.001);
    Run(3);
    EXPECT_EQ(player.StatusText(), u"stop"_s) << "at its end";
    player.Play();
    Run(1);
    EXPECT_NEAR(player.Position(), 1, 0.01) << "from its start";
    player.Stop();
    EXPECT_TRUE(cards.streams.empty());
}

TEST_F(HeadphonePlayerTest, StepsByTenthsOfASecond) {
    Begin("a-20");
    Run(2.25);
    player.BeginSteps();
    Run(1);
    for (int step = 0; step < 4; ++step)
        player.Step(1);
    EXPECT_NEAR(player.Position(), 2.7, 0.001) << "from what was shown, while it stood still";
    player.EndSteps();
    EXPECT_EQ(player.Now(), State::Play);
    Run(1);
    EXPECT_NEAR(player.Position(), 3.7, 0.01);
    player.Pause();
    player.BeginSteps();
    for (int step = 0; step < 50; ++step)
        player.Step(-1);
    player.EndSteps();
    EXPECT_EQ(player.Now(), State::Pause);
    EXPECT_EQ(player.Position(), 0) << "no further than the start";
    player.Seek(1);
    player.BeginSteps();
    player.Step(1);
    EXPECT_NEAR(player.Position(), 20, 0.001);
}

TEST_F(HeadphonePlayerTest, TellsWhatCannotBeHeard) {
    Begin("slow-20");
    EXPECT_EQ(player.StatusText(), u"lädt"_s);
    player.Pause();
    Run(3);
    EXPECT_EQ(player.StatusText(), u"pause"_s) << "pressed while it was opening";
    player.Load(folder.Write(u"broken-5"_s, "x"));
    player.Play();
    player.Load(folder.Path(u"broken-6"_s));
    player.Play();
    ASSERT_EQ(told.size(), 2);
    EXPECT_TRUE(told.at(0).startsWith(u"Die Datei kann nicht abgespielt werden: "_s));
    EXPECT_TRUE(told.at(1).startsWith(u"Datei nicht gefunden: "_s));
    EXPECT_EQ(player.Now(), State::Stop);
}

TEST_F(HeadphonePlayerTest, ACardThatVanishesPausesAndOneThatTheMusicTakesStops) {
    Begin("a-90");
    cards.lost = true;
    Run(2);
    EXPECT_EQ(told, QStringList(u"Soundkarte nicht mehr da, kein Ton: B"_s));
    EXPECT_EQ(player.Now(), State::Pause);
    cards.lost = false;
    Run(1);
    EXPECT_EQ(told.last(), u"Soundkarte wieder da: B"_s);
    player.Play();
    cards.opens[Output::Main] = 3; // the music has fallen back
    Run(0.1);
    EXPECT_EQ(player.Now(), State::Stop);
    player.Play();
    EXPECT_EQ(player.Now(), State::Stop) << "the guests would hear it";
}

} // namespace
} // namespace kalvo
