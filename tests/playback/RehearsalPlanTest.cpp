#include "playback/RehearsalPlan.h"

#include "FakeDesk.h"

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

/** Names tell the length: "a-60" has 60 s; "kaputt-0" cannot be played. */
struct RehearsalPlanTest : ::testing::Test {
    static double Length(const std::string& path) { return std::atof(path.substr(path.rfind('-') + 1).c_str()); }

    void Fill(const QStringList& first, const QStringList& second) {
        desk.Fill(desk.list1, first);
        desk.Fill(desk.list2, second);
        now.lists = {desk.list1.State(), desk.list2.State()};
    }
    QList<Joint> Plan() { return PlanJoints(now, settings, &Length, cancelled); }
    static QStringList Texts(const QList<Joint>& joints) {
        QStringList texts;
        for (const Joint& joint : joints)
            texts.append(joint.Text());
        return texts;
    }

    test::FakeDesk desk;
    DeskMoment now;
    RehearsalSettings settings;
    std::atomic<bool> cancelled{false};
};

TEST_F(RehearsalPlanTest, ThePlayersTakeTurnsAndALeftOverListGoesOnAlone) {
    Fill({u"a-60"_s, u"c-70"_s}, {u"b-40"_s, u"d-30"_s, u"e-50"_s});
    const QList<Joint> joints = Plan();
    EXPECT_EQ(Texts(joints), (QStringList{u"a-60 → b-40"_s, u"b-40 → c-70"_s, u"c-70 → d-30"_s, u"d-30 → e-50"_s}));
    EXPECT_NEAR(joints[0].at, 51, 0.6) << "nine seconds before the end, in whole seconds";
    EXPECT_NEAR(joints[0].fade, 3, 0.2) << "the fader begins in the centre";
    EXPECT_NEAR(joints[1].at, 51 + 31, 1.2);
    EXPECT_NEAR(joints[1].fade, 6, 0.2);
    EXPECT_EQ(joints[3].kind, Joint::Kind::Continue);
    EXPECT_EQ(joints[3].fade, 0);
}

TEST_F(RehearsalPlanTest, MarksMissingAndBrokenFilesDecideTheOrder) {
    Fill({u"a-60"_s, u"b-60"_s}, {u"missing-60"_s, u"kaputt-0"_s, u"c-60"_s, u"d-60"_s});
    now.lists[1].entries[3].icon = EntryIcon::PlayNext;
    EXPECT_EQ(Texts(Plan()), (QStringList{u"a-60 → d-60"_s, u"d-60 → b-60"_s}));
    now.lists[1].entries[3].icon = EntryIcon::None;
    EXPECT_EQ(Texts(Plan()), (QStringList{u"a-60 → c-60"_s, u"c-60 → b-60"_s, u"b-60 → d-60"_s}));
}

TEST_F(RehearsalPlanTest, WhatIsOnAirGoesOnFromItsSecond) {
    Fill({u"a-60"_s}, {u"b-60"_s});
    DeskMoment::Deck& deck = now.decks[1];
    deck.title.title = u"x-100"_s;
    deck.title.path = desk.folder.Write(u"x-100"_s, "x");
    deck.second = 61;
    deck.activity = audio::Activity::Playing;
    now.fader = 100;
    const QList<Joint> joints = Plan();
    EXPECT_EQ(Texts(joints), (QStringList{u"x-100 → a-60"_s, u"a-60 → b-60"_s}));
    EXPECT_NEAR(joints[0].at, 30, 0.6);
    EXPECT_NEAR(joints[0].before.At(2).second, 91, 0.6);
    deck.pitch = 100; // ten percent faster
    EXPECT_NEAR(Plan()[0].at, 30 / 1.1, 0.6);
}

TEST_F(RehearsalPlanTest, CuePointsShortenAndModesDecide) {
    Fill({u"a-60"_s}, {u"b-60"_s});
    now.lists[0].entries[0].info = u"20.0"_s;
    EXPECT_NEAR(Plan()[0].at, 31, 0.6);
    settings.useCuePoints = false;
    EXPECT_NEAR(Plan()[0].at, 51, 0.6);
    settings.mixing.mode = FadeMode::NoFading;
    const QList<Joint> cut = Plan();
    ASSERT_EQ(cut.size(), 1);
    EXPECT_EQ(cut[0].kind, Joint::Kind::Jump);
    EXPECT_NEAR(cut[0].at, 60, 0.3);
    settings.mixing.continuous = false;
    EXPECT_EQ(Texts(Plan()), QStringList());
}

TEST_F(RehearsalPlanTest, TitlesThatBeginWithinAFadeBelongToItsJoint) {
    Fill({u"a-60"_s, u"c-60"_s}, {u"kurz-2"_s, u"b-60"_s});
    settings.mixing.fadeInterval = 60;
    EXPECT_EQ(Texts(Plan()).value(0), u"a-60 → kurz-2 → b-60"_s);
}

TEST_F(RehearsalPlanTest, PlayedTitlesAreRemovedAndACancelledPlanIsEmpty) {
    settings.mixing.removePlayed = true;
    Fill({u"a-60"_s, u"c-60"_s}, {u"b-60"_s});
    EXPECT_EQ(Texts(Plan()), (QStringList{u"a-60 → b-60"_s, u"b-60 → c-60"_s}));
    cancelled = true;
    EXPECT_TRUE(Plan().isEmpty());
}

} // namespace
} // namespace kalvo
