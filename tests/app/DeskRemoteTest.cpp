#include "app/DeskRemote.h"

#include "app/Desk.h"
#include "playback/FakeAudio.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

/** A desk with two titles in each list that neither sounds nor shows anything. */
struct DeskRemoteTest : ::testing::Test {
    DeskRemoteTest() {
        for (const QString& title : {u"a1"_s, u"b1"_s, u"a2"_s, u"b2"_s})
            desk.List(title.endsWith(u'1') ? 1 : 2)
                .Append({{title, {}, {}, {}, {}, folder.Write(title + u"-60"_s, "x")}});
    }
    /** What the players do, the one on air, and its title: "stop/play 2 a2". */
    QString State() {
        const DeskFacts facts = remote.Facts();
        return desk.mixer.StatusText(1) + u'/' + desk.mixer.StatusText(2) + u' ' +
               QString::number(desk.mixer.OnAirPlayer()) + u' ' + facts.title.title;
    }

    test::TestFolder folder;
    test::FakeAudio* fake = new test::FakeAudio;
    Desk desk{DataFolder(folder.Path(u"Kalvo"_s)), std::unique_ptr<audio::AudioLibrary>(fake)};
    DeskRemote remote{desk};
};

TEST_F(DeskRemoteTest, PlayStartsThePlayerThatWouldBeHeard) {
    desk.mixer.SetFader(100);
    remote.Play();
    EXPECT_EQ(State(), u"stop/play 2 a2"_s);
    remote.Play();
    EXPECT_EQ(State(), u"stop/play 2 a2"_s) << "what plays is left alone";
    remote.Stop();
    desk.list2.Clear();
    remote.Play();
    EXPECT_EQ(State(), u"play/stop 1 a1"_s);
    EXPECT_LT(desk.mixer.State().fadeStep, 0) << "on its way to be heard";
    desk.list1.Clear();
    remote.Stop();
    EXPECT_FALSE(remote.Facts().canPlay);
}

TEST_F(DeskRemoteTest, APauseDropsTheTitleThatAFadeLeaves) {
    remote.Play();
    desk.mixer.FadeTo(2, -1);
    for (int step = 0; step < 30; ++step) // half of it
        desk.mixer.StepFade();
    remote.Pause();
    EXPECT_EQ(State(), u"stop/pause 2 a2"_s);
    remote.PlayPause();
    EXPECT_EQ(State(), u"stop/play 2 a2"_s);
}

TEST_F(DeskRemoteTest, TwoPlayersMixedByHandPauseAndGoOnTogether) {
    desk.mixer.Play(1, -1);
    desk.mixer.Play(2, -1);
    remote.PlayPause();
    EXPECT_EQ(State(), u"pause/pause 1 a1"_s);
    remote.PlayPause();
    EXPECT_EQ(State(), u"play/play 1 a1"_s);
}

TEST_F(DeskRemoteTest, NextHandsOverOrStaysOnThePlayer) {
    remote.Next();
    EXPECT_EQ(State(), u"stop/stop 0 "_s) << "nothing plays";
    remote.Play();
    remote.Next();
    EXPECT_EQ(State(), u"play/play 1 a1"_s);
    EXPECT_GT(desk.mixer.State().fadeStep, 0);
    remote.Next();
    EXPECT_EQ(desk.mixer.Title(2).title, u"a2"_s) << "a fade that runs is not skipped";
    remote.Stop();
    MixerOptions options = desk.mixer.Options();
    options.automatic = false;
    desk.mixer.SetOptions(options);
    desk.mixer.Play(1, -1);
    remote.Next();
    EXPECT_EQ(State(), u"play/stop 1 b1"_s);
    EXPECT_FALSE(remote.Facts().hasNext);
    remote.Next();
    EXPECT_EQ(State(), u"play/stop 1 b1"_s) << "the music does not stop for it";
}

TEST_F(DeskRemoteTest, APlaceIsTakenOnlyOnTheTitleItIsMeantFor) {
    remote.Play();
    const int track = remote.Facts().track;
    remote.SeekTo(track, 30);
    EXPECT_DOUBLE_EQ(remote.Position(), 30);
    for (const auto& [number, second] : {std::pair(track + 1, 10.0), {track, -1.0}, {track, 61.0}, {0, 10.0}})
        remote.SeekTo(number, second);
    EXPECT_DOUBLE_EQ(remote.Position(), 30);
    remote.SeekBy(-99);
    EXPECT_DOUBLE_EQ(remote.Position(), 0);
    desk.mixer.Play(1, -1);
    EXPECT_NE(remote.Facts().track, track) << "the same title once more";
}

} // namespace
} // namespace kalvo
