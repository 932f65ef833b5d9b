#include "FakeDesk.h"
#include "playback/EmergencyLoader.h"
#include "support/WaitUntil.h"

#include <QFile>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

/** The desk with its timers driven by hand. */
struct RescueTest : ::testing::Test, test::FakeDesk {
    RescueTest() {
        QObject::connect(&mixer, &Mixer::Message, [this](const QString& text) { messages.append(text); });
    }

    void Run(double seconds) {
        for (int step = 0; step < static_cast<int>(seconds * 20 + 0.5); ++step) {
            fake.Advance(0.05);
            mixer.Dispatch();
            if (++steps % 2 == 0)
                mixer.CheckHandOver();
            mixer.StepFade();
        }
    }
    /** Seconds until the title is on air; -1 when it does not come within a minute. */
    double Until(const QString& title) {
        for (double waited = 0; waited < 60; waited += 0.05) {
            if (OnAir() == title)
                return waited;
            Run(0.05);
        }
        return -1;
    }
    QString OnAir() const { return mixer.OnAirPlayer() == 0 ? QString() : mixer.Title(mixer.OnAirPlayer()).title; }
    void HoldEmergency(bool atListEnd = false) {
        EmergencyTitle emergency;
        emergency.title.title = u"Not"_s;
        emergency.file = std::make_shared<std::vector<std::byte>>(30);
        emergency.atListEnd = atListEnd;
        mixer.SetEmergency(emergency);
    }
    QStringList Told(const QString& part) const { return messages.filter(part); }

    QStringList messages;
    int steps = 0;
};

TEST_F(RescueTest, AStallEndsAfterTwoSecondsWithTheOtherList) {
    Fill(list1, {u"stalling-200"_s, u"a-100"_s});
    Fill(list2, {u"b-50"_s});
    mixer.Play(1, -1);
    Run(3);
    EXPECT_EQ(OnAir(), u"stalling-200"_s);
    EXPECT_NEAR(Until(u"b-50"_s), 2, 0.2);
    EXPECT_EQ(mixer.Fader(), 100);
    EXPECT_EQ(Told(u"Zwei Sekunden Stille"_s).size(), 1);
    EXPECT_EQ(Told(u"antwortet nicht"_s).size(), 1);
    EXPECT_GT(Until(u"a-100"_s), 35) << "and the lists go on in turn";
}

TEST_F(RescueTest, AStallDuringAFadeIsNoneWhileTheOtherTitleIsHeard) {
    Fill(list1, {u"a-100"_s, u"c-100"_s});
    Fill(list2, {u"stalling-100"_s});
    mixer.Play(1, -1);
    mixer.FadeTo(2, -1);
    Run(3);
    mixer.HoldFader(true);
    Run(20);
    EXPECT_TRUE(Told(u"Stille"_s).isEmpty());
    mixer.HoldFader(false);
    EXPECT_GE(Until(u"c-100"_s), 0) << "the other title has gone";
}

TEST_F(RescueTest, TheEmergencyTitleComesBeforeASecondTitleThatDoesNotMove) {
    HoldEmergency();
    Fill(list1, {u"stalling-100"_s, u"c-100"_s});
    Fill(list2, {u"hanging-100"_s, u"hanging-101"_s});
    mixer.Play(1, -1);
    Run(3);
    EXPECT_NEAR(Until(u"Not"_s), 4, 0.3);
    EXPECT_EQ(Told(u"Der Notfalltitel spielt: Not"_s).size(), 1);
    EXPECT_GT(Until(u"c-100"_s), 15) << "the lists go on as soon as they can";
}

TEST_F(RescueTest, WithoutAnythingElseTheStandingTitleMayMoveOn) {
    Fill(list1, {u"stalling-100"_s});
    mixer.Play(1, -1);
    Run(20);
    EXPECT_EQ(OnAir(), u"stalling-100"_s);
    EXPECT_EQ(Told(u"kein Notfalltitel"_s).size(), 1);
}

/** As when the disk with the music is pulled out. */
TEST_F(RescueTest, ListsThatCannotBePlayedEndInTheEmergencyTitleAgainAndAgain) {
    HoldEmergency();
    Fill(list1, {u"a-12"_s, u"missing-5"_s, u"broken-5"_s});
    Fill(list2, {u"missing-6"_s});
    mixer.Play(1, -1);
    EXPECT_NEAR(Until(u"Not"_s), 12, 0.3);
    Run(45);
    EXPECT_EQ(OnAir(), u"Not"_s) << "its second time";
    folder.Write(u"missing-6"_s, "x");
    EXPECT_GE(Until(u"missing-6"_s), 0) << "the disk is back";
}

TEST_F(RescueTest, AFadeAndNextLeadToNoSilenceWhereAListCannotBePlayed) {
    HoldEmergency();
    Fill(list1, {u"a-100"_s, u"missing-1"_s});
    Fill(list2, {u"missing-2"_s});
    mixer.SetFader(-100);
    mixer.Play(1, -1);
    mixer.FadeTo(2, -1);
    Run(15);
    EXPECT_EQ(mixer.Fader(), -100);
    EXPECT_EQ(Told(u"Keine Überblendung"_s).size(), 1);
    mixer.Next(1);
    EXPECT_EQ(Told(u"In Wiedergabeliste 1 lässt sich kein weiterer Titel abspielen."_s).size(), 1);
    EXPECT_LT(Until(u"Not"_s), 0.2);
    list2.Clear();
    mixer.FadeTo(2, -1);
    Run(15);
    EXPECT_EQ(mixer.Fader(), 100) << "an empty list is the user's own choice";
}

TEST_F(RescueTest, AtTheLegitimateEndOfBothListsTheEmergencyTitlePlaysOnlyIfItIsAsked) {
    for (const bool asked : {false, true}) {
        HoldEmergency(asked);
        list1.Clear();
        list2.Clear();
        Fill(list1, {u"a-2"_s});
        mixer.Play(1, -1);
        Run(6);
        EXPECT_EQ(OnAir(), asked ? u"Not"_s : QString());
        EXPECT_EQ(Told(u"am Ende"_s).size(), 1);
    }
}

TEST_F(RescueTest, SilenceOfTheUserAndOfTheDeviceIsLeftAlone) {
    HoldEmergency(true);
    Fill(list1, {u"a-100"_s});
    Fill(list2, {u"b-100"_s});
    mixer.Play(1, -1);
    mixer.Pause(1);
    Run(30);
    EXPECT_EQ(mixer.StatusText(1), u"pause"_s);
    mixer.Play(1, -1);
    fake.deviceTakes = false;
    Run(30);
    EXPECT_EQ(OnAir(), u"a-100"_s) << "another title would not be heard either";
    fake.deviceTakes = true;
    mixer.ToggleMute(1);
    Run(30);
    EXPECT_EQ(OnAir(), u"a-100"_s);
    EXPECT_TRUE(Told(u"Stille"_s).isEmpty());
}

TEST_F(RescueTest, TheLoaderHoldsAFileThatIsGoneLater) {
    EmergencyLoader loader(mixer);
    QStringList failures;
    int ready = 0;
    QObject::connect(&loader, &EmergencyLoader::Failed, [&](const QString& text) { failures.append(text); });
    QObject::connect(&loader, &EmergencyLoader::Ready, [&] { ++ready; });
    const QString path = folder.Write(u"Not am Mann.mp3"_s, QByteArray(25, 'x'));
    loader.Choose(path, true);
    ASSERT_TRUE(test::WaitUntil([&] { return ready == 1; }));
    QFile::remove(path);
    Fill(list1, {u"a-1"_s});
    mixer.Play(1, -1);
    Run(2);
    EXPECT_EQ(OnAir(), u"Not am Mann"_s);
    EXPECT_NEAR(layer.LengthSeconds(mixer.OnAirPlayer()), 25, 0.001);

    loader.Choose(path, false);
    ASSERT_TRUE(test::WaitUntil([&] { return failures.size() == 1; })) << "it is not there any more";
    EXPECT_TRUE(failures.constFirst().contains(path));
    folder.Write(u"Not am Mann.mp3"_s, QByteArray(25, 'x'));
    loader.Choose(path, false);
    EXPECT_TRUE(test::WaitUntil([&] { return ready == 2; })) << "its disk is back";
    loader.Choose({}, false);
    EXPECT_FALSE(mixer.State().emergency);
}

} // namespace
} // namespace kalvo
