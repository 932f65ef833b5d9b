#include "playback/Rehearsal.h"

#include "FakeDesk.h"
#include "audio/AudioLibraryImpl.h"
#include "playback/JointPlayer.h"
#include "support/SoundMaker.h"
#include "support/WaitUntil.h"

#include <cmath>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

/** Two lists of real titles of 16 s, the second title half as loud. */
struct RehearsalTest : ::testing::Test {
    RehearsalTest() {
        settings.mixing.switchOver = 4;
        settings.mixing.fadeInterval = 5;
        for (int i = 0; i < 3; ++i) {
            test::SoundSpec spec;
            spec.seconds = 16;
            spec.channels = 1;
            spec.amplitude = i == 1 ? 0.1 : 0.2;
            const QString name = u"t%1"_s.arg(i);
            const QString path = test::MakeSound(folder.Path(), name + u".wav"_s, spec);
            (i == 1 ? list2 : list1).Append({{name, {}, {}, {}, {}, path}});
        }
    }
    DeskMoment Moment() const {
        DeskMoment moment;
        moment.lists = {list1.State(), list2.State()};
        moment.fader = -100;
        return moment;
    }
    void Wait() {
        ASSERT_TRUE(test::WaitUntil([this] { return !rehearsal.IsRunning(); }));
    }
    void Rehearse() {
        rehearsal.Start();
        Wait();
        ASSERT_EQ(rehearsal.Joints().size(), 2);
        ASSERT_EQ(rehearsal.Done(), 2);
    }

    test::TestFolder folder;
    SystemRandom random;
    Playlist list1{1, random}, list2{2, random};
    RehearsalSettings settings;
    Rehearsal rehearsal{{[this] { return Moment(); }, [this] { return settings; },
                         [] { return std::make_unique<audio::AudioLibraryImpl>(); }}};
};

TEST_F(RehearsalTest, AJointIsRenderedAsTheDeskPlaysIt) {
    std::atomic<bool> cancelled{false};
    const auto length = [](const std::string&) { return 16.0; };
    const QList<Joint> joints = PlanJoints(Moment(), settings, length, cancelled);
    ASSERT_EQ(joints.size(), 2);
    const auto render = [&] {
        return RenderJoint(joints[0], settings, {3, 2}, std::make_unique<audio::AudioLibraryImpl>(), cancelled);
    };
    const RenderedJoint joint = render();
    ASSERT_NE(joint.sound, nullptr);
    EXPECT_NEAR(joint.begin, 3, 0.3);
    EXPECT_NEAR(joint.end - joint.begin, 1, 0.1) << "the whole way of the fader";
    EXPECT_NEAR(joint.length - joint.end, 2, 0.1);
    EXPECT_NEAR(joint.measures.Jump(), -6, 0.5);
    EXPECT_LT(joint.measures.gap, 0.05);
    EXPECT_EQ(joint.sound->size(), 44 + 4 * std::size_t(std::lround(joint.length * 44100)));
    cancelled = true;
    EXPECT_EQ(render().sound, nullptr);
}

TEST_F(RehearsalTest, AllIsMeasuredButOnlyWhatIsWantedKeepsItsSound) {
    Rehearse();
    EXPECT_FALSE(rehearsal.Sound(0));
    rehearsal.Want(0);
    Wait();
    ASSERT_TRUE(rehearsal.Sound(0) && rehearsal.Sound(1)) << "and the one behind it";
    EXPECT_NE(rehearsal.Sound(0)->sound, nullptr);
    rehearsal.SetMargins({2, 2});
    EXPECT_FALSE(rehearsal.Sound(0)) << "it begins elsewhere now";
    Wait();
    EXPECT_LT(rehearsal.Sound(0)->length, 6);
}

TEST_F(RehearsalTest, AChangedListIsPlannedAnewAndWhatIsWantedStays) {
    Rehearse();
    rehearsal.Want(1);
    list1.Insert(0, {list1.At(0)});
    list2.Insert(0, {list2.At(0)});
    rehearsal.Refresh();
    ASSERT_TRUE(test::WaitUntil([&] { return rehearsal.Joints().size() == 4; }));
    Wait();
    EXPECT_EQ(rehearsal.Done(), 4);
    EXPECT_EQ(rehearsal.Wanted(), 3) << "t1 to t2 has moved down";
    rehearsal.Stop();
    EXPECT_FALSE(rehearsal.IsRunning());
}

TEST(JointPlayerTest, TheMainOutputIsOnlyUsedWhileNothingIsOnAir) {
    test::FakeDesk desk;
    desk.Fill(desk.list1, {u"a-60"_s});
    JointPlayer player(desk.mixer);
    QStringList told;
    int ended = 0;
    QObject::connect(&player, &JointPlayer::Told, [&told](const QString& text) { told.append(text); });
    QObject::connect(&player, &JointPlayer::Ended, [&ended] { ++ended; });
    const auto file = std::make_shared<const std::vector<std::byte>>(10);
    EXPECT_EQ(player.Play(JointPlayer::Way::Main, file, {}, 50), QString());
    EXPECT_TRUE(player.IsPlaying());
    desk.mixer.Play(1, -1);
    player.Tick();
    EXPECT_FALSE(player.IsPlaying()) << "music has begun";
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(told.size(), 1);
    EXPECT_EQ(player.Play(JointPlayer::Way::Main, file, {}, 50), told.value(0));
    EXPECT_EQ(player.Play(JointPlayer::Way::Headphones, nullptr, {}, 50),
              u"Dieser Übergang konnte nicht gerechnet werden."_s);
    EXPECT_EQ(desk.fake.streams.size(), 1U) << "the title's";
}

} // namespace
} // namespace kalvo
