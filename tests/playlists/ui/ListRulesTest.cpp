// Both lists and their panels against the rules of playlists as they are written down, in thousands of random acts.

#include "playlists/NextTitle.h"
#include "playlists/PlaylistSupport.h"
#include "playlists/ui/PlaylistPanel.h"

#include <QLabel>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace kalvo::test {
namespace {

/** The same numbers for the lists and for the oracle, each drawing its own. */
class Numbers final : public RandomSource {
public:
    double Uniform() override { return std::uniform_real_distribution<double>()(engine_); }
    QString Key() { return QString::number(static_cast<int>(Uniform() * 10000 + 1)); }

private:
    std::mt19937 engine_{4711};
};

/** Titles in capitals have no file. */
bool Exists(const QString& path) {
    return !path.back().isUpper();
}

/** One list, as its rules say it word for word; rows count from 1. */
struct Oracle {
    struct Item {
        QString title, key;
        int icon = 0;
        bool isRed = false, isPassedOver = false, isSelected = false;
    };
    std::vector<Item> items;
    bool isSorting = false;

    int Count() const { return static_cast<int>(items.size()); }
    Item& At(int row) { return items.at(static_cast<std::size_t>(row - 1)); }
    /** The first row whose field has this value, 0 without one. */
    template<typename Value>
    int First(Value Item::*field, Value value) const {
        const auto found =
            std::find_if(items.begin(), items.end(), [&](const Item& item) { return item.*field == value; });
        return found == items.end() ? 0 : static_cast<int>(found - items.begin()) + 1;
    }
    void Paint(int row, bool passedOver) {
        for (Item& item : items)
            item.isRed = item.isPassedOver = false;
        At(row).isRed = true;
        At(row).isPassedOver = passedOver;
    }
    void Sort() {
        const auto isBefore = [](const Item& one, const Item& two) {
            return one.key.toStdString() < two.key.toStdString();
        };
        std::stable_sort(items.begin(), items.end(), isBefore);
    }
    void Append(const Item& item) {
        items.push_back(item);
        if (isSorting)
            Sort();
    }
    void Shuffle(Numbers& numbers) {
        for (Item& item : items)
            item.key = numbers.Key();
        isSorting = true;
        Sort();
    }
    /** Row of the title to load, 0 at the end. */
    int Next(bool removesPlayed) {
        for (;;) {
            int p = First(&Item::isRed, true) + 1;
            if (removesPlayed && p > 1 && !At(p - 1).isPassedOver) { // a title without a file was not played
                items.erase(items.begin() + p - 2);
                p = p - 1;
            }
            if (const int marked = First(&Item::icon, 2); marked > 0)
                p = marked;
            else if (p > Count())
                return 0;
            if (Exists(At(p).title)) {
                At(p).icon = 1;
                Paint(p, false);
                return p;
            }
            At(p).icon = At(p).icon == 2 ? 0 : At(p).icon;
            Paint(p, true);
        }
    }
    std::string Shown() const {
        std::string text;
        for (const Item& item : items)
            text += Sign(item.isRed, item.icon) + item.title.toStdString() + item.key.toStdString();
        return text;
    }
    std::string Caption(int number) const {
        return "Player " + std::to_string(number) + "       " + std::to_string(First(&Item::isSelected, true)) +
               ". von " + std::to_string(items.size()) + " in Standard";
    }
};

struct ListRulesTest : ::testing::Test {
    using Lists = std::array<Oracle, 2>;

    int Roll(int sides) { return static_cast<int>(dice() % static_cast<unsigned>(sides)); }
    Oracle& OracleOf(int number) { return oracles.at(static_cast<std::size_t>(number - 1)); }
    PlaylistPanel& PanelOf(int number) { return number == 1 ? first : second; }
    /** Rows of about a third of a list. */
    QList<int> SomeRows(int count) {
        QList<int> rows;
        for (int row = 0; row < count; ++row) {
            if (Roll(3) == 0)
                rows.prepend(row);
        }
        return rows;
    }
    /** What undo brings back has nothing selected. */
    void GoTo(std::size_t state) {
        at = state;
        const Lists before = std::exchange(oracles, history.at(at));
        for (std::size_t list = 0; list < 2; ++list) {
            Oracle& now = oracles.at(list);
            const Oracle& then = before.at(list);
            const bool isUntouched = now.Shown() == then.Shown() && now.isSorting == then.isSorting;
            for (std::size_t row = 0; row < now.items.size(); ++row)
                now.items[row].isSelected = isUntouched && then.items[row].isSelected;
        }
    }
    /** Takes rows out of an oracle's list, in their order. */
    static std::vector<Oracle::Item> Take(Oracle& oracle, const QList<int>& rows) {
        std::vector<Oracle::Item> taken, kept;
        for (int row = 0; row < oracle.Count(); ++row)
            (rows.contains(row) ? taken : kept).push_back(oracle.At(row + 1));
        oracle.items = kept;
        return taken;
    }
    void Act(int number);
    void Player(int number);
    void Compare(int step) {
        for (const int number : {1, 2}) {
            ASSERT_EQ(Shown(actions.List(number), true), OracleOf(number).Shown()) << "step " << step;
            const auto* caption = PanelOf(number).findChild<QLabel*>(u"Label%1"_s.arg(15 + number));
            ASSERT_EQ(caption->text().toStdString(), OracleOf(number).Caption(number)) << "step " << step;
        }
    }

    std::mt19937 dice{20261121};
    Numbers numbers, own;
    Playlist list1{1, numbers}, list2{2, numbers};
    AnsweredQuestions questions;
    PlaylistActions actions{list1, list2, questions};
    QUndoStack& stack = actions.Undo().Stack();
    PlaylistPanel first{list1}, second{list2};
    Lists oracles;
    std::vector<Lists> history{oracles};
    std::size_t at = 0;
};

/** What a player does: no step of undo, and here the end of all that could be undone. */
void ListRulesTest::Player(int number) {
    Playlist& list = actions.List(number);
    const bool removesPlayed = Roll(2) == 0;
    const int peeked = PeekNextTitle(list, Exists, removesPlayed);
    const quint64 coming = peeked < 0 ? 0 : list.At(peeked).id;
    const int row = TakeNextTitle(list, removesPlayed, Exists);
    EXPECT_EQ(coming, row < 0 ? 0 : list.At(row).id);
    if (row >= 0)
        list.SetCurrent(row);
    EXPECT_EQ(OracleOf(number).Next(removesPlayed), row + 1);
    stack.clear();
    history = {oracles};
    at = 0;
}

/** What the user does. */
void ListRulesTest::Act(int number) {
    Playlist& list = actions.List(number);
    Oracle& oracle = OracleOf(number);
    Oracle& other = OracleOf(3 - number);
    const int count = list.Count();
    const QList<int> rows = SomeRows(count);
    const int row = count > 0 ? Roll(count) : -1;
    const int target = Roll(count + 1);
    const QString title(QChar(u'a' + Roll(26) - (Roll(5) == 0 ? 32 : 0)));
    actions.SetActiveList(number);
    switch (Roll(count > 12 ? 7 : 9)) {
    case 0:
        actions.RemoveRows(number, rows);
        Take(oracle, rows);
        break;
    case 1: {
        actions.MoveRows(number, rows, target);
        oracle.isSorting = oracle.isSorting && rows.isEmpty();
        const auto before = std::count_if(rows.begin(), rows.end(), [target](int one) { return one < target; });
        const std::vector<Oracle::Item> moved = Take(oracle, rows);
        oracle.items.insert(oracle.items.begin() + target - before, moved.begin(), moved.end());
        break;
    }
    case 2:
        actions.MoveToList(3 - number, rows);
        for (const Oracle::Item& item : Take(oracle, rows))
            other.Append({item.title, own.Key()});
        break;
    case 3:
        actions.MarkPlayNext({row});
        if (row >= 0)
            oracle.At(row + 1).icon = 2;
        break;
    case 4:
        actions.UnmarkPlayNext({row});
        if (row >= 0 && oracle.At(row + 1).icon == 2)
            oracle.At(row + 1).icon = 3;
        break;
    case 5:
        actions.Shuffle();
        oracle.Shuffle(own);
        break;
    case 6:
        questions.answers = {u"Ja"_s};
        if (Roll(8) == 0 && actions.RemoveAll())
            oracle = {};
        break;
    case 7:
        actions.AddEntries(number, {Entry(title, {})});
        oracle.Append({title, own.Key()});
        break;
    default:
        actions.AddEntries(number, {Entry(title, {})}, target);
        oracle.isSorting = false;
        oracle.items.insert(oracle.items.begin() + target, {title, own.Key()});
    }
}

TEST_F(ListRulesTest, HoldThroughThousandsOfActs) {
    for (int step = 0; step < 12000; ++step) {
        const int number = 1 + Roll(2);
        if (Roll(5) == 0) {
            Player(number);
        } else if (Roll(6) == 0) {
            stack.undo();
            GoTo(at > 0 ? at - 1 : 0);
        } else if (Roll(6) == 0) {
            stack.redo();
            GoTo(std::min(at + 1, history.size() - 1));
        } else if (Roll(4) == 0 && !actions.List(number).IsEmpty()) {
            const int row = Roll(actions.List(number).Count());
            PanelOf(number).View().selectRow(row);
            for (int one = 1; one <= OracleOf(number).Count(); ++one)
                OracleOf(number).At(one).isSelected = one == row + 1;
        } else {
            const int index = stack.index();
            Act(number);
            if (stack.index() != index) {
                history.resize(++at);
                history.push_back(oracles);
            }
        }
        ASSERT_NO_FATAL_FAILURE(Compare(step));
    }
}

} // namespace
} // namespace kalvo::test
