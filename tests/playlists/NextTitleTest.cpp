#include "playlists/NextTitle.h"

#include "playlists/PlaylistSupport.h"

#include <gtest/gtest.h>

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

TEST_F(NextTitleTest, TakesMarksFirstAndPassesMissingFilesOver) {
    const struct {
        const char* titles;
        int current;
        int marked;
        bool removes;
        int row;
        const char* shown;
    } cases[] = {
        {"", -1, -1, false, -1, ""},           {"ab", -1, -1, false, 0, "!.ab"},  {"ab", 1, -1, false, -1, "a!.b"},
        {"abcdef", 3, -1, true, 3, "abc!.ef"}, {"abc", 0, -1, true, 0, "!.bc"},   {"abc", 2, -1, true, -1, "ab"},
        {"abcd", 2, 0, false, 0, "!.ab.cd"},   {"abcd", 0, 3, true, 2, "bc!.d"},  {"abcd", 2, 2, true, 2, "ab!.d"},
        {"aBCd", 0, -1, false, 3, ".aBC!.d"},  {"aBCd", 0, -1, true, 2, "BC!.d"}, {"aBC", 0, -1, false, -1, ".aB!C"},
        {"aBC", 0, -1, true, -1, "B!C"},       {"AB", -1, -1, false, -1, "A!B"},  {"aBc", 0, 1, false, 2, ".aB!.c"},
        {"Abc", 1, 0, false, 1, "A!.bc"},      {"Abc", 1, 0, true, 1, "A!.c"},    {"aB", 0, 1, true, -1, "!B"}};
    for (const auto& [titles, current, marked, removes, row, shown] : cases) {
        list.Replace(EntriesOf(titles));
        list.SetCurrent(current);
        list.MarkPlayNext(marked);
        EXPECT_EQ(Play(removes), row) << titles;
        EXPECT_EQ(Shown(list), shown) << titles;
    }
}

} // namespace kalvo
