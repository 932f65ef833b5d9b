#include "playlists/ListUndo.h"

#include "playlists/AnsweredQuestions.h"
#include "playlists/NextTitle.h"
#include "playlists/PlaylistActions.h"
#include "playlists/PlaylistSupport.h"

#include <gtest/gtest.h>

#include <random>

namespace kalvo {

using test::EntriesOf;
using test::Shown;

class ListUndoTest : public ::testing::Test {
protected:
    static bool Exists(const QString& path) { return !path.back().isUpper(); }

    SystemRandom random;
    Playlist first{1, random}, second{2, random};
    test::AnsweredQuestions questions;
    PlaylistActions actions{first, second, questions};
    QUndoStack& stack = actions.Undo().Stack();
};

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
    PlaylistActions live(first, second, interrupted);
    TitleRecord b, a;
    b.Titel = QStringLiteral("b");
    b.Pfad = QStringLiteral("/music/b");
    a.Titel = QStringLiteral("a");
    a.Pfad = QStringLiteral("/music/a");
    live.AddTitles(1, {b, a}, {});
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
