#include "playlists/PlaylistActions.h"

#include "playlists/AnsweredQuestions.h"
#include "playlists/PlaylistSupport.h"
#include "support/TestFolder.h"

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
    PlaylistActions actions{first, second, questions, [](const QString& path) { return !path.back().isUpper(); }};
};

TEST_F(PlaylistActionsTest, AddsTitlesWithTheirQuestions) {
    second.Append(EntriesOf("ab"));
    questions.answers = {QStringLiteral("Abbrechen"), QStringLiteral("Nein")};
    actions.AddTitles(2, Titles("aXbc"));
    EXPECT_EQ(Shown(second), "abac") << "Abbrechen adds and the run goes on";
    EXPECT_EQ(second.At(3).info, QStringLiteral("Kommentar"));
    ASSERT_EQ(questions.said.size(), 3);
    EXPECT_EQ(questions.said.at(0), QStringLiteral(" Achtung!|Titel: A-a - a\nbereits in Wiedergabeliste 2 vorhanden.\n"
                                                   "Soll der Titel trotzdem der Wiedergabeliste hinzugefügt werden?"));
    EXPECT_EQ(questions.said.at(1), QStringLiteral("Datei:\n/music/X\nist nicht mehr vorhanden!"));
    questions.answers = {QStringLiteral("Ja")};
    actions.AddTitles(2, Titles("da"), 1);
    EXPECT_EQ(Shown(second), "adabac");
}

TEST_F(PlaylistActionsTest, DistributesFromListOne) {
    actions.Distribute(Titles("aXbc"));
    EXPECT_EQ(Shown(first) + "|" + Shown(second), "ac|b");
    EXPECT_TRUE(questions.said.isEmpty());
    actions.Distribute(Titles("bad"));
    EXPECT_EQ(Shown(first) + "|" + Shown(second), "acbd|ba") << "each target is asked about its own entries only";
    EXPECT_TRUE(questions.said.isEmpty());
    actions.Distribute(Titles("a"));
    EXPECT_EQ(Shown(first), "acbd");
    EXPECT_EQ(questions.said.size(), 1);
}

TEST_F(PlaylistActionsTest, MovesBetweenTheLists) {
    first.Append(EntriesOf("abcd"));
    first.SetCurrent(1);
    first.MarkPlayNext(3);
    random.Choose({0.0041, 0.0042});
    actions.MoveToList(2, {3, 1, 99});
    EXPECT_EQ(Shown(first) + "|" + Shown(second), "ac|bd");
    EXPECT_EQ(second.At(1).shuffleKey, QStringLiteral("43"));
    actions.AddFromPlayer(1, QStringLiteral("p"), {}, QStringLiteral("02:00"), QStringLiteral("/music/p"));
    actions.AddFromPlayer(1, QStringLiteral("q"), {}, {}, {});
    EXPECT_EQ(Shown(first), "acp");
}

TEST_F(PlaylistActionsTest, ActsOnTheActiveList) {
    first.Append(EntriesOf("abc"));
    second.Append(EntriesOf("xyz"));
    actions.SetActiveList(2);
    actions.MarkPlayNext({0, 2});
    actions.UnmarkPlayNext({1, 2});
    actions.RemoveRows(2, {1});
    EXPECT_EQ(Shown(second), ">x<z");
    actions.RemoveAll();
    EXPECT_EQ(second.Count(), 2);
    EXPECT_EQ(questions.said.back(),
              QStringLiteral(" Achtung!|Wollen Sie wirklich alle Titel der Wiedergabeliste löschen?"));
    questions.answers = {QStringLiteral("Ja")};
    actions.RemoveAll();
    EXPECT_EQ(Shown(first) + "|" + Shown(second), "abc|");
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

TEST_F(PlaylistActionsTest, DropsFilesAndFolders) {
    const test::TestFolder folder;
    for (const char* name : {"z/B - b.mp3", "z/a.OGG", "z/deep/c.mp3", "z/cover.jpg", "d.mp3"})
        folder.Write(QString::fromUtf8(name), "x");
    actions.SetRefine([](PlaylistEntry& entry) {
        if (entry.title == QLatin1String("c"))
            entry.artist = QStringLiteral("Tag");
    });
    const QStringList paths = {folder.Path(QStringLiteral("d.mp3")), folder.Path(QStringLiteral("z")),
                               folder.Path(QStringLiteral("z/cover.jpg"))};
    first.Append(EntriesOf("x"));
    EXPECT_EQ(actions.DropFiles(1, 0, paths), 4);
    EXPECT_EQ(Shown(first), "dabcx");
    EXPECT_EQ(first.At(2).artist, QStringLiteral("B"));
    EXPECT_EQ(first.At(3).artist, QStringLiteral("Tag"));
    EXPECT_EQ(actions.DropFiles(1, -1, {folder.Path(QStringLiteral("z/deep"))}), 1);
    EXPECT_EQ(Shown(first), "dabcxc") << "without a row at the end";
}

} // namespace kalvo
