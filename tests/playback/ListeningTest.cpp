#include "FakeDesk.h"
#include "archive/Archive.h"
#include "playback/PlayCounter.h"
#include "playback/PlayThrough.h"
#include "playback/PreListening.h"

#include <QCoreApplication>
#include <QFile>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

/** Both ways of listening on the desk. */
struct ListeningTest : test::FakeDeskTest {
    ListeningTest() {
        QObject::connect(&playThrough, &PlayThrough::Selected, [this](int, int row) { rows.append(row); });
        QObject::connect(&pre, &PreListening::FileMissing, [this] { ++missing; });
    }

    /** Steps of 30 ms: one of Timer7, about three to a look of the mixer's. */
    void Run(double seconds) {
        for (const int end = steps_ + static_cast<int>(seconds / 0.03 + 0.5); steps_ < end; ++steps_) {
            fake.Advance(0.03);
            mixer.StepFade();
            pre.Tick();
            if (steps_ % 2 == 0)
                mixer.Dispatch();
            QCoreApplication::sendPostedEvents();
            if (steps_ % 3 == 0)
                mixer.CheckHandOver();
        }
    }
    void Ask(const char* name) {
        const QString title = QString::fromLatin1(name);
        pre.Ask({title, {}, {}, title.startsWith(u'm') ? folder.Path(title) : folder.Write(title, "x")});
    }
    QString OnPlayer1() { return Plays(1) ? mixer.Title(1).title : QString(); }

    PreListening pre{mixer};
    PlayThrough playThrough{mixer, list1, list2};
    QList<int> rows;
    int missing = 0;
    int steps_ = 0;
};

TEST_F(ListeningTest, FadesTheMusicOutAndBringsItBack) {
    Begin({u"a-60"_s, u"b-60"_s});
    Run(3);
    Ask("x-5");
    EXPECT_EQ(PreListenModeText(pre.Mode()), u"player1"_s);
    Run(1.5);
    EXPECT_NEAR(Volume(1), 50, 1);
    EXPECT_EQ(mixer.Title(1).title, u"a-60"_s);
    Run(1.5);
    EXPECT_EQ(OnPlayer1(), u"x-5"_s);
    EXPECT_EQ(Volume(1), 100);
    EXPECT_EQ(mixer.Fader(), -100);
    EXPECT_EQ(pre.Source(), u"Probehoeren"_s);
    EXPECT_EQ(layer.Record(1).state, PlayState::Listened);
    Run(6);
    EXPECT_EQ(pre.Source(), u"Player"_s);
    EXPECT_EQ(started, QStringList({u"1:a-60"_s, u"1:b-60"_s}));
    EXPECT_EQ(OnPlayer1(), u"b-60"_s);
}

TEST_F(ListeningTest, TheOtherPlayerGoesOnUnheardAndIsFadedTo) {
    Fill(list2, {u"a-60"_s, u"b-60"_s});
    mixer.Play(2, -1);
    mixer.SetFader(100);
    Run(1);
    Ask("x-30");
    Run(3.1);
    EXPECT_EQ(OnPlayer1(), u"x-30"_s);
    EXPECT_TRUE(Plays(2));
    EXPECT_EQ(Volume(2), 0);
    Run(27);
    ASSERT_TRUE(Plays(1)) << "no hand-over near its end";
    Run(10);
    EXPECT_FALSE(Plays(1));
    EXPECT_EQ(mixer.Title(2).title, u"a-60"_s);
    EXPECT_EQ(mixer.Fader(), 100);
    EXPECT_EQ(Volume(2), 100);
}

TEST_F(ListeningTest, WithoutMusicItStartsAtOnceAndEndsInSilence) {
    Fill(list1, {u"a-60"_s});
    Ask("x-2");
    Run(0.06);
    EXPECT_EQ(OnPlayer1(), u"x-2"_s);
    Run(20);
    EXPECT_EQ(mixer.OnAirPlayer(), 0);
    EXPECT_TRUE(started.isEmpty());
    EXPECT_FALSE(mixer.IsListening());
    mixer.Play(1, -1);
    Run(1);
    EXPECT_EQ(OnPlayer1(), u"a-60"_s);
}

TEST_F(ListeningTest, AFileThatIsNotThereTouchesNothing) {
    Begin({u"a-60"_s, u"b-60"_s});
    Ask("missing-5");
    Run(4);
    EXPECT_EQ(missing, 1);
    EXPECT_EQ(Volume(1), 100);
    Ask("x-5");
    QFile::remove(folder.Path(u"x-5"_s));
    Run(4);
    EXPECT_EQ(missing, 2);
    EXPECT_EQ(OnPlayer1(), u"b-60"_s) << "gone during the fade: the music goes on";
    EXPECT_EQ(Volume(1), 100);
    Ask("broken-5");
    Run(4);
    EXPECT_FALSE(pre.IsPlaying());
}

TEST_F(ListeningTest, ThePlayersAreStrongerThanListening) {
    Begin({u"a-90"_s, u"b-90"_s}, {u"c-90"_s});
    Ask("x-30");
    Run(2);
    mixer.Play(1, -1); // called off
    Run(2);
    EXPECT_EQ(OnPlayer1(), u"a-90"_s);
    EXPECT_NEAR(mixer.PositionSeconds(1), 4, 0.1) << "not started anew";
    EXPECT_EQ(Volume(1), 100);
    Ask("x-30");
    Run(4);
    mixer.Next(1);
    Run(1);
    EXPECT_EQ(OnPlayer1(), u"b-90"_s) << "an entry takes the place of what was listened to";
    EXPECT_FALSE(pre.IsPlaying() || mixer.IsListening());
    Ask("x-30");
    Run(4);
    mixer.FadeTo(2, -1);
    Run(10);
    EXPECT_FALSE(Plays(1) || pre.IsPlaying() || mixer.IsListening());
    EXPECT_TRUE(Plays(2));
    EXPECT_EQ(Volume(2), 100);
    Run(90);
    EXPECT_EQ(started.last(), u"2:c-90"_s);
}

TEST_F(ListeningTest, StopEndsIt) {
    Begin({u"a-60"_s, u"b-60"_s});
    Ask("x-30");
    Run(4);
    Ask("y-30"); // a second title: the first is faded out in its turn
    Run(1.5);
    EXPECT_NEAR(Volume(1), 50, 1);
    Run(2);
    EXPECT_EQ(OnPlayer1(), u"y-30"_s);
    mixer.Stop(1);
    Run(1);
    EXPECT_EQ(OnPlayer1(), u"b-60"_s) << "the music that ran before both";
    mixer.Stop(1);
    Run(3);
    EXPECT_EQ(mixer.OnAirPlayer(), 0);
}

TEST_F(ListeningTest, NothingOfItIsCounted) {
    Fill(list1, {u"a-60"_s, u"b-60"_s});
    SystemClock clock;
    Archive archive(clock);
    ChartsFile charts(folder.Path(u"Charts"_s), clock);
    EveningLog evening(folder.Path(u"Verlauf"_s));
    PlayCounter counter(mixer, list1, list2, {charts, evening, archive}, clock);
    QObject::connect(&pre, &PreListening::Beginning, &counter, &PlayCounter::StopTimer3);
    const auto seconds = [&](int count) {
        for (; count > 0; --count) {
            Run(0.99);
            counter.Tick();
        }
    };
    Ask("x-30");
    seconds(20);
    mixer.PlayRow(1, 0);
    seconds(5);
    Ask("y-30");
    seconds(20);
    playThrough.Begin(1, 20);
    pre.Abandon();
    seconds(15);
    EXPECT_TRUE(charts.Entries().isEmpty());
}

TEST_F(ListeningTest, PlaysThroughAListAndLeavesItAsItWas) {
    Fill(list2, {u"a-60"_s, u"missing-5"_s, u"broken-5"_s, u"b-1"_s, u"c-60"_s});
    playThrough.Begin(2, 6);
    EXPECT_EQ(mixer.Fader(), 100);
    EXPECT_EQ(mixer.StatusText(2), u"scan"_s);
    Run(1);
    list2.Move({0}, 2);
    playThrough.Tick();
    EXPECT_EQ(mixer.Title(2).title, u"b-1"_s) << "after the entry, wherever it is now";
    Run(1.2);
    EXPECT_EQ(mixer.Title(2).title, u"c-60"_s) << "a short one gives way at once";
    playThrough.Tick();
    EXPECT_EQ(playThrough.Player(), 0);
    Run(1);
    EXPECT_EQ(mixer.OnAirPlayer(), 0) << "nothing ran before";
    EXPECT_EQ(list2.CurrentRow(), -1);
    EXPECT_EQ(rows, QList<int>({0, 3, 4}));
}

TEST_F(ListeningTest, APlayThroughEndsHoweverItCan) {
    Begin({u"a-60"_s, u"b-60"_s}, {u"c-60"_s});
    playThrough.Begin(2, 6);
    Run(1);
    EXPECT_TRUE(Plays(2));
    playThrough.Tick(); // the only entry
    Run(8);
    EXPECT_FALSE(Plays(2));
    EXPECT_EQ(mixer.Fader(), -100) << "back to the music";
    playThrough.Begin(1, 6);
    mixer.Stop(1);
    Run(1);
    EXPECT_EQ(playThrough.Player(), 0);
    EXPECT_EQ(OnPlayer1(), u"b-60"_s);
    playThrough.Begin(1, 6);
    mixer.PlayRow(1, 0);
    Run(1);
    EXPECT_EQ(playThrough.Player(), 0);
    EXPECT_EQ(OnPlayer1(), u"a-60"_s);
    EXPECT_FALSE(mixer.IsListening());
}

TEST(PreListenMode, OfTwoThatAreHeardTheFaderTellsWhoIsFadedOut) {
    const PreListenMode both = PreListenModeOf(true, true);
    EXPECT_EQ(PlayerToFadeOut(both, -1), 1);
    EXPECT_EQ(PlayerToFadeOut(both, 0), 2);
}

TEST(PreListenMode, AfterwardsTheMusicThatRanGoesOn) {
    MixState state;
    state.heldByUser = false;
    EXPECT_EQ(AfterListening(state, 1, true), (StartAction{StartKind::AllEnded, 0}));
    state.decks[1].hasNext = true;
    EXPECT_EQ(AfterListening(state, 1, true), (StartAction{StartKind::Jump, 2}));
    state.decks[0].hasNext = true;
    EXPECT_EQ(AfterListening(state, 1, true), (StartAction{StartKind::Jump, 1}));
    EXPECT_EQ(AfterListening(state, 2, true), (StartAction{StartKind::Jump, 1})) << "list 1 first";
    EXPECT_EQ(AfterListening(state, 1, false), StartAction()) << "nothing ran";
    state.continuous = false;
    EXPECT_EQ(AfterListening(state, 1, true), StartAction()) << "nothing starts by itself";
    state.decks[1].playing = true;
    EXPECT_EQ(AfterListening(state, 1, true), (StartAction{StartKind::Fade, 2})) << "it runs already";
}

} // namespace
} // namespace kalvo
