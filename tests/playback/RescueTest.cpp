#include "FakeDesk.h"
#include "playback/EmergencyLoader.h"
#include "support/WaitUntil.h"

#include <QFile>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

struct RescueTest : test::FakeDeskTest {
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
};

TEST_F(RescueTest, AStallEndsAfterTwoSecondsWithTheOtherList) {
    Begin({u"stalling-200"_s, u"a-100"_s}, {u"b-50"_s});
    Run(3);
    EXPECT_EQ(OnAir(), u"stalling-200"_s);
    EXPECT_NEAR(Until(u"b-50"_s), 2, 0.2);
    EXPECT_EQ(mixer.Fader(), 100);
    EXPECT_EQ(Told("Zwei Sekunden Stille").size(), 1);
    EXPECT_EQ(Told("antwortet nicht").size(), 1);
    EXPECT_GT(Until(u"a-100"_s), 35) << "and the lists go on in turn";
}

TEST_F(RescueTest, AStallDuringAFadeIsNoneWhileTheOtherTitleIsHeard) {
    Begin({u"a-100"_s, u"c-100"_s}, {u"stalling-100"_s});
    mixer.FadeTo(2, -1);
    Run(2);
    mixer.HoldFader(true);
    Run(20);
    EXPECT_TRUE(Told("Stille").isEmpty());
    mixer.HoldFader(false);
    EXPECT_GE(Until(u"c-100"_s), 0) << "the other title has gone";
}

TEST_F(RescueTest, TheEmergencyTitleComesBeforeASecondTitleThatDoesNotMove) {
    HoldEmergency();
    Begin({u"stalling-100"_s, u"c-100"_s}, {u"hanging-100"_s, u"hanging-101"_s});
    Run(3);
    EXPECT_NEAR(Until(u"Not"_s), 4, 0.3);
    EXPECT_EQ(Told("Der Notfalltitel spielt: Not").size(), 1);
    EXPECT_GT(Until(u"c-100"_s), 15) << "the lists go on as soon as they can";
}

TEST_F(RescueTest, WithoutAnythingElseTheStandingTitleMayMoveOn) {
    Begin({u"stalling-100"_s});
    Run(20);
    EXPECT_EQ(OnAir(), u"stalling-100"_s);
    EXPECT_EQ(Told("kein Notfalltitel").size(), 1);
}

/** As when the disk with the music is pulled out. */
TEST_F(RescueTest, ListsThatCannotBePlayedEndInTheEmergencyTitleAgainAndAgain) {
    HoldEmergency();
    Begin({u"a-12"_s, u"missing-5"_s, u"broken-5"_s}, {u"missing-6"_s});
    EXPECT_NEAR(Until(u"Not"_s), 12, 0.3);
    Run(45);
    EXPECT_EQ(OnAir(), u"Not"_s) << "its second time";
    folder.Write(u"missing-6"_s, "x");
    EXPECT_GE(Until(u"missing-6"_s), 0) << "the disk is back";
}

TEST_F(RescueTest, AFadeAndNextLeadToNoSilenceWhereAListCannotBePlayed) {
    HoldEmergency();
    mixer.SetFader(-100);
    Begin({u"a-100"_s, u"missing-1"_s}, {u"missing-2"_s});
    mixer.FadeTo(2, -1);
    Run(15);
    EXPECT_EQ(mixer.Fader(), -100);
    EXPECT_EQ(Told("Keine Überblendung").size(), 1);
    mixer.Next(1);
    EXPECT_EQ(Told("In Wiedergabeliste 1 lässt sich kein weiterer Titel abspielen.").size(), 1);
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
        EXPECT_EQ(Told("am Ende").size(), 1);
    }
}

TEST_F(RescueTest, SilenceOfTheUserAndOfTheDeviceIsLeftAlone) {
    HoldEmergency(true);
    Begin({u"a-100"_s}, {u"b-100"_s});
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
    EXPECT_TRUE(Told("Stille").isEmpty());
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
    Begin({u"a-1"_s});
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
