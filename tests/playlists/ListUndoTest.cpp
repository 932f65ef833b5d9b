#include "playlists/ListUndo.h"

#include "playlists/AnsweredQuestions.h"
#include "playlists/PlaylistActions.h"
#include "playlists/PlaylistSupport.h"

#include <gtest/gtest.h>

namespace kalvo {

using test::EntriesOf;
using test::Shown;

class ListUndoTest : public ::testing::Test {
protected:
    SystemRandom random;
    Playlist first{1, random}, second{2, random};
    test::AnsweredQuestions questions;
    PlaylistActions actions{first, second, questions};
    QUndoStack& stack = actions.Undo().Stack();
};

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
    actions.RemoveRows(1, {3});
    first.SetPath(0, QStringLiteral("/neu"));
    const int steps = stack.count();
    actions.RemoveRows(1, {7});
    EXPECT_EQ(stack.count(), steps) << "what changes nothing is no step";
    stack.undo();
    EXPECT_EQ(first.At(0).path, QStringLiteral("/neu")) << "a moved file stays where it is now";
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

} // namespace kalvo
