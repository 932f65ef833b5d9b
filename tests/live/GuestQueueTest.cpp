#include "live/GuestQueue.h"

#include "live/GuestSupport.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

namespace kalvo::test {
namespace {

class GuestQueueTest : public testing::Test {
protected:
    static PlaylistEntry Entry(const QString& path) {
        PlaylistEntry entry;
        entry.path = path;
        return entry;
    }
    quint64 Note(const char* path) {
        return wishes.Add({QString::fromLatin1(path), QStringLiteral("Wer - Was"), QStringLiteral("Anna"), {}, 0});
    }
    bool Becomes(quint64 ticket, const WishPlace& place) {
        return WaitUntil([&] { return queue.Board()->PlaceOf(ticket) == place; });
    }

    TestFolder folder;
    GuestClock clock;
    SystemRandom random;
    WishList wishes{folder.Path(QStringLiteral("WZ")), clock};
    Playlist list1{1, random};
    Playlist list2{2, random};
    GuestQueue queue{wishes, list1, list2};
};

TEST_F(GuestQueueTest, AWishGoesFromItsPlaceToTheAir) {
    Note("/a.mp3"); // not from the page
    const quint64 id = Note("/b.mp3");
    queue.Follow(1, id, QStringLiteral("/b.mp3"));
    EXPECT_TRUE(Becomes(1, {WishStage::Waits, 2}));
    EXPECT_EQ(queue.Board()->waiting, 2);
    list1.Append({Entry(QStringLiteral("/a.mp3"))});
    EXPECT_TRUE(Becomes(1, {WishStage::Waits, 1})) << "the first one is in a list and no longer waits";
    list2.Append({Entry(QStringLiteral("/b.mp3"))});
    EXPECT_TRUE(Becomes(1, {WishStage::Queued, 0}));
    list2.SetCurrent(0);
    queue.SetNowPlaying({QStringLiteral("/b.mp3"), QStringLiteral("Was"), QStringLiteral("Wer")});
    EXPECT_TRUE(Becomes(1, {WishStage::OnAir, 0}));
    EXPECT_EQ(queue.Board()->title, QStringLiteral("Was"));
    queue.SetNowPlaying({});
    EXPECT_TRUE(Becomes(1, {WishStage::Played, 0})) << "though it stands in the list of wishes yet";
    EXPECT_FALSE(queue.Board()->playing);
    wishes.Clear();
    EXPECT_TRUE(WaitUntil([&] { return queue.Board()->waiting == 0; }));
    EXPECT_TRUE(Becomes(1, {WishStage::Played, 0}));
}

TEST_F(GuestQueueTest, WhatIsTakenOutIsGoneAndComesBackWithAnUndo) {
    const quint64 id = Note("/b.mp3");
    queue.Follow(1, id, QStringLiteral("/b.mp3"));
    queue.Follow(2, 0, {}); // its title has left the archive meanwhile
    EXPECT_TRUE(Becomes(1, {WishStage::Waits, 1}));
    EXPECT_TRUE(Becomes(2, {WishStage::Gone, 0}));
    const auto removed = wishes.Remove({id});
    EXPECT_TRUE(Becomes(1, {WishStage::Gone, 0}));
    wishes.PutBack(removed);
    EXPECT_TRUE(Becomes(1, {WishStage::Waits, 1}));
}

TEST_F(GuestQueueTest, ATitlePlayedEarlierMayBeWishedAgain) {
    list1.Append({Entry(QStringLiteral("/b.mp3"))});
    list1.SetCurrent(0);
    const quint64 id = Note("/b.mp3");
    queue.Follow(1, id, QStringLiteral("/b.mp3"));
    EXPECT_TRUE(Becomes(1, {WishStage::Waits, 1}));
}

} // namespace
} // namespace kalvo::test
