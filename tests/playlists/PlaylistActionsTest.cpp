#include "playlists/PlaylistSupport.h"

#include <gtest/gtest.h>

namespace kalvo::test {

struct PlaylistActionsTest : ::testing::Test, ListDesk {
    static QList<DraggedEntry> Dragged(const Playlist& list, const QList<int>& rows) {
        QList<DraggedEntry> dragged;
        for (const int row : rows)
            dragged.append({list.At(row), row});
        return dragged;
    }

    QSet<QString> missing{u"/music/X"_s};
};

TEST_F(PlaylistActionsTest, AddsTitlesWithTheirQuestions) {
    second.Append(EntriesOf("ab"));
    questions.answers = {u"Abbrechen"_s, u"Nein"_s};
    actions.AddTitles(2, TitlesOf("aXbc"), missing);
    EXPECT_EQ(Shown(second), "abac") << "Abbrechen adds and the run goes on";
    EXPECT_EQ(second.At(3).info, u"Kommentar"_s);
    ASSERT_EQ(questions.said.size(), 3);
    EXPECT_EQ(questions.said.at(0), u" Achtung!|Titel: A-a - a\nbereits in Wiedergabeliste 2 vorhanden.\n"
                                    "Soll der Titel trotzdem der Wiedergabeliste hinzugefügt werden?"_s);
    EXPECT_EQ(questions.said.at(1), u"Datei:\n/music/X\nist nicht mehr vorhanden!"_s);
    questions.answers = {u"Ja"_s};
    actions.AddTitles(2, TitlesOf("da"), missing, 1);
    EXPECT_EQ(Shown(second), "adabac");
}

TEST_F(PlaylistActionsTest, DistributesFromListOne) {
    actions.Distribute(TitlesOf("aXbc"), missing);
    EXPECT_EQ(Both(), "ac|b");
    actions.Distribute(TitlesOf("bad"), missing);
    EXPECT_EQ(Both(), "acbd|ba") << "each target is asked about its own entries only";
    EXPECT_TRUE(questions.said.isEmpty());
    actions.Distribute(TitlesOf("a"), missing);
    EXPECT_EQ(Shown(first), "acbd");
    EXPECT_EQ(questions.said.size(), 1);
}

TEST_F(PlaylistActionsTest, AsksBeforeItClearsTheActiveList) {
    first.Append(EntriesOf("abc"));
    second.Append(EntriesOf("xyz"));
    actions.SetActiveList(2);
    EXPECT_FALSE(actions.RemoveAll());
    EXPECT_EQ(questions.said.back(), u" Achtung!|Wollen Sie wirklich alle Titel der Wiedergabeliste löschen?"_s);
    EXPECT_EQ(Both(), "abc|xyz");
    questions.answers = {u"Ja"_s};
    EXPECT_TRUE(actions.RemoveAll());
    actions.AddFromPlayer(2, u"p"_s, {}, u"02:00"_s, u"/music/p"_s);
    actions.AddFromPlayer(2, u"q"_s, {}, {}, {});
    EXPECT_EQ(Both(), "abc|p");
}

TEST_F(PlaylistActionsTest, DropsEntriesEvenWhenTheListWentOnMeanwhile) {
    first.Append(EntriesOf("abcde"));
    first.SetCurrent(0);
    const QList<DraggedEntry> dragged = Dragged(first, {1, 3});
    first.Remove({0, 1});
    actions.DropEntries(2, 0, dragged, 1);
    EXPECT_EQ(Both(), "ce|d") << "b was played and removed during the drag";
    actions.DropEntries(2, 0, Dragged(first, {0}), 0);
    EXPECT_EQ(Both(), "ce|cd");
    actions.DropEntries(1, 0, Dragged(first, {1}), 1);
    EXPECT_EQ(Shown(first), "ec");
}

TEST_F(PlaylistActionsTest, ThePlayerGoesOnBetweenActsThatAreTakenBack) {
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
    first.SetPath(0, u"/neu"_s);
    const int steps = stack.count();
    actions.RemoveRows(1, {7});
    EXPECT_EQ(stack.count(), steps) << "what changes nothing is no step";
    stack.undo();
    EXPECT_EQ(first.At(0).path, u"/neu"_s) << "a moved file stays where it is now";
}

TEST_F(PlaylistActionsTest, AQuestionInBetweenIsStillOneStep) {
    first.Append(EntriesOf("a"));
    questions.answers = {u"Ja"_s};
    questions.meanwhile = [this] {
        first.SetCurrent(0);
        first.Append(EntriesOf("w"));
    };
    actions.AddTitles(1, TitlesOf("ba"), {});
    EXPECT_EQ(Shown(first), "!.abwa");
    stack.undo();
    EXPECT_EQ(Shown(first), "!.aw") << "what the helper added while the question was open stays";
    stack.redo();
    EXPECT_EQ(first.Count(), 4);
}

} // namespace kalvo::test
