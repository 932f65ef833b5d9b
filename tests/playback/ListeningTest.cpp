#include "FakeDesk.h"
#include "archive/Archive.h"
#include "playback/PlayCounter.h"
#include "playback/PlayThrough.h"
#include "playback/PreListening.h"

#include <QCoreApplication>
#include <QFile>
#include <gtest/gtest.h>

namespace kalvo {

namespace {

using audio::Activity;

/** Both ways of listening on the desk, with every timer driven by hand. */
struct ListeningTest : ::testing::Test, test::FakeDesk {
    ListeningTest() {
        QObject::connect(&mixer, &Mixer::TitleStarted, [this](int player, int row) {
            started.append(QStringLiteral("%1:%2").arg(player).arg((player == 1 ? list1 : list2).At(row).title));
        });
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
    bool Plays(int player) { return layer.Activity(player) == Activity::Playing; }
    double Volume(int player) { return fake.At(layer.Record(player).stream).volume; }
    QString OnPlayer1() { return Plays(1) ? mixer.Title(1).title : QString(); }

    PreListening pre{mixer};
    PlayThrough playThrough{mixer, list1, list2};
    QStringList started;
    QList<int> rows;
    int missing = 0;
    int steps_ = 0;
};

} // namespace

TEST_F(ListeningTest, FadesTheMusicOutAndBringsItBack) {
    Fill(list1, {QStringLiteral("a-60"), QStringLiteral("b-60")});
    mixer.Play(1, -1);
    Run(3);
    Ask("x-5");
    EXPECT_EQ(PreListenModeText(pre.Mode()), QStringLiteral("player1"));
    Run(1.5);
    EXPECT_NEAR(Volume(1), 50, 1);
    EXPECT_EQ(mixer.Title(1).title, QStringLiteral("a-60"));
    Run(1.5);
    EXPECT_EQ(OnPlayer1(), QStringLiteral("x-5"));
    EXPECT_EQ(Volume(1), 100);
    EXPECT_EQ(mixer.Fader(), -100);
    EXPECT_EQ(pre.Source(), QStringLiteral("Probehoeren"));
    EXPECT_EQ(layer.Record(1).state, PlayState::Listened);
    Run(6);
    EXPECT_EQ(pre.Source(), QStringLiteral("Player"));
    EXPECT_EQ(started, QStringList({QStringLiteral("1:a-60"), QStringLiteral("1:b-60")}));
    EXPECT_EQ(OnPlayer1(), QStringLiteral("b-60"));
}

TEST_F(ListeningTest, TheOtherPlayerGoesOnUnheardAndIsFadedTo) {
    Fill(list2, {QStringLiteral("a-60"), QStringLiteral("b-60")});
    mixer.Play(2, -1);
    mixer.SetFader(100);
    Run(1);
    Ask("x-30");
    Run(3.1);
    EXPECT_EQ(OnPlayer1(), QStringLiteral("x-30"));
    EXPECT_TRUE(Plays(2));
    EXPECT_EQ(Volume(2), 0);
    Run(27);
    ASSERT_TRUE(Plays(1)) << "no hand-over near its end";
    Run(10);
    EXPECT_FALSE(Plays(1));
    EXPECT_EQ(mixer.Title(2).title, QStringLiteral("a-60"));
    EXPECT_EQ(mixer.Fader(), 100);
    EXPECT_EQ(Volume(2), 100);
}

TEST_F(ListeningTest, WithoutMusicItStartsAtOnceAndEndsInSilence) {
    Fill(list1, {QStringLiteral("a-60")});
    Ask("x-2");
    Run(0.06);
    EXPECT_EQ(OnPlayer1(), QStringLiteral("x-2"));
    Run(20);
    EXPECT_EQ(mixer.OnAirPlayer(), 0);
    EXPECT_TRUE(started.isEmpty());
    EXPECT_FALSE(mixer.IsListening());
    mixer.Play(1, -1);
    Run(1);
    EXPECT_EQ(OnPlayer1(), QStringLiteral("a-60"));
}

TEST_F(ListeningTest, AFileThatIsNotThereTouchesNothing) {
    Fill(list1, {QStringLiteral("a-60"), QStringLiteral("b-60")});
    mixer.Play(1, -1);
    Ask("missing-5");
    Run(4);
    EXPECT_EQ(missing, 1);
    EXPECT_EQ(Volume(1), 100);
    Ask("x-5");
    QFile::remove(folder.Path(QStringLiteral("x-5")));
    Run(4);
    EXPECT_EQ(missing, 2);
    EXPECT_EQ(OnPlayer1(), QStringLiteral("b-60")) << "gone during the fade: the music goes on";
    EXPECT_EQ(Volume(1), 100);
    Ask("broken-5");
    Run(4);
    EXPECT_FALSE(pre.IsPlaying());
}

TEST_F(ListeningTest, ThePlayersAreStrongerThanListening) {
    Fill(list1, {QStringLiteral("a-90"), QStringLiteral("b-90")});
    Fill(list2, {QStringLiteral("c-90")});
    mixer.Play(1, -1);
    Ask("x-30");
    Run(2);
    mixer.Play(1, -1); // called off
    Run(2);
    EXPECT_EQ(OnPlayer1(), QStringLiteral("a-90"));
    EXPECT_NEAR(mixer.PositionSeconds(1), 4, 0.1) << "not started anew";
    EXPECT_EQ(Volume(1), 100);
    Ask("x-30");
    Run(4);
    mixer.Next(1);
    Run(1);
    EXPECT_EQ(OnPlayer1(), QStringLiteral("b-90")) << "an entry takes the place of what was listened to";
    EXPECT_FALSE(pre.IsPlaying() || mixer.IsListening());
    Ask("x-30");
    Run(4);
    mixer.FadeTo(2, -1);
    Run(10);
    EXPECT_FALSE(Plays(1) || pre.IsPlaying() || mixer.IsListening());
    EXPECT_TRUE(Plays(2));
    EXPECT_EQ(Volume(2), 100);
    Run(90);
    EXPECT_EQ(started.last(), QStringLiteral("2:c-90"));
}

TEST_F(ListeningTest, StopEndsIt) {
    Fill(list1, {QStringLiteral("a-60"), QStringLiteral("b-60")});
    mixer.Play(1, -1);
    Ask("x-30");
    Run(4);
    Ask("y-30"); // a second title: the first is faded out in its turn
    Run(1.5);
    EXPECT_NEAR(Volume(1), 50, 1);
    Run(2);
    EXPECT_EQ(OnPlayer1(), QStringLiteral("y-30"));
    mixer.Stop(1);
    Run(1);
    EXPECT_EQ(OnPlayer1(), QStringLiteral("b-60")) << "the music that ran before both";
    mixer.Stop(1);
    Run(3);
    EXPECT_EQ(mixer.OnAirPlayer(), 0);
}

TEST_F(ListeningTest, NothingOfItIsCounted) {
    Fill(list1, {QStringLiteral("a-60"), QStringLiteral("b-60")});
    SystemClock clock;
    Archive archive(clock);
    ChartsFile charts(folder.Path(QStringLiteral("Charts")), clock);
    EveningLog evening(folder.Path(QStringLiteral("Verlauf")));
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
    Fill(list2, {QStringLiteral("a-60"), QStringLiteral("missing-5"), QStringLiteral("broken-5"), QStringLiteral("b-1"),
                 QStringLiteral("c-60")});
    playThrough.Begin(2, 6);
    EXPECT_EQ(mixer.Fader(), 100);
    EXPECT_EQ(mixer.StatusText(2), QStringLiteral("scan"));
    Run(1);
    list2.Move({0}, 2);
    playThrough.Tick();
    EXPECT_EQ(mixer.Title(2).title, QStringLiteral("b-1")) << "after the entry, wherever it is now";
    Run(1.2);
    EXPECT_EQ(mixer.Title(2).title, QStringLiteral("c-60")) << "a short one gives way at once";
    playThrough.Tick();
    EXPECT_EQ(playThrough.Player(), 0);
    Run(1);
    EXPECT_EQ(mixer.OnAirPlayer(), 0) << "nothing ran before";
    EXPECT_EQ(list2.CurrentRow(), -1);
    EXPECT_EQ(rows, QList<int>({0, 3, 4}));
}

TEST_F(ListeningTest, APlayThroughEndsHoweverItCan) {
    Fill(list1, {QStringLiteral("a-60"), QStringLiteral("b-60")});
    Fill(list2, {QStringLiteral("c-60")});
    mixer.Play(1, -1);
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
    EXPECT_EQ(OnPlayer1(), QStringLiteral("b-60"));
    playThrough.Begin(1, 6);
    mixer.PlayRow(1, 0);
    Run(1);
    EXPECT_EQ(playThrough.Player(), 0);
    EXPECT_EQ(OnPlayer1(), QStringLiteral("a-60"));
    EXPECT_FALSE(mixer.IsListening());
}

TEST(PlayThrough, AnEmptyTimeIsSixSeconds) {
    EXPECT_EQ(PlayThrough::SecondsOf({}), 6);
    EXPECT_EQ(PlayThrough::SecondsOf(QStringLiteral("0")), 6);
    EXPECT_EQ(PlayThrough::SecondsOf(QStringLiteral("7")), 7);
}

} // namespace kalvo
