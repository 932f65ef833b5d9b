#include "live/AutoDjRefill.h"
#include "archive/TestClock.h"
#include "live/AutoDjFill.h"
#include "live/FakeTitles.h"
#include "playlists/AnsweredQuestions.h"
#include "playlists/PlaylistActions.h"
#include "playlists/PlaylistSupport.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

class AutoDjRefillTest : public ::testing::Test {
protected:
    AutoDjRefillTest() {
        for (int i = 0; i < 6; ++i)
            source.Add(u"A"_s, QString::number(i));
        options.isOn = true;
        options.below = 3;
        options.selection.field = ArchiveField::Stil;
        options.selection.values = {u"Pop"_s};
        QObject::connect(&refill, &AutoDjRefill::Told, &refill, [this](const QString& text) { told.append(text); });
    }

    SystemRandom random;
    TestClock clock;
    FakeTitles source;
    Playlist first{1, random};
    Playlist second{2, random};
    AutoDjRefillOptions options;
    AutoDjRefill refill{{&first, &second}, source, random, clock};
    QStringList told;
};

TEST_F(AutoDjRefillTest, AListIsFilledAsItRunsDry) {
    refill.SetOptions(options);
    ASSERT_TRUE(WaitUntil([this] { return first.Count() == 3; }));
    first.SetCurrent(1);
    ASSERT_TRUE(WaitUntil([this] { return first.Count() == 5; }));
    EXPECT_EQ(second.Count(), 0);
    QSet<QString> paths;
    for (const PlaylistEntry& entry : first.Entries()) {
        paths.insert(entry.path);
        EXPECT_EQ(entry.origin, EntryOrigin::Automatic);
    }
    EXPECT_EQ(paths.size(), 5);

    options.selection.bothLists = true;
    refill.SetOptions(options);
    EXPECT_TRUE(WaitUntil([this] { return second.Count() == 3; }));
    EXPECT_EQ(refill.StateText(), u"an"_s);
}

TEST_F(AutoDjRefillTest, AShuffledListIsFilledAtItsEnd) {
    first.Append(EntriesOf("abcdef"));
    first.Shuffle();
    first.SetCurrent(5);
    refill.SetOptions(options);
    ASSERT_TRUE(WaitUntil([this] { return first.Count() == 9; }));
    EXPECT_EQ(first.CurrentRow(), 5);
}

TEST_F(AutoDjRefillTest, WhatIsBehindComesAgainWhenThereIsNothingElse) {
    options.below = 6;
    refill.SetOptions(options);
    ASSERT_TRUE(WaitUntil([this] { return first.Count() == 6; }));
    first.SetCurrent(3);
    ASSERT_TRUE(WaitUntil([this] { return first.Count() == 9; })); // 0 to 2 once more; the rest is still to come
    ASSERT_TRUE(WaitUntil([this] { return refill.IsStuck(); }));
    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told.at(0).contains(u"kein passender Titel für Wiedergabeliste 1"_s));
}

TEST_F(AutoDjRefillTest, WithoutValuesItStaysOff) {
    options.selection.values.clear();
    refill.SetOptions(options);
    EXPECT_FALSE(refill.Options().isOn);
    EXPECT_EQ(refill.StateText(), u"aus"_s);
}

TEST_F(AutoDjRefillTest, FillingIsOneStepOfUndo) {
    AnsweredQuestions questions;
    PlaylistActions actions(first, second, questions);
    AutoDjFill fill(source, random, actions, clock);
    int titles = 0;
    QObject::connect(&fill, &AutoDjFill::Finished, &fill, [&titles](int drawn) { titles = drawn; });
    options.selection.hours = 0.25;
    options.selection.bothLists = true;
    fill.Start(options.selection);
    ASSERT_TRUE(WaitUntil([&titles] { return titles == 4; }));
    EXPECT_EQ(first.Count(), 2);
    EXPECT_EQ(second.Count(), 2);
    actions.Undo().Stack().undo();
    EXPECT_EQ(first.Count() + second.Count(), 0);

    fill.Start(options.selection);
    fill.Cancel();
    EXPECT_FALSE(fill.IsRunning());
    EXPECT_EQ(first.Count() + second.Count(), 0);
}

} // namespace
} // namespace kalvo::test
