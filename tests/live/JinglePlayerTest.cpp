#include "live/JinglePlayer.h"

#include "live/JingleHistory.h"
#include "live/WallClock.h"
#include "playback/FakeDesk.h"

#include <gtest/gtest.h>

namespace kalvo::test {

using audio::Activity;

/** The desk with Player 1 on air, and jingles whose lengths are told by their names. */
struct JinglePlayerTest : ::testing::Test, FakeDesk {
    JinglePlayerTest() {
        QObject::connect(&jingles, &JinglePlayer::Started, [this](const auto& one) { Tell(u"started "_s + one.path); });
        QObject::connect(&jingles, &JinglePlayer::Ended, [this] { Tell(u"ended"_s); });
        QObject::connect(&jingles, &JinglePlayer::Failed, [this](const QString& path) { Tell(u"failed "_s + path); });
        Fill(list1, {u"a-60"_s, u"c-60"_s});
        Fill(list2, {u"b-60"_s});
        mixer.SetFader(-50);
        mixer.Play(1, -1);
    }
    void Tell(const QString& text) { told.append(text); }
    void Run(double seconds) {
        for (int tick = 0; tick < int(seconds * 20 + 0.5); ++tick) {
            fake.Advance(0.05);
            mixer.Dispatch();
            mixer.CheckHandOver();
            mixer.StepFade();
            jingles.Tick();
            clock.Set(clock.Now().addMSecs(50));
        }
    }
    int Volume(int player) { return fake.At(layer.Record(player).stream).attributes.volume; }

    WallClock clock{WallClock::At(2026, 11, 21, 20, 0, 0).addMSecs(400)};
    JinglePlayer jingles{mixer};
    QStringList told;
};

TEST_F(JinglePlayerTest, SilencesThePlayersWhichRunOnAndSetsThemTo100) {
    mixer.Play(2, -1);
    ASSERT_EQ(Volume(2), 50);
    jingles.Add({u"/j-4"_s});
    EXPECT_EQ(Volume(1), 0);
    EXPECT_EQ(Volume(2), 0);
    Run(2);
    mixer.SetFader(-40);
    mixer.ToggleMute(1);
    mixer.ToggleMute(1);
    EXPECT_EQ(Volume(1) + Volume(2), 0) << "nothing makes them heard";
    EXPECT_NEAR(jingles.Position(), 2, 0.06);
    EXPECT_DOUBLE_EQ(jingles.Length(), 4);
    Run(3);
    EXPECT_EQ(told, (QStringList{u"started /j-4"_s, u"ended"_s}));
    EXPECT_EQ(Volume(1), 100);
    EXPECT_EQ(Volume(2), 100) << "even if it was lower before";
    EXPECT_NEAR(layer.PositionSeconds(1), 5, 0.06) << "ran on";
    mixer.SetFader(-39);
    EXPECT_EQ(Volume(2), 61) << "until the fader moves";
    mixer.Stop(2);
    jingles.Add({u"/j-1"_s});
    Run(1.5);
    mixer.Play(2, -1);
    EXPECT_EQ(Volume(2), 61) << "a player that starts follows the fader";
    jingles.Add({u"/j-1"_s});
    Run(1.5);
    EXPECT_EQ(Volume(2), 100);
    mixer.ToggleMute(2);
    mixer.ToggleMute(2);
    EXPECT_EQ(Volume(2), 61) << "as one whose mute ends";
}

TEST_F(JinglePlayerTest, PlaysOneAfterTheOtherWithoutMusicBetweenThem) {
    for (const QString& path : {u"/j1-2"_s, u"/broken"_s, u"/j2-2"_s})
        jingles.Add({path});
    for (int tick = 0; tick < 70; ++tick) {
        Run(0.05);
        EXPECT_EQ(Volume(1), 0) << tick;
    }
    EXPECT_EQ(told, (QStringList{u"started /j1-2"_s, u"failed /broken"_s, u"started /j2-2"_s}));
    jingles.Stop();
    EXPECT_EQ(told.last(), u"ended"_s);
    EXPECT_EQ(Volume(1), 100);
    EXPECT_FALSE(jingles.IsBusy());
}

TEST_F(JinglePlayerTest, AFileThatCannotBeOpenedSilencesNobody) {
    jingles.Add({u"/broken"_s});
    EXPECT_EQ(told, QStringList{u"failed /broken"_s});
    jingles.Add({u"/hanging-5"_s});
    Run(2.9);
    EXPECT_EQ(Volume(1), 100);
    Run(0.3);
    EXPECT_EQ(told.last(), u"failed /hanging-5"_s) << "after three seconds";
    jingles.Add({u"/slow-5"_s});
    Run(1.9);
    EXPECT_EQ(Volume(1), 100) << "only when it sounds";
    Run(0.2);
    EXPECT_EQ(Volume(1), 0);
}

TEST_F(JinglePlayerTest, WaitsForTheEndOfTheTitleAndGivesTheNextOneBack) {
    Run(20);
    jingles.Add({u"/late-3"_s, JingleDue::Daily, true});
    jingles.Add({u"/now-2"_s});
    Run(0.1);
    EXPECT_EQ(told, QStringList{u"started /now-2"_s}) << "is not held up by the one that waits";
    double before = 0;
    for (int tick = 0; tick < 1200 && told.size() < 3; ++tick) {
        before = layer.PositionSeconds(2);
        Run(0.05);
    }
    EXPECT_EQ(told, (QStringList{u"started /now-2"_s, u"ended"_s, u"started /late-3"_s}));
    EXPECT_NE(layer.Activity(1), Activity::Playing) << "the title has played to its end";
    EXPECT_EQ(mixer.Title(2).title, u"b-60"_s);
    Run(3.1);
    EXPECT_NEAR(layer.PositionSeconds(2), before, 0.2) << "goes on where it was cut off";
    mixer.Stop(2);
    jingles.Add({u"/free-3"_s, JingleDue::Daily, true});
    EXPECT_EQ(told.last(), u"started /free-3"_s) << "nothing on air: nothing to wait for";
}

TEST_F(JinglePlayerTest, TheMusicStaysAliveUnderAJingle) {
    jingles.Add({u"/j-65"_s});
    Run(64);
    EXPECT_EQ(mixer.OnAirPlayer(), 2) << "the hand-over takes place in silence";
    EXPECT_EQ(Volume(2), 0);
    mixer.Pause(2);
    Run(3);
    EXPECT_EQ(mixer.StatusText(2), u"pause"_s);
    EXPECT_NE(layer.Activity(1), Activity::Playing) << "paused by hand: nothing starts by itself";
}

TEST_F(JinglePlayerTest, EachJingleIsWrittenWithTheSecondsItWasHeard) {
    EveningLog evening(folder.Path(u"Verlauf"_s));
    {
        const JingleHistory history(jingles, evening, clock);
        jingles.Add({u"/kennung-2"_s});
        jingles.Add({u"/werbung-9"_s});
        Run(3);
    } // the desk is closed
    const QList<QByteArray> rows = EveningLog::Csv(evening.Read({2026, 11, 21})).split('\n');
    ASSERT_GT(rows.size(), 2);
    EXPECT_EQ(rows[1], "21.11.2026 20:00:00;Jingle;;;kennung-2;00:02;00:02;/kennung-2\r");
    EXPECT_EQ(rows[2], "21.11.2026 20:00:02;Jingle;;;werbung-9;00:09;00:01;/werbung-9\r") << "cut off";
}

} // namespace kalvo::test
