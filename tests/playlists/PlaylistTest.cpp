#include "playlists/PlaylistSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace kalvo {

using test::EntriesOf;
using test::Shown;

class PlaylistTest : public ::testing::Test {
protected:
    test::ChosenRandom random;
    Playlist list{1, random};
};

TEST_F(PlaylistTest, KeysAreWholeNumbersWithoutZeros) {
    random.Choose({0.0, 0.47109, 0.99999999});
    for (const char* key : {"1", "4711", "10000"})
        EXPECT_EQ(list.FreshShuffleKey().toStdString(), key);
    random.Choose({0.5});
    list.Append({test::Entry(QStringLiteral("a"), {}), test::Entry(QStringLiteral("b"), QStringLiteral("7"))});
    EXPECT_EQ(list.At(0).shuffleKey, QStringLiteral("5001"));
    EXPECT_EQ(list.At(1).shuffleKey, QStringLiteral("7"));
}

TEST_F(PlaylistTest, ShuffleSortsAsTextAndStaysOn) {
    list.Append(EntriesOf("abcd"));
    list.SetCurrent(0);
    random.Choose({0.0008, 0.0009, 0.99999, 0.0001}); // 9, 10, 10000, 2
    list.Shuffle();
    EXPECT_EQ(Shown(list), "bcd!.a");
    list.Append({test::Entry(QStringLiteral("e"), QStringLiteral("15"))});
    EXPECT_EQ(Shown(list), "bced!.a");
    list.Move({0}, 5);
    list.Append({test::Entry(QStringLiteral("f"), QStringLiteral("0"))});
    EXPECT_EQ(Shown(list), "ced!.abf") << "a move by hand ends the sorting";
}

TEST_F(PlaylistTest, MovesRowsTogetherInTheirOrder) {
    const struct {
        QList<int> rows;
        int target;
        const char* shown;
    } cases[] = {{{3, 1}, 0, "bda!.ce"}, {{0, 1}, 5, "!.cdeab"},  {{2}, 2, "ab!.cde"},    {{2}, 3, "ab!.cde"},
                 {{0, 4}, 2, "bae!.cd"}, {{9, -1}, 0, "ab!.cde"}, {{4, 4}, -7, "eab!.cd"}};
    for (const auto& [rows, target, shown] : cases) {
        list.Replace(EntriesOf("abcde"));
        list.SetCurrent(2);
        list.Move(rows, target);
        EXPECT_EQ(Shown(list), shown);
    }
}

TEST_F(PlaylistTest, EntriesCanBeTakenByTheMouseAndNothingElse) {
    list.Append(EntriesOf("ab"));
    EXPECT_TRUE(list.flags(list.index(1, Playlist::Title)).testFlag(Qt::ItemIsDragEnabled));
    EXPECT_FALSE(list.flags({}).testFlag(Qt::ItemIsDragEnabled));
}

TEST_F(PlaylistTest, RemovingTakesTheRedMarkAlong) {
    list.Append(EntriesOf("abcde"));
    list.SetCurrent(3);
    list.Remove({4, 0, 0, 17});
    EXPECT_EQ(Shown(list), "bc!.d");
    list.Remove({2});
    EXPECT_EQ(list.CurrentRow(), -1);
    list.Clear();
    EXPECT_TRUE(list.IsEmpty());
}

TEST_F(PlaylistTest, MarksFollowTheirRules) {
    list.Append(EntriesOf("ab"));
    list.UnmarkPlayNext(0);
    list.MarkPlayNext(1);
    EXPECT_EQ(Shown(list), "a>b");
    list.UnmarkPlayNext(1);
    EXPECT_EQ(Shown(list), "a<b");
    list.MarkPlayNext(1);
    list.SetCurrent(1);
    EXPECT_EQ(Shown(list), "a!.b");
    list.MarkPlayNext(0);
    list.PassOver(0);
    EXPECT_EQ(Shown(list), "!a.b");
    list.SetCurrent(-1);
    EXPECT_EQ(Shown(list), "a.b");
}

/** The simplest list that could be right, by titles. */
struct Oracle {
    struct Item {
        QString title;
        EntryIcon icon = EntryIcon::None;
        bool isRed = false;
    };
    std::vector<Item> items;

    std::string Shown() const {
        std::string text;
        for (const Item& item : items) {
            text += item.isRed ? "!" : "";
            text += std::string(1, "\0.><"[static_cast<int>(item.icon)]).c_str() + item.title.toStdString();
        }
        return text;
    }
    void Paint(int row, bool isRed) {
        for (Item& item : items)
            item.isRed = false;
        items.at(static_cast<size_t>(row)).isRed = isRed;
    }
    void Move(const std::vector<bool>& isMoved, int target) {
        std::vector<Item> before, moved, after;
        for (int row = 0; row < static_cast<int>(items.size()); ++row) {
            const auto place = static_cast<size_t>(row);
            (isMoved[place] ? moved : row < target ? before : after).push_back(items[place]);
        }
        items = before;
        items.insert(items.end(), moved.begin(), moved.end());
        items.insert(items.end(), after.begin(), after.end());
    }
};

TEST_F(PlaylistTest, AgreesWithTheOracle) {
    std::mt19937 dice(20260314);
    const auto roll = [&dice](int sides) { return static_cast<int>(dice() % static_cast<unsigned>(sides)); };
    Oracle oracle;
    for (int step = 0; step < 20000; ++step) {
        const int count = list.Count();
        const int row = count > 0 ? roll(count) : -1;
        const auto at = oracle.items.begin() + std::max(row, 0);
        const QString name(QLatin1Char(static_cast<char>('a' + roll(26))));
        switch (row < 0 || (count < 12 && roll(4) == 0) ? 0 : 1 + roll(6)) {
        case 0: {
            const int target = roll(count + 1);
            list.Insert(target, {test::Entry(name)});
            oracle.items.insert(oracle.items.begin() + target, {name});
            break;
        }
        case 1: {
            const int last = std::min(row + 2, count - 1);
            list.Remove({last, row});
            oracle.items.erase(oracle.items.begin() + last);
            if (last != row)
                oracle.items.erase(oracle.items.begin() + row);
            break;
        }
        case 2: {
            std::vector<bool> isMoved(static_cast<size_t>(count));
            QList<int> rows;
            for (int k = 0; k < count; ++k) {
                isMoved[static_cast<size_t>(k)] = roll(3) == 0;
                if (isMoved[static_cast<size_t>(k)])
                    rows.prepend(k);
            }
            const int target = roll(count + 1);
            list.Move(rows, target);
            oracle.Move(isMoved, target);
            break;
        }
        case 3:
            list.SetCurrent(row);
            oracle.Paint(row, true);
            at->icon = EntryIcon::Played;
            break;
        case 4:
            list.MarkPlayNext(row);
            at->icon = EntryIcon::PlayNext;
            break;
        case 5:
            list.UnmarkPlayNext(row);
            at->icon = at->icon == EntryIcon::PlayNext ? EntryIcon::PlayNextRemoved : at->icon;
            break;
        default:
            list.PassOver(row);
            oracle.Paint(row, true);
            at->icon = at->icon == EntryIcon::PlayNext ? EntryIcon::None : at->icon;
        }
        ASSERT_EQ(Shown(list), oracle.Shown()) << "step " << step;
    }
}

} // namespace kalvo
