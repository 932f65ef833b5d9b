#include "playlists/ListUndo.h"

#include "playlists/AnsweredQuestions.h"
#include "playlists/ListCaption.h"
#include "playlists/NextTitle.h"
#include "playlists/PlaylistActions.h"
#include "playlists/PlaylistMerge.h"
#include "playlists/PlaylistSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace kalvo {

using test::EntriesOf;
using test::Shown;

class ListUndoTest : public ::testing::Test {
protected:
    std::string Both() const { return Shown(first) + "|" + Shown(second); }
    static bool Exists(const QString& path) { return !path.back().isUpper(); }

    SystemRandom random;
    Playlist first{1, random}, second{2, random};
    test::AnsweredQuestions questions;
    PlaylistActions actions{first, second, questions, Exists};
    QUndoStack& stack = actions.Undo().Stack();
};

TEST_F(ListUndoTest, EveryActComesBackAndGoesAgain) {
    first.Append(EntriesOf("abcd"));
    second.Append(EntriesOf("xy"));
    first.SetCurrent(1);
    questions.answers = {QStringLiteral("Ja")};
    const std::function<void()> acts[] = {[this] {
                                              actions.RemoveRows(1, {1, 2});
                                          },
                                          [this] { actions.MoveRows(1, {0}, 2); },
                                          [this] { actions.MoveToList(2, {0}); },
                                          [this] { actions.MarkPlayNext({0}); },
                                          [this] { actions.UnmarkPlayNext({0}); },
                                          [this] { actions.Shuffle(); },
                                          [this] { actions.AddFromPlayer(2, QStringLiteral("p"), {}, {}, "/p"); },
                                          [this] {
                                              actions.DropEntries(1, 0, {{second.At(0), 0}}, 2);
                                          },
                                          [this] { EXPECT_TRUE(actions.RemoveAll()); }};
    std::vector<std::string> states{Both()};
    for (const auto& act : acts) {
        act();
        states.push_back(Both());
        EXPECT_EQ(stack.count(), static_cast<int>(states.size()) - 1);
    }
    for (std::size_t step = states.size() - 1; step > 0; --step) {
        EXPECT_EQ(Both(), states[step]);
        stack.undo();
    }
    EXPECT_EQ(Both(), "a!.bcd|xy");
    for (const std::string& state : states) {
        EXPECT_EQ(Both(), state);
        stack.redo();
    }
}

TEST_F(ListUndoTest, WhatChangesNothingIsNoStep) {
    actions.RemoveRows(1, {0});
    actions.MoveToList(2, {5});
    actions.UnmarkPlayNext({0});
    EXPECT_EQ(stack.count(), 0);
}

TEST_F(ListUndoTest, ThePlayerGoesOnInBetween) {
    first.Append(EntriesOf("abcdef"));
    first.SetCurrent(0);
    actions.RemoveRows(1, {3, 4});
    first.SetCurrent(1);
    first.Remove({0});
    first.Append(EntriesOf("z"));
    EXPECT_EQ(Shown(first), "!.bcfz");
    stack.undo();
    EXPECT_EQ(Shown(first), "!.bcdefz") << "the played one stays away, the added one stays, red is where it is now";
    stack.redo();
    EXPECT_EQ(Shown(first), "!.bcfz");
    actions.RemoveRows(1, {0});
    stack.undo();
    EXPECT_EQ(Shown(first), "!.bcfz") << "the red mark comes back with its entry";
    actions.RemoveRows(1, {0});
    first.SetCurrent(1);
    stack.undo();
    EXPECT_EQ(Shown(first), ".bc!.fz") << "one red entry only";
}

TEST_F(ListUndoTest, AMovedFileStaysWhereItIsNow) {
    first.Append(EntriesOf("abc"));
    actions.RemoveRows(1, {2});
    first.SetPath(0, QStringLiteral("/neu"));
    stack.undo();
    EXPECT_EQ(first.Count(), 3);
    EXPECT_EQ(first.At(0).path, QStringLiteral("/neu"));
}

TEST_F(ListUndoTest, AQuestionInBetweenIsStillOneStep) {
    first.Append(EntriesOf("a"));
    class Interrupted final : public PlaylistQuestions {
    public:
        explicit Interrupted(Playlist& list) : list_(list) {}
        void Tell(const QString&) override {}
        QString Ask(const QString&, const QString&) override {
            list_.SetCurrent(0);
            list_.Append(EntriesOf("w"));
            return QStringLiteral("Ja");
        }

    private:
        Playlist& list_;
    } interrupted(first);
    PlaylistActions live(first, second, interrupted, Exists);
    TitleRecord b, a;
    b.Titel = QStringLiteral("b");
    b.Pfad = QStringLiteral("/music/b");
    a.Titel = QStringLiteral("a");
    a.Pfad = QStringLiteral("/music/a");
    live.AddTitles(1, {b, a});
    EXPECT_EQ(Shown(first), "!.abwa");
    live.Undo().Stack().undo();
    EXPECT_EQ(Shown(first), "!.aw") << "what the helper added while the question was open stays";
    live.Undo().Stack().redo();
    EXPECT_EQ(first.Count(), 4);
}

TEST_F(ListUndoTest, TheNameBelongsToIt) {
    QStringList names;
    QObject::connect(&actions.Undo(), &ListUndo::NameChanged, [&names](const QString& name) { names.append(name); });
    {
        const ListUndo::Step step(actions.Undo(), QStringLiteral("x"));
        actions.Undo().SetName(QStringLiteral("Party"));
        actions.RemoveRows(1, {});
        first.Append(EntriesOf("a"));
    }
    EXPECT_EQ(stack.count(), 1);
    stack.undo();
    EXPECT_EQ(names.join(u' '), QStringLiteral("Party Standard"));
}

/** The simplest history that could be right: every state as a text. */
TEST_F(ListUndoTest, AgreesWithTheOracle) {
    std::mt19937 dice(20261121);
    const auto roll = [&dice](int sides) { return static_cast<int>(dice() % static_cast<unsigned>(sides)); };
    for (int round = 0; round < 400; ++round) {
        stack.clear();
        first.Replace(EntriesOf("abc"));
        second.Replace({});
        std::vector<std::string> states{Both()};
        std::size_t at = 0;
        for (int step = 0; step < 40; ++step) {
            actions.SetActiveList(1 + roll(2));
            Playlist& list = actions.List(actions.ActiveList());
            const int row = roll(std::max(1, list.Count()));
            const std::string before = Both();
            const int count = stack.index();
            switch (roll(8)) {
            case 0:
                actions.AddEntries(list.Number(),
                                   {test::Entry(QString(QLatin1Char(static_cast<char>('a' + roll(26)))))},
                                   roll(list.Count() + 1));
                break;
            case 1:
                actions.RemoveRows(list.Number(), {row, row + 2});
                break;
            case 2:
                actions.MoveRows(list.Number(), {row, row + 1}, roll(list.Count() + 1));
                break;
            case 3:
                actions.MoveToList(3 - list.Number(), {row});
                break;
            case 4:
                actions.MarkPlayNext({row});
                break;
            case 5:
                actions.UnmarkPlayNext({row});
                break;
            case 6:
                actions.Shuffle();
                break;
            default:
                if (at > 0 && roll(2) == 0) {
                    stack.undo();
                    ASSERT_EQ(Both(), states[--at]);
                } else if (at + 1 < states.size()) {
                    stack.redo();
                    ASSERT_EQ(Both(), states[++at]);
                }
                continue;
            }
            if (stack.index() == count) {
                ASSERT_EQ(Both(), before);
                continue;
            }
            states.resize(++at);
            states.push_back(Both());
            for (const Playlist* one : {&first, &second}) {
                ASSERT_EQ(ListCaption(one->Number(), -1, one->Count(), actions.Undo().Name()),
                          QStringLiteral("Player %1       0. von %2 in Standard").arg(one->Number()).arg(one->Count()));
            }
        }
    }
}

/** A player takes titles while the user acts and takes back: nothing played twice, never two red, no entry doubled. */
TEST_F(ListUndoTest, KeepsItsPromisesWhilePlaying) {
    std::mt19937 dice(77);
    const auto roll = [&dice](int sides) { return static_cast<int>(dice() % static_cast<unsigned>(sides)); };
    for (int step = 0; step < 8000; ++step) {
        switch (roll(6)) {
        case 0:
            actions.AddEntries(1, EntriesOf(step % 7 == 0 ? "aX" : "b"), roll(first.Count() + 1));
            break;
        case 1:
            actions.RemoveRows(1, {roll(first.Count() + 1)});
            break;
        case 2:
            stack.undo();
            break;
        case 3:
            stack.redo();
            break;
        case 4:
            actions.MarkPlayNext({roll(first.Count() + 1)});
            break;
        default: {
            const int row = TakeNextTitle(first, roll(2) == 0, Exists);
            if (row >= 0) {
                const quint64 id = first.At(row).id;
                first.SetCurrent(row);
                ASSERT_EQ(first.At(first.CurrentRow()).id, id);
                ASSERT_EQ(first.At(row).icon, EntryIcon::Played);
            }
        }
        }
        QSet<quint64> ids;
        for (const PlaylistEntry& entry : first.Entries())
            ids.insert(entry.id);
        ASSERT_EQ(ids.size(), first.Count()) << "step " << step;
        ASSERT_LT(first.CurrentRow(), first.Count());
    }
}

} // namespace kalvo
