#include "playback/Mixer.h"

#include "FakeDesk.h"
#include "base/FaderLaw.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <random>

namespace kalvo {
namespace {

using audio::Activity;

/** The desk with its timers driven by hand. */
struct MixerTest : ::testing::Test, test::FakeDesk {
    MixerTest() {
        QObject::connect(&mixer, &Mixer::Message, [this](const QString& text) { messages.append(text); });
        QObject::connect(&mixer, &Mixer::TitleStarted, [this](int player, int row) {
            started.append(QStringLiteral("%1:%2").arg(player).arg((player == 1 ? list1 : list2).At(row).title));
        });
        QObject::connect(&mixer, &Mixer::Finished, [this] { finished = true; });
    }

    void Run(double seconds) {
        for (const int end = milliseconds + 5 * static_cast<int>(seconds * 200 + 0.5); milliseconds < end;) {
            milliseconds += 5;
            fake.Advance(0.005);
            if (milliseconds % 50 == 0)
                mixer.Dispatch();
            if (milliseconds % 100 == 0)
                mixer.CheckHandOver();
            if (milliseconds >= nextFade) {
                mixer.StepFade();
                nextFade = milliseconds + mixer.Options().fadeInterval;
            }
        }
    }

    void SetOptions(const std::function<void(MixerOptions&)>& change) {
        MixerOptions options = mixer.Options();
        change(options);
        mixer.SetOptions(options);
    }

    bool Plays(int player) { return layer.Activity(player) == Activity::Playing; }
    int Volume(int player) { return fake.At(layer.Record(player).stream).attributes.volume; }

    QStringList messages;
    QStringList started;
    bool finished = false;
    int milliseconds = 0;
    int nextFade = 0;
};

TEST_F(MixerTest, AHandOverWhoseTargetIsStoppedNeverEndsInSilence) {
    Fill(list1, {QStringLiteral("a-30"), QStringLiteral("b-30")});
    Fill(list2, {QStringLiteral("c-30")});
    mixer.SetFader(-100);
    mixer.Play(1, -1);
    Run(23);
    ASSERT_TRUE(Plays(2));
    mixer.Stop(2);
    int unheard = 0;
    for (int tenth = 0; tenth < 200; ++tenth) {
        Run(0.1);
        unheard += Plays(1) && Volume(1) > 0 ? 0 : 1;
    }
    EXPECT_LE(unheard, 1) << "a title may end between two looks";
    EXPECT_EQ(started.last(), QStringLiteral("1:b-30"));
}

TEST_F(MixerTest, PlaysBothListsToTheirEndAndSaysSo) {
    Fill(list1, {QStringLiteral("a-1"), QStringLiteral("b-30"), QStringLiteral("broken-5"), QStringLiteral("c-20")});
    Fill(list2, {QStringLiteral("missing-5"), QStringLiteral("d-9")});
    mixer.Play(1, -1);
    Run(120);
    EXPECT_EQ(started, QStringList({QStringLiteral("1:a-1"), QStringLiteral("2:d-9"), QStringLiteral("1:b-30"),
                                    QStringLiteral("1:c-20")}));
    EXPECT_TRUE(finished);
    EXPECT_EQ(mixer.OnAirPlayer(), 0);
    EXPECT_TRUE(messages.contains(QStringLiteral("Beide Wiedergabelisten sind am Ende.")));
}

TEST_F(MixerTest, WithoutFadingTheOtherPlayerStartsAtTheEnd) {
    Fill(list1, {QStringLiteral("a-20")});
    Fill(list2, {QStringLiteral("b-20")});
    SetOptions([](MixerOptions& options) { options.mode = FadeMode::NoFading; });
    mixer.Play(1, -1);
    Run(19.9);
    EXPECT_FALSE(Plays(2));
    Run(0.2);
    EXPECT_TRUE(Plays(2));
    EXPECT_EQ(mixer.Fader(), 100);
    EXPECT_EQ(Volume(2), 100);
}

TEST_F(MixerTest, NothingStartsByItselfWithoutContinuousPlayOrAfterStopAndPause) {
    Fill(list1, {QStringLiteral("a-20"), QStringLiteral("b-20")});
    Fill(list2, {QStringLiteral("c-20")});
    SetOptions([](MixerOptions& options) { options.continuous = false; });
    mixer.Play(1, -1);
    Run(30);
    EXPECT_EQ(started.size(), 1);
    SetOptions([](MixerOptions& options) { options.continuous = true; });
    Run(2);
    EXPECT_EQ(started.size(), 1) << "switching it on starts nothing";
    mixer.Play(1, 0);
    mixer.Stop(1);
    Run(5);
    EXPECT_EQ(mixer.OnAirPlayer(), 0);
    mixer.Play(1, -1);
    EXPECT_EQ(started.last(), QStringLiteral("1:a-20")) << "stop, then play: the same title from its start";
    Run(3);
    mixer.Pause(1);
    Run(60);
    EXPECT_EQ(mixer.StatusText(1), QStringLiteral("pause"));
    mixer.Play(1, -1);
    EXPECT_NEAR(layer.PositionSeconds(1), 3, 0.01) << "resumed, not restarted";
    mixer.Next(1);
    mixer.Next(1);
    Run(0.2);
    EXPECT_FALSE(Plays(1));
    EXPECT_TRUE(Plays(2)) << "next at a list's end asks for music: the other list has some";
    mixer.Stop(2);
    mixer.Next(1);
    Run(0.2);
    EXPECT_EQ(mixer.OnAirPlayer(), 0) << "on a silent desk it starts nothing elsewhere";
}

TEST_F(MixerTest, AFadeByHandStartsAStoppedPlayerAndMuteFollowsTheFader) {
    Fill(list1, {QStringLiteral("a-100")});
    Fill(list2, {QStringLiteral("b-100")});
    mixer.Play(1, -1);
    mixer.FadeTo(2, -1);
    EXPECT_TRUE(Plays(2));
    Run(0.9);
    EXPECT_EQ(mixer.Fader(), 30);
    EXPECT_NEAR(Volume(1), 70, 1);
    mixer.ToggleMute(1);
    EXPECT_EQ(Volume(1), 0);
    EXPECT_EQ(mixer.StatusText(1), QStringLiteral("mute"));
    mixer.ToggleMute(1);
    EXPECT_EQ(Volume(1), 70);
    mixer.HoldFader(true);
    Run(2);
    EXPECT_EQ(mixer.Fader(), 30) << "a fade waits while the fader is held";
    EXPECT_EQ(Volume(1), 70);
    mixer.HoldFader(false);
    Run(3);
    EXPECT_FALSE(Plays(1));
    EXPECT_TRUE(Plays(2));
}

TEST_F(MixerTest, StartsAtACuePointAndKeepsThePitch) {
    Fill(list1, {QStringLiteral("a-100"), QStringLiteral("b-100"), QStringLiteral("c-100")});
    list1.SetInfo(0, QStringLiteral("8.4"));
    list1.SetInfo(1, QStringLiteral("8.44"));
    mixer.SetPitch(1, 15);
    mixer.Play(1, 0);
    EXPECT_NEAR(layer.PositionSeconds(1), 8.4, 0.001);
    EXPECT_EQ(fake.At(layer.Record(1).stream).attributes.frequency, 1015);
    mixer.Next(1);
    EXPECT_EQ(started.last(), QStringLiteral("1:b-100"));
    EXPECT_EQ(layer.PositionSeconds(1), 0) << "a comment is no cue point";
    EXPECT_EQ(layer.Record(1).pitchFreq, 1015);
    mixer.SetPitch(1, 0);
    EXPECT_EQ(fake.At(layer.Record(1).stream).attributes.frequency, 1000);
}

TEST_F(MixerTest, AnEmptyListSaysSoAndAMissingFileIsReported) {
    QStringList missing;
    QObject::connect(&mixer, &Mixer::FileMissing, [&missing](const QString& path) { missing.append(path); });
    mixer.Play(1, -1);
    EXPECT_EQ(messages, QStringList{QStringLiteral("Wiedergabeliste 1 ist leer.")});
    Fill(list1, {QStringLiteral("missing-3")});
    mixer.Play(1, 0);
    EXPECT_EQ(missing, QStringList{folder.Path(QStringLiteral("missing-3"))});
    EXPECT_EQ(mixer.StatusText(1), QStringLiteral("stop"));
    EXPECT_THROW(layer.SetPlayerVolume(3, 50), std::out_of_range);
}

TEST_F(MixerTest, ASlowFileStartsWhenItOpensAndTheFadeWaitsForIt) {
    SetOptions([](MixerOptions& options) { options.preload = false; });
    Fill(list1, {QStringLiteral("slow-30")});
    Fill(list2, {QStringLiteral("slow2-30")});
    mixer.Play(1, -1);
    EXPECT_EQ(mixer.StatusText(1), QStringLiteral("lädt"));
    Run(1);
    mixer.Play(1, -1); // under way: nothing anew
    Run(1.1);
    EXPECT_TRUE(Plays(1));
    EXPECT_EQ(started, QStringList{QStringLiteral("1:slow-30")});
    EXPECT_GT(mixer.Title(1).length, 29);
    mixer.SetFader(-100);
    Run(20.8);
    EXPECT_TRUE(mixer.IsOpening(2)) << "the hand-over has begun";
    EXPECT_EQ(mixer.Fader(), -100);
    Run(2);
    EXPECT_TRUE(Plays(2));
    Run(6);
    EXPECT_EQ(mixer.Fader(), 100);
    EXPECT_FALSE(Plays(1));
}

TEST_F(MixerTest, AHangingFileIsPassedOverBeforeTheTitleOnAirEnds) {
    Fill(list1, {QStringLiteral("a-30")});
    Fill(list2, {QStringLiteral("hanging-30"), QStringLiteral("b-30")});
    mixer.Play(1, -1);
    Run(25);
    EXPECT_EQ(started, QStringList({QStringLiteral("1:a-30"), QStringLiteral("2:b-30")}));
    EXPECT_TRUE(Plays(2));
    EXPECT_GT(mixer.Fader(), 0);
    EXPECT_EQ(messages.filter(QStringLiteral("antwortet nicht")).size(), 1);
}

TEST_F(MixerTest, WhatTheUserStartsAndNeverOpensIsToldAndEndsTheFade) {
    Fill(list1, {QStringLiteral("a-60")});
    Fill(list2, {QStringLiteral("hanging-30")});
    mixer.SetFader(-100);
    mixer.Play(1, -1);
    mixer.FadeTo(2, 0);
    Run(2.5);
    EXPECT_EQ(mixer.StatusText(2), QStringLiteral("lädt"));
    Run(1);
    EXPECT_EQ(mixer.StatusText(2), QStringLiteral("stop"));
    EXPECT_EQ(messages.filter(QStringLiteral("antwortet nicht")).size(), 1);
    Run(1);
    EXPECT_EQ(mixer.Fader(), -100) << "no fade into silence";

    mixer.Play(2, 0);
    mixer.Stop(2);
    EXPECT_FALSE(mixer.IsOpening(2));
    EXPECT_TRUE(Plays(1));
}

/**
 * Whatever the user does, a desk with titles left never stays silent for longer than a tick, unless Stop or Pause
 * silenced it; that silence, and whatever follows while a player stands paused, is kept until the next start by hand.
 */
TEST_F(MixerTest, RandomActsNeverLeaveUnwantedSilence) {
    std::mt19937 chance(7); // NOLINT: the same acts in every run
    const auto upTo = [&chance](int most) { return static_cast<int>(chance() % static_cast<unsigned>(most + 1)); };
    int player = 1; // drawn before each act: compilers differ in the order of arguments
    const std::function<void()> starts[] = {[&] { mixer.FadeTo(player, -1); }, [&] { mixer.Next(player); },
                                            [&] { mixer.Play(player, upTo(29)); }};
    const std::function<void()> stops[] = {[&] { mixer.Stop(player); }, [&] { mixer.Pause(player); }};
    const std::function<void()> others[] = {[&] { mixer.SetFader(std::clamp(upTo(400) - 200, -100, 100)); },
                                            [&] { mixer.SeekSeconds(player, upTo(30)); },
                                            [&] { list2.Remove({upTo(29)}); }};
    int silencedByHand = 0;
    for (int run = 0; run < 60; ++run) {
        list1.Clear();
        list2.Clear();
        mixer.Stop(1);
        mixer.Stop(2);
        QStringList names;
        for (int title = 0; title < 60; ++title) {
            const char* kinds[] = {"broken", "missing", "slow", "t", "t", "t", "t", "t", "t", "t"};
            const char* kind = kinds[upTo(9)];
            const int length = 1 + upTo(25);
            names.append(QStringLiteral("%1%2-%3").arg(QLatin1String(kind)).arg(title).arg(length));
        }
        Fill(list1, names.mid(0, 30));
        Fill(list2, names.mid(30));
        player = 1 + upTo(1);
        mixer.Play(player, -1);
        int silent = 0;
        bool wanted = false;
        bool hasReason = true; // to be silent: from a Stop, a Pause or an end until something is heard
        for (int step = 0; step < 1500; ++step) {
            SCOPED_TRACE(testing::Message() << "run " << run << " step " << step);
            messages.clear();
            Run(0.05);
            const int act = upTo(150);
            player = 1 + upTo(1);
            const auto isSilent = [this] {
                return !Plays(1) && !Plays(2) && !mixer.IsOpening(1) && !mixer.IsOpening(2);
            };
            ASSERT_TRUE(!wanted || isSilent()) << "started by itself";
            if (act < 3)
                starts[act]();
            else if (act < 5)
                stops[act - 3]();
            else if (act < 8)
                others[act - 5]();
            const bool isHeld = mixer.State().heldByUser;
            const bool isPaused = layer.Activity(1) == Activity::Paused || layer.Activity(2) == Activity::Paused;
            const bool isEnd = !messages.filter(QStringLiteral("am Ende")).isEmpty() ||
                               !messages.filter(QStringLiteral("kein weiterer Titel")).isEmpty();
            const bool isHeard = (Plays(1) && Volume(1) > 0) || (Plays(2) && Volume(2) > 0);
            hasReason = !isHeard && (hasReason || act == 3 || act == 4 || isPaused || isEnd);
            ASSERT_TRUE(!isHeld || isHeard || hasReason) << "silenced without a reason";
            ASSERT_TRUE(act > 2 || !Plays(player) || !isHeld) << "a start by hand is not taken for a wish for music";
            wanted = isSilent() && (isHeld || isPaused);
            silencedByHand += wanted && act == 3 ? 1 : 0;
            silent = isSilent() && !wanted ? silent + 1 : 0;
            ASSERT_LE(silent, 4);
        }
    }
    EXPECT_GT(silencedByHand, 60);
}

TEST_F(MixerTest, GoesOnPausedWithATitleWhereAnotherRunStopped) {
    Fill(list2, {QStringLiteral("b-100")});
    const auto titled = [this](const QString& name) {
        DeckTitle title;
        title.title = name;
        title.path = folder.Path(name);
        title.cue = 5;
        return title;
    };
    EXPECT_TRUE(mixer.ResumeTitle(2, titled(QStringLiteral("b-100")), 7, true));
    EXPECT_EQ(layer.Activity(2), Activity::Paused);
    EXPECT_EQ(Volume(2), 0);
    EXPECT_EQ(list2.CurrentRow(), -1);
    EXPECT_TRUE(started.isEmpty()) << "it was counted then";
    mixer.Play(2, -1);
    EXPECT_TRUE(Plays(2));
    EXPECT_DOUBLE_EQ(mixer.PositionSeconds(2), 7);
    EXPECT_EQ(Volume(2), PlayerVolume(2, mixer.Fader(), false));
    EXPECT_FALSE(mixer.ResumeTitle(1, titled(QStringLiteral("missing-3")), 1, false));
    EXPECT_TRUE(messages.constLast().contains(QStringLiteral("missing-3")));
}

} // namespace
} // namespace kalvo
