#include "playlists/PlaylistActions.h"

#include "playlists/AnsweredQuestions.h"
#include "playlists/PlaylistSupport.h"

#include <gtest/gtest.h>

namespace kalvo {

using test::EntriesOf;
using test::Shown;

class PlaylistActionsTest : public ::testing::Test {
protected:
    static QList<TitleRecord> Titles(const char* names) {
        QList<TitleRecord> titles;
        for (const PlaylistEntry& entry : EntriesOf(names)) {
            TitleRecord title;
            title.Titel = entry.title;
            title.Interpret = entry.artist;
            title.Zeit = entry.duration;
            title.Pfad = entry.path;
            title.Extra1 = QStringLiteral("Kommentar");
            titles.append(title);
        }
        return titles;
    }
    static QList<DraggedEntry> Dragged(const Playlist& list, const QList<int>& rows) {
        QList<DraggedEntry> dragged;
        for (const int row : rows)
            dragged.append({list.At(row), row});
        return dragged;
    }

    test::ChosenRandom random;
    Playlist first{1, random}, second{2, random};
    test::AnsweredQuestions questions;
    PlaylistActions actions{first, second, questions};
    QSet<QString> missing{QStringLiteral("/music/X")};
};

TEST_F(PlaylistActionsTest, AddsTitlesWithTheirQuestions) {
    second.Append(EntriesOf("ab"));
    questions.answers = {QStringLiteral("Abbrechen"), QStringLiteral("Nein")};
    actions.AddTitles(2, Titles("aXbc"), missing);
    EXPECT_EQ(Shown(second), "abac") << "Abbrechen adds and the run goes on";
    EXPECT_EQ(second.At(3).info, QStringLiteral("Kommentar"));
    ASSERT_EQ(questions.said.size(), 3);
    EXPECT_EQ(questions.said.at(0), QStringLiteral(" Achtung!|Titel: A-a - a\nbereits in Wiedergabeliste 2 vorhanden.\n"
                                                   "Soll der Titel trotzdem der Wiedergabeliste hinzugefügt werden?"));
    EXPECT_EQ(questions.said.at(1), QStringLiteral("Datei:\n/music/X\nist nicht mehr vorhanden!"));
    questions.answers = {QStringLiteral("Ja")};
    actions.AddTitles(2, Titles("da"), missing, 1);
    EXPECT_EQ(Shown(second), "adabac");
}

TEST_F(PlaylistActionsTest, DistributesFromListOne) {
    actions.Distribute(Titles("aXbc"), missing);
    EXPECT_EQ(Shown(first) + "|" + Shown(second), "ac|b");
    EXPECT_TRUE(questions.said.isEmpty());
    actions.Distribute(Titles("bad"), missing);
    EXPECT_EQ(Shown(first) + "|" + Shown(second), "acbd|ba") << "each target is asked about its own entries only";
    EXPECT_TRUE(questions.said.isEmpty());
    actions.Distribute(Titles("a"), missing);
    EXPECT_EQ(Shown(first), "acbd");
    EXPECT_EQ(questions.said.size(), 1);
}

TEST_F(PlaylistActionsTest, ActsOnTheActiveListAndAsksBeforeItClears) {
    first.Append(EntriesOf("abc"));
    second.Append(EntriesOf("xyz"));
    actions.SetActiveList(2);
    actions.MarkPlayNext({0, 2});
    actions.UnmarkPlayNext({1, 2});
    actions.RemoveRows(2, {1});
    EXPECT_EQ(Shown(second), ">x<z");
    EXPECT_FALSE(actions.RemoveAll());
    EXPECT_EQ(questions.said.back(),
              QStringLiteral(" Achtung!|Wollen Sie wirklich alle Titel der Wiedergabeliste löschen?"));
    questions.answers = {QStringLiteral("Ja")};
    EXPECT_TRUE(actions.RemoveAll());
    actions.AddFromPlayer(2, QStringLiteral("p"), {}, QStringLiteral("02:00"), QStringLiteral("/music/p"));
    actions.AddFromPlayer(2, QStringLiteral("q"), {}, {}, {});
    EXPECT_EQ(Shown(first) + "|" + Shown(second), "abc|p");
}

TEST_F(PlaylistActionsTest, DropsEntriesEvenWhenTheListWentOnMeanwhile) {
    first.Append(EntriesOf("abcde"));
    first.SetCurrent(0);
    const QList<DraggedEntry> dragged = Dragged(first, {1, 3});
    first.Remove({0, 1});
    actions.DropEntries(2, 0, dragged, 1);
    EXPECT_EQ(Shown(first) + "|" + Shown(second), "ce|d") << "b was played and removed during the drag";
    actions.DropEntries(2, 0, Dragged(first, {0}), 0);
    EXPECT_EQ(Shown(first) + "|" + Shown(second), "ce|cd");
    actions.DropEntries(1, 0, Dragged(first, {1}), 1);
    EXPECT_EQ(Shown(first), "ec");
}

} // namespace kalvo
