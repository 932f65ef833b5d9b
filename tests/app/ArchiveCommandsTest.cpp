#include "app/ArchiveCommands.h"

#include "app/DeskActions.h"
#include "app/WindowValues.h"
#include "archive/ui/ArchiveDesk.h"
#include "archive/ui/ArchivePanel.h"
#include "archive/ui/frmSuchen.h"
#include "archive/ui/frmTitelLoeschen.h"
#include "support/PartOf.h"
#include "support/WindowActs.h"

#include <QtWidgets>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

struct ArchiveCommandsTest : ::testing::Test {
    void SetUp() override {
        for (const char* artist : {"Abba", "Juno", "Zoo"}) {
            TitleRecord record;
            record.Interpret = QString::fromLatin1(artist);
            record.Pfad = desk_.folder.Write(record.Interpret + u".mp3"_s, "x");
            EXPECT_TRUE(desk_.archive.AddTitle(record).done);
        }
        desk_.archive.Refresh();
        actions_.BuildMenus(*window_.menuBar());
        panel_ = new ArchivePanel(desk_.archive, desk_.settings, desk_.data, &window_);
        window_.setCentralWidget(panel_);
        window_.resize(1000, 400);
        commands_ = new ArchiveCommands(desk_.archive, *panel_, actions_, values_, {new QWidget(&window_)}, window_);
        QObject::connect(commands_, &ArchiveCommands::Told, [this](const QString& text) { told_ << text; });
        window_.show();
    }

    QStringList Choose(const char* action, const QStringList& answers = {}) {
        test::Answers given(answers);
        test::Part<QAction>(window_, action)->trigger();
        EXPECT_TRUE(given.AllGiven());
        return given.Said();
    }
    QUndoStack& Undo() { return commands_->UndoStack(); }
    QString Count() { return test::Part<QLabel>(*panel_, "lblAnzahl")->text(); }
    qint64 Titles() { return desk_.archive.Count(); }

    test::ArchiveDesk desk_;
    WindowValues values_;
    QMainWindow window_;
    DeskActions actions_;
    ArchivePanel* panel_ = nullptr;
    ArchiveCommands* commands_ = nullptr;
    QStringList told_;
};

TEST_F(ArchiveCommandsTest, MarkedTitlesAreDeletedAfterAQuestionAndComeBack) {
    EXPECT_TRUE(Choose("TitelAusMusikarchivlLoeschen").isEmpty()) << "nothing is marked";
    panel_->GoToRow(1);
    EXPECT_EQ(Choose("TitelAusMusikarchivlLoeschen", {u"Nein"_s}),
              QStringList(u"Löschen|Achtung+++ Die markierten Titel aus dem Musikarchiv löschen? +++Achtung"_s));
    EXPECT_EQ(Titles(), 3);
    EXPECT_FALSE(Undo().canUndo());
    {
        const test::Answers answers({u"Ja"_s});
        auto* grid = test::Part(*panel_, "DataGrid2");
        grid->setFocus();
        test::PressKey(*grid, Qt::Key_Delete); // the key belongs to the grid
    }
    EXPECT_EQ(Titles(), 2);
    EXPECT_EQ(panel_->CurrentRecord().Interpret, u"Zoo"_s) << "the title that took its place";
    EXPECT_EQ(Undo().undoText(), u"Löschen aus dem Musikarchiv (1 Titel)"_s);
    Undo().undo();
    EXPECT_EQ(desk_.archive.RowAt(1).Interpret, u"Juno"_s);
    EXPECT_FALSE(Undo().canUndo());
    Undo().redo();
    EXPECT_EQ(Titles(), 2);
}

TEST_F(ArchiveCommandsTest, AnUndoThatFailsCanBeTriedAgain) {
    panel_->GoToRow(0);
    Choose("TitelAusMusikarchivlLoeschen", {u"Ja"_s});
    SqliteDatabase other;
    ASSERT_EQ(other.Open(desk_.archive.Path(), SqliteDatabase::Mode::ReadWrite), SqliteDatabase::Outcome::Opened);
    {
        const SqliteDatabase::Transaction writing(other);
        Undo().undo();
    }
    EXPECT_EQ(Titles(), 2);
    EXPECT_EQ(told_.value(0), u"Das Musikarchiv wird von einem anderen Programm benutzt."_s);
    QCoreApplication::sendPostedEvents();
    Undo().undo();
    EXPECT_EQ(Titles(), 3);
    EXPECT_FALSE(Undo().canUndo());
}

TEST_F(ArchiveCommandsTest, OneTitleIsDeletedWithItsFileOnlyWhenTicked) {
    for (const bool withFile : {false, true}) {
        panel_->GoToRow(0);
        const QString path = panel_->CurrentRecord().Pfad;
        Choose("TitelMitDateiLoeschen");
        auto* dialog = window_.findChild<frmTitelLoeschen*>();
        ASSERT_TRUE(dialog);
        EXPECT_EQ(test::Part<QLabel>(*dialog, "lblPfad")->text(), path);
        test::Part<QCheckBox>(*dialog, "Check1")->setChecked(withFile);
        test::Part<QAbstractButton>(*dialog, "Command2")->click();
        EXPECT_EQ(QFileInfo::exists(path), !withFile);
        EXPECT_FALSE(desk_.archive.FindByPath(path).has_value());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    EXPECT_EQ(Titles(), 1);
}

TEST_F(ArchiveCommandsTest, TheWholeArchiveAsksTwice) {
    const QString first = u" Löschen|Achtung!!!, Das gesamte Musikarchiv löschen?"_s;
    const QString second = u" Löschen|Achtung+++ Sind Sie sicher? +++Achtung"_s;
    EXPECT_EQ(Choose("AlleTitelAusMusikarchivLoeschen", {u"Nein"_s}), QStringList(first));
    EXPECT_EQ(Count(), u"0 Titel"_s);
    EXPECT_EQ(Choose("AlleTitelAusMusikarchivLoeschen", {u"Ja"_s, u"Abbrechen"_s}), QStringList({first, second}));
    EXPECT_EQ(Titles(), 3);
    panel_->Refresh();
    EXPECT_EQ(Count(), u"3 Titel"_s);
    Choose("AlleTitelAusMusikarchivLoeschen", {u"Ja"_s, u"Ja"_s});
    EXPECT_EQ(Titles(), 0);
    EXPECT_EQ(Choose("EigenschaftenMusikarchiv", {u"OK"_s}),
              QStringList(u" Kalvo|Keine Titel im Musikarchiv vorhanden"_s));
    Undo().undo();
    EXPECT_EQ(Choose("EigenschaftenMusikarchiv", {u"OK"_s}), QStringList(u" Kalvo|Anzahl Titel im Musikarchiv: 3"_s));
}

TEST_F(ArchiveCommandsTest, TheSearchOpensOnceAndLeavesTheDeskFree) {
    Choose("Suchen");
    Choose("Suchen");
    EXPECT_EQ(window_.findChildren<frmSuchen*>().size(), 1);
    EXPECT_FALSE(window_.findChild<frmSuchen*>()->isModal());
}

TEST_F(ArchiveCommandsTest, TheTreeIsKeptAsTheUserLeftIt) {
    test::Part<QAbstractButton>(window_, "cmdKategorien")->click();
    EXPECT_TRUE(values_.treeShown);
    panel_->ShowTree(false);
    values_.treeShown = true;
    Q_EMIT desk_.archive.IndexReady();
    EXPECT_TRUE(panel_->IsTreeShown());
}

} // namespace
} // namespace kalvo
