#include "live/GuestQueue.h"

#include "live/GuestSupport.h"
#include "playlists/PlaylistSupport.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

namespace kalvo::test {

struct GuestQueueTest : testing::Test, TwoLists {
    /** Of the title "/music/<name>". */
    quint64 Note(const QString& name) { return wishes.Add({u"/music/"_s + name, u"Wer - Was"_s, u"Anna"_s, {}, 0}); }
    bool Becomes(quint64 ticket, const WishPlace& place) {
        return WaitUntil([&] { return queue.Board()->PlaceOf(ticket) == place; });
    }

    TestFolder folder;
    GuestClock clock;
    WishList wishes{folder.Path(u"WZ"_s), clock};
    GuestQueue queue{wishes, first, second};
};

TEST_F(GuestQueueTest, AWishGoesFromItsPlaceToTheAir) {
    Note(u"a"_s); // not from the page
    queue.Follow(1, Note(u"b"_s), u"/music/b"_s);
    EXPECT_TRUE(Becomes(1, {WishStage::Waits, 2}));
    EXPECT_EQ(queue.Board()->waiting, 2);
    first.Append(EntriesOf("a"));
    EXPECT_TRUE(Becomes(1, {WishStage::Waits, 1})) << "the first one is in a list and no longer waits";
    second.Append(EntriesOf("b"));
    EXPECT_TRUE(Becomes(1, {WishStage::Queued, 0}));
    second.SetCurrent(0);
    queue.SetNowPlaying({u"/music/b"_s, u"Was"_s, u"Wer"_s});
    EXPECT_TRUE(Becomes(1, {WishStage::OnAir, 0}));
    EXPECT_EQ(queue.Board()->title, u"Was"_s);
    queue.SetNowPlaying({});
    EXPECT_TRUE(Becomes(1, {WishStage::Played, 0})) << "though it stands in the list of wishes yet";
    EXPECT_FALSE(queue.Board()->playing);
    wishes.Clear();
    EXPECT_TRUE(WaitUntil([&] { return queue.Board()->waiting == 0; }));
    EXPECT_TRUE(Becomes(1, {WishStage::Played, 0}));
}

TEST_F(GuestQueueTest, WhatIsTakenOutIsGoneAndComesBackWithAnUndo) {
    const quint64 id = Note(u"b"_s);
    queue.Follow(1, id, u"/music/b"_s);
    queue.Follow(2, 0, {}); // its title has left the archive meanwhile
    EXPECT_TRUE(Becomes(1, {WishStage::Waits, 1}));
    EXPECT_TRUE(Becomes(2, {WishStage::Gone, 0}));
    const auto removed = wishes.Remove({id});
    EXPECT_TRUE(Becomes(1, {WishStage::Gone, 0}));
    wishes.PutBack(removed);
    EXPECT_TRUE(Becomes(1, {WishStage::Waits, 1}));
}

TEST_F(GuestQueueTest, ATitlePlayedEarlierMayBeWishedAgain) {
    first.Append(EntriesOf("b"));
    first.SetCurrent(0);
    queue.Follow(1, Note(u"b"_s), u"/music/b"_s);
    EXPECT_TRUE(Becomes(1, {WishStage::Waits, 1}));
}

} // namespace kalvo::test
