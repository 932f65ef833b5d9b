#include "app/ListCommands.h"

#include "app/FakeWindow.h"
#include "playlists/PlaylistFile.h"
#include "playlists/ui/frmCharts.h"
#include "playlists/ui/frmVerlauf.h"

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

/** The main window with three titles in the first list. */
struct ListCommandsTest : test::FakeWindow {
    void SetUp() override {
        Show();
        for (const char* name : {"a-60", "b-60", "c-60"}) {
            PlaylistEntry entry = Entry(name);
            entry.duration = u"01:00"_s;
            desk->list1.Append({entry});
        }
    }
    void DropOnWindow(const QStringList& paths) {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString& path : paths)
            urls.append(QUrl::fromLocalFile(path));
        data.setUrls(urls);
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.get(), &enter); // makes the window the drag's target
        EXPECT_TRUE(enter.isAccepted());
        QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.get(), &drop);
        EXPECT_TRUE(drop.isAccepted());
    }
};

TEST_F(ListCommandsTest, ClearingResetsTheCaptionAndComesBack) {
    test::Answers answers({u"Ja"_s});
    Trigger("AlleTitelAusWiedergabelisteLoeschen");
    EXPECT_EQ(desk->list1.Count(), 0);
    EXPECT_EQ(Text("Label16"), u"Player 1"_s);
    EXPECT_EQ(In<QAction>("Rueckgaengig").text(), u"&Rückgängig: Alle Titel löschen"_s);
    Trigger("Rueckgaengig");
    EXPECT_EQ(Text("Label16"), u"Player 1       0. von 3 in Standard"_s);
    Trigger("Wiederherstellen");
    EXPECT_EQ(desk->list1.Count(), 0);
}

TEST_F(ListCommandsTest, AMenuKeepsTheListThatItWasOpenedFor) {
    In<QTableView>("List1").selectRow(1);
    QMenu menu(window.get());
    menu.addAction(&In<QAction>("MarkiertenTitelAusWiedergabelisteLoeschen"));
    menu.popup({});
    desk->list2.Append(desk->list1.Entries());
    desk->mixer.Play(2, -1);
    ASSERT_TRUE(test::WaitUntil([this] { return desk->list2.CurrentRow() == 0; }));
    menu.hide();
    menu.actions().front()->trigger(); // in this order, as menus do it
    EXPECT_EQ(desk->list1.Count(), 2);
    QCoreApplication::processEvents();
    In<QTableView>("List2").selectRow(1);
    Trigger("MarkiertenTitelAusWiedergabelisteLoeschen");
    EXPECT_EQ(desk->list2.Count(), 2) << "afterwards the list of the player that has started";
}

TEST_F(ListCommandsTest, FilesDroppedOnTheWindowAreTaken) {
    const QString party = folder.Path(u"Party.wil"_s);
    const PlaylistFile::Lists lists{QList<PlaylistEntry>(), desk->list1.Entries()};
    ASSERT_EQ(PlaylistFile(party, desk->clock).Save(lists).outcome, PlaylistFile::Outcome::Done);
    test::Answers answers({u"Ja"_s});
    DropOnWindow({party, folder.Write(u"d.mp3"_s, "x")});
    EXPECT_EQ(desk->list2.Count(), 0) << "questions wait for the drag's end";
    EXPECT_TRUE(test::WaitUntil([this] { return desk->list1.Count() == 4; }));
    EXPECT_EQ(desk->list2.Count(), 3);
    EXPECT_EQ(Text("Label17"), u"Player 2       0. von 3 in Party"_s);
    auto& recent = In<QMenu>("ZuletztGeoeffnet");
    Q_EMIT recent.aboutToShow();
    EXPECT_EQ(recent.actions().front()->text(), u"&1 Party.wil"_s);
}

TEST_F(ListCommandsTest, TheFullViewLeavesThePlayers) {
    const struct {
        const char* action;
        bool archive;
        bool lists;
        const char* what;
    } steps[] = {{"WLVollansicht", false, true, "the lists alone"},
                 {"MAVollansicht", true, false, "one full view ends the other"},
                 {"WLVollansicht", false, true, "and the other way round"},
                 {"Schnellsuche", true, true, "who searches wants to see the archive"}};
    for (const auto& step : steps) {
        SCOPED_TRACE(step.what);
        Trigger(step.action);
        EXPECT_EQ(window->findChild<ArchivePanel*>()->isVisible(), step.archive);
        EXPECT_EQ(In("List1").isVisible(), step.lists);
        EXPECT_TRUE(In("cmdPlay1").isVisible());
        EXPECT_EQ(In<QAction>("WLVollansicht").isChecked(), !step.archive);
    }
}

TEST_F(ListCommandsTest, WhatIsPlayedShowsInItsWindows) {
    Trigger("MeineCharts");
    Trigger("VerlaufDesAbends");
    desk->mixer.Next(1);
    auto& charts = *window->findChild<frmCharts*>();
    EXPECT_EQ(charts.windowTitle(), u"Kalvo - Charts  << Titelanzahl: 1 >>  << Titelbegrenzung: 200 >>"_s);
    EXPECT_EQ(In<QLabel>(*window->findChild<frmVerlauf*>(), "Label1").text(), u"1 Titel, 00:00:00 gespielt"_s);
    charts.AllesMarkieren();
    test::Answers answers({u"Ja"_s});
    Trigger("TitelInPlayer1Wiedergeben");
    EXPECT_TRUE(test::WaitUntil([this] { return desk->list1.Count() == 4; })) << "asked, since it is there already";
    Trigger("TitelVonPlayer1Hinzufuegen");
    EXPECT_EQ(desk->list1.At(4).duration, u"01:00"_s);
}

TEST_F(ListCommandsTest, ATitleWhosePathTheChartsCutIsFoundAgain) {
    ASSERT_TRUE(test::WaitUntil([this] { return desk->archive.IsIndexReady(); }));
    const QString name(100, QChar(0x043D)); // 200 bytes
    TitleRecord title = Title({}, u"Nacht"_s, folder.Write(name + u"'s.mp3"_s, "x"));
    TitleRecord other = Title({}, u"Tag"_s, folder.Write(name + u".mp3"_s, "x"));
    ASSERT_TRUE(desk->archive.AddTitle(other) && desk->archive.AddTitle(title));
    ASSERT_TRUE(desk->charts.Count(PlaySource::Player1, title.Pfad, title.Titel, {}, desk->clock.Now()));
    ASSERT_NE(desk->charts.Entries().front().path, title.Pfad);
    Trigger("MeineCharts");
    window->findChild<frmCharts*>()->AllesMarkieren();
    Trigger("TitelInPlayer2Wiedergeben");
    ASSERT_TRUE(test::WaitUntil([this] { return desk->list2.Count() == 1; }));
    EXPECT_EQ(desk->list2.At(0).path, title.Pfad);
}

} // namespace
} // namespace kalvo
