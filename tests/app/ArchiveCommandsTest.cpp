#include "app/FakeWindow.h"
#include "archive/ui/frmTitelLoeschen.h"

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

/** The main window with three titles in the archive. */
struct ArchiveCommandsTest : test::FakeWindow {
    void SetUp() override {
        Show();
        for (const QString& artist : {u"Abba"_s, u"Juno"_s, u"Zoo"_s})
            AddTitle(Title(artist, {}, folder.Write(artist + u".mp3"_s, "x")));
        panel = window->findChild<ArchivePanel*>();
    }
    QStringList Choose(const char* action, const QStringList& answers = {}) const {
        test::Answers given(answers);
        Trigger(action);
        EXPECT_TRUE(given.AllGiven());
        return given.Said();
    }
    QAction& Undo() const { return In<QAction>("Rueckgaengig"); }
    qint64 Titles() const { return desk->archive.Count(); }

    ArchivePanel* panel = nullptr;
};

TEST_F(ArchiveCommandsTest, MarkedTitlesAreDeletedAfterAQuestionAndComeBack) {
    In<QAbstractItemView>("DataGrid2").clearSelection();
    EXPECT_TRUE(Choose("TitelAusMusikarchivlLoeschen").isEmpty()) << "nothing is marked";
    panel->GoToRow(1);
    EXPECT_EQ(Choose("TitelAusMusikarchivlLoeschen", {u"Nein"_s}),
              QStringList(u"Löschen|Achtung+++ Die markierten Titel aus dem Musikarchiv löschen? +++Achtung"_s));
    EXPECT_EQ(Titles(), 3);
    EXPECT_FALSE(Undo().isEnabled());
    {
        const test::Answers answers({u"Ja"_s});
        auto& grid = In("DataGrid2");
        grid.setFocus();
        test::PressKey(grid, Qt::Key_Delete); // the key belongs to the grid
    }
    EXPECT_EQ(Titles(), 2);
    EXPECT_EQ(panel->CurrentRecord().Interpret, u"Zoo"_s) << "the title that took its place";
    EXPECT_EQ(Undo().text(), u"&Rückgängig: Löschen aus dem Musikarchiv (1 Titel)"_s);
    Undo().trigger();
    EXPECT_EQ(desk->archive.RowAt(1).Interpret, u"Juno"_s);
    EXPECT_FALSE(Undo().isEnabled());
    Trigger("Wiederherstellen");
    EXPECT_EQ(Titles(), 2);
}

TEST_F(ArchiveCommandsTest, AnUndoThatFailsCanBeTriedAgain) {
    panel->GoToRow(0);
    Choose("TitelAusMusikarchivlLoeschen", {u"Ja"_s});
    SqliteDatabase other;
    ASSERT_EQ(other.Open(desk->archive.Path(), SqliteDatabase::Mode::ReadWrite), SqliteDatabase::Outcome::Opened);
    {
        const SqliteDatabase::Transaction writing(other);
        Undo().trigger();
    }
    EXPECT_EQ(Titles(), 2);
    EXPECT_TRUE(Text("lblMeldung").endsWith(u"Das Musikarchiv wird von einem anderen Programm benutzt."_s));
    QCoreApplication::sendPostedEvents();
    Undo().trigger();
    EXPECT_EQ(Titles(), 3);
    EXPECT_FALSE(Undo().isEnabled());
}

TEST_F(ArchiveCommandsTest, OneTitleIsDeletedWithItsFileOnlyWhenTicked) {
    for (const bool withFile : {false, true}) {
        panel->GoToRow(0);
        const QString path = panel->CurrentRecord().Pfad;
        Choose("TitelMitDateiLoeschen");
        auto& dialog = In<frmTitelLoeschen>("frmTitelLoeschen");
        EXPECT_EQ(In<QLabel>(dialog, "lblPfad").text(), path);
        In<QCheckBox>(dialog, "Check1").setChecked(withFile);
        In<QAbstractButton>(dialog, "Command2").click();
        EXPECT_EQ(QFileInfo::exists(path), !withFile);
        EXPECT_FALSE(desk->archive.FindByPath(path).has_value());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    EXPECT_EQ(Titles(), 1);
}

TEST_F(ArchiveCommandsTest, TheWholeArchiveAsksTwice) {
    const QString first = u" Löschen|Achtung!!!, Das gesamte Musikarchiv löschen?"_s;
    const QString second = u" Löschen|Achtung+++ Sind Sie sicher? +++Achtung"_s;
    EXPECT_EQ(Choose("AlleTitelAusMusikarchivLoeschen", {u"Nein"_s}), QStringList(first));
    EXPECT_EQ(Text("lblAnzahl"), u"0 Titel"_s);
    EXPECT_EQ(Choose("AlleTitelAusMusikarchivLoeschen", {u"Ja"_s, u"Abbrechen"_s}), QStringList({first, second}));
    EXPECT_EQ(Titles(), 3);
    panel->Refresh();
    EXPECT_EQ(Text("lblAnzahl"), u"3 Titel"_s);
    Choose("AlleTitelAusMusikarchivLoeschen", {u"Ja"_s, u"Ja"_s});
    EXPECT_EQ(Titles(), 0);
    EXPECT_EQ(Choose("EigenschaftenMusikarchiv", {u"OK"_s}),
              QStringList(u" Kalvo|Keine Titel im Musikarchiv vorhanden"_s));
    Undo().trigger();
    EXPECT_EQ(Choose("EigenschaftenMusikarchiv", {u"OK"_s}), QStringList(u" Kalvo|Anzahl Titel im Musikarchiv: 3"_s));
}

TEST_F(ArchiveCommandsTest, TheTreeIsKeptAsTheUserLeftIt) {
    In<QAbstractButton>("cmdKategorien").click();
    EXPECT_TRUE(panel->IsTreeShown());
    test::Answers answers({u"Ja"_s});
    ASSERT_TRUE(window->close());
    NextStart();
    Show();
    EXPECT_TRUE(test::WaitUntil([this] { return window->findChild<ArchivePanel*>()->IsTreeShown(); }));
}

} // namespace
} // namespace kalvo
