#include "playback/RehearsalPlan.h"

#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

/** Names tell the length: "a-60" has 60 s; "kaputt-0" cannot be played. */
struct RehearsalPlanTest : ::testing::Test {
    static double Length(const std::string& path) { return std::atof(path.substr(path.rfind('-') + 1).c_str()); }

    void Fill(int list, const QStringList& names) {
        SystemRandom random;
        Playlist filled(list, random);
        for (const QString& name : names) {
            PlaylistEntry entry;
            entry.title = name;
            entry.path = name.startsWith(u"fehlt"_s) ? folder.Path(name) : folder.Write(name, "x");
            filled.Append({entry});
        }
        now.lists.at(std::size_t(list - 1)) = filled.State();
    }
    void Air(int player, const QString& name, double second) {
        DeskMoment::Deck& deck = now.decks.at(std::size_t(player - 1));
        deck.title.title = name;
        deck.title.path = folder.Write(name, "x");
        deck.second = second;
        deck.activity = audio::Activity::Playing;
    }
    QList<Joint> Plan() { return PlanJoints(now, settings, &Length, never); }
    static QStringList Texts(const QList<Joint>& joints) {
        QStringList texts;
        for (const Joint& joint : joints)
            texts.append(joint.Text());
        return texts;
    }

    test::TestFolder folder;
    DeskMoment now;
    RehearsalSettings settings;
    std::atomic<bool> never{false};
};

TEST_F(RehearsalPlanTest, ThePlayersTakeTurnsAndALeftOverListGoesOnAlone) {
    Fill(1, {u"a-60"_s, u"c-70"_s});
    Fill(2, {u"b-40"_s, u"d-30"_s, u"e-50"_s});
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
    Fill(1, {u"a-60"_s, u"b-60"_s});
    Fill(2, {u"fehlt-60"_s, u"kaputt-0"_s, u"c-60"_s, u"d-60"_s});
    now.lists[1].entries[3].icon = EntryIcon::PlayNext;
    EXPECT_EQ(Texts(Plan()), (QStringList{u"a-60 → d-60"_s, u"d-60 → b-60"_s}));
    now.lists[1].entries[3].icon = EntryIcon::None;
    EXPECT_EQ(Texts(Plan()), (QStringList{u"a-60 → c-60"_s, u"c-60 → b-60"_s, u"b-60 → d-60"_s}));
}

TEST_F(RehearsalPlanTest, WhatIsOnAirGoesOnFromItsSecond) {
    Fill(1, {u"a-60"_s});
    Fill(2, {u"b-60"_s});
    Air(2, u"x-100"_s, 61);
    now.fader = 100;
    const QList<Joint> joints = Plan();
    EXPECT_EQ(Texts(joints), (QStringList{u"x-100 → a-60"_s, u"a-60 → b-60"_s}));
    EXPECT_NEAR(joints[0].at, 30, 0.6);
    EXPECT_NEAR(joints[0].before.At(2).second, 91, 0.6);
    now.decks[1].pitch = 100; // ten percent faster
    EXPECT_NEAR(Plan()[0].at, 30 / 1.1, 0.6);
}

TEST_F(RehearsalPlanTest, CuePointsShortenAndModesDecide) {
    Fill(1, {u"a-60"_s});
    Fill(2, {u"b-60"_s});
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
    Fill(1, {u"a-60"_s, u"c-60"_s});
    Fill(2, {u"kurz-2"_s, u"b-60"_s});
    settings.mixing.fadeInterval = 60;
    const QList<Joint> joints = Plan();
    ASSERT_FALSE(joints.isEmpty());
    EXPECT_EQ(joints[0].Text(), u"a-60 → kurz-2 → b-60"_s);
}

TEST_F(RehearsalPlanTest, PlayedTitlesAreRemovedFromTheCopyAlone) {
    settings.mixing.removePlayed = true;
    Fill(1, {u"a-60"_s, u"c-60"_s});
    Fill(2, {u"b-60"_s});
    const QList<PlaylistEntry> entries = now.lists[0].entries;
    const QList<Joint> joints = Plan();
    EXPECT_EQ(Texts(joints), (QStringList{u"a-60 → b-60"_s, u"b-60 → c-60"_s}));
    EXPECT_EQ(now.lists[0].entries, entries);
    std::atomic<bool> cancelled{true};
    EXPECT_TRUE(PlanJoints(now, settings, &Length, cancelled).isEmpty());
}

} // namespace
} // namespace kalvo
