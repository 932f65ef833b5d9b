#include "playlists/NextTitle.h"

#include "playlists/PlaylistSupport.h"

#include <gtest/gtest.h>

#include <random>

namespace kalvo {

using test::EntriesOf;
using test::Shown;

class NextTitleTest : public ::testing::Test {
protected:
    /** Titles in capitals have no file. */
    static bool Exists(const QString& path) { return !path.back().isUpper(); }
    /** Takes and plays as a player does. */
    int Play(bool removePlayed = false) {
        const int peeked = PeekNextTitle(list, Exists, removePlayed);
        const QString title = peeked < 0 ? QString() : list.At(peeked).title;
        const int row = TakeNextTitle(list, removePlayed, Exists);
        EXPECT_EQ(title, row < 0 ? QString() : list.At(row).title) << Shown(list);
        if (row >= 0)
            list.SetCurrent(row);
        return row;
    }
    test::ChosenRandom random;
    Playlist list{1, random};
};

TEST_F(NextTitleTest, GoesThroughTheListAndStopsAtItsEnd) {
    EXPECT_EQ(Play(), -1);
    list.Append(EntriesOf("ab"));
    EXPECT_EQ(Play(), 0);
    EXPECT_EQ(Play(), 1);
    EXPECT_EQ(Play(), -1);
    EXPECT_EQ(Shown(list), ".a!.b");
}

TEST_F(NextTitleTest, RemovesThePlayedOneWhereWanted) {
    list.Append(EntriesOf("abcdef"));
    list.SetCurrent(3);
    EXPECT_EQ(Play(true), 3);
    EXPECT_EQ(Shown(list), "abc!.ef");
    list.SetCurrent(0);
    EXPECT_EQ(Play(true), 0);
    EXPECT_EQ(Shown(list), "!.bc.ef");
    list.SetCurrent(-1);
    EXPECT_EQ(Play(true), 0) << "nothing is removed when none is red";
    EXPECT_EQ(Shown(list), "!.bc.ef");
    list.SetCurrent(3);
    EXPECT_EQ(Play(true), -1);
    EXPECT_EQ(Shown(list), ".bc.e");
}

TEST_F(NextTitleTest, TheMarkWins) {
    list.Append(EntriesOf("abcd"));
    list.SetCurrent(2);
    list.MarkPlayNext(3);
    list.MarkPlayNext(0);
    EXPECT_EQ(Play(), 0);
    EXPECT_EQ(Shown(list), "!.ab.c>d");
    EXPECT_EQ(Play(true), 2);
    EXPECT_EQ(Shown(list), "b.c!.d");
}

TEST_F(NextTitleTest, PassesMissingFilesOver) {
    const struct {
        const char* titles;
        int current;
        int marked;
        bool removes;
        int row;
        const char* shown;
    } cases[] = {
        {"aBCd", 0, -1, false, 3, ".aBC!.d"}, {"aBCd", 0, -1, true, 2, "BC!.d"}, {"aBC", 0, -1, false, -1, ".aB!C"},
        {"aBC", 0, -1, true, -1, "B!C"},      {"AB", -1, -1, false, -1, "A!B"},  {"aBc", 0, 1, false, 2, ".aB!.c"},
        {"Abc", 1, 0, false, 1, "A!.bc"},     {"Abc", 1, 0, true, 1, "A!.c"},    {"aB", 0, 1, true, -1, "!B"}};
    for (const auto& [titles, current, marked, removes, row, shown] : cases) {
        list.Replace(EntriesOf(titles));
        list.SetCurrent(current);
        list.MarkPlayNext(marked);
        EXPECT_EQ(Play(removes), row) << titles;
        EXPECT_EQ(Shown(list), shown) << titles;
    }
}

TEST_F(NextTitleTest, WhatWasPassedOverIsNotRemovedLater) {
    list.Append(EntriesOf("aBC"));
    list.SetCurrent(0);
    EXPECT_EQ(Play(true), -1);
    EXPECT_EQ(Play(true), -1);
    EXPECT_EQ(Shown(list), "B!C");
    list.Append(EntriesOf("d"));
    EXPECT_EQ(Play(true), 2);
    EXPECT_EQ(Shown(list), "BC!.d");
}

TEST_F(NextTitleTest, PeekAgreesAndEveryRunEnds) {
    std::mt19937 dice(4711);
    for (int run = 0; run < 3000; ++run) {
        QByteArray titles;
        for (unsigned count = dice() % 8; count > 0; --count)
            titles.append(static_cast<char>((dice() % 2 ? 'a' : 'A') + dice() % 26));
        list.Replace(EntriesOf(titles));
        for (int row = 0; row < list.Count(); ++row) {
            if (dice() % 3 == 0)
                list.MarkPlayNext(row);
        }
        const bool removes = dice() % 2 == 0;
        int played = 0;
        while (Play(removes) >= 0)
            ASSERT_LE(++played, 2 * titles.size()) << titles.toStdString();
        if (removes) {
            ASSERT_TRUE(std::none_of(list.Entries().begin(), list.Entries().end(), [&](const PlaylistEntry& entry) {
                return entry.title.back().isUpper() && !titles.contains(entry.title.toLatin1());
            }));
            ASSERT_EQ(std::count_if(titles.begin(), titles.end(), [](char c) { return c >= 'A' && c <= 'Z'; }),
                      std::count_if(list.Entries().begin(), list.Entries().end(),
                                    [](const PlaylistEntry& entry) { return entry.title.back().isUpper(); }))
                << "only what was played is removed: " << titles.toStdString();
        }
    }
}

} // namespace kalvo
