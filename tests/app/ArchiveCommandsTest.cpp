#include "app/ArchiveCommands.h"

#include "app/DeskActions.h"
#include "app/WindowValues.h"
#include "archive/ui/ArchiveDesk.h"
#include "archive/ui/ArchivePanel.h"
#include "archive/ui/WindowActs.h"
#include "archive/ui/frmSuchen.h"
#include "archive/ui/frmTitelLoeschen.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>

namespace kalvo {
namespace {

using test::Answers;
using test::ArchiveDesk;

const QString kYes = QStringLiteral("Ja");
const QString kNo = QStringLiteral("Nein");

class ArchiveCommandsTest : public ::testing::Test {
protected:
    void SetUp() override {
        for (const char* artist : {"Abba", "Juno", "Zoo"}) {
            TitleRecord record;
            record.Interpret = QString::fromLatin1(artist);
            record.Titel = QStringLiteral("Lied");
            record.Pfad = desk_.folder.Write(record.Interpret + QStringLiteral(".mp3"), "x");
            EXPECT_TRUE(desk_.archive.AddTitle(record).done);
        }
        desk_.archive.Refresh();
        actions_.BuildMenus(*window_.menuBar());
        panel_ = new ArchivePanel(desk_.archive, desk_.settings, desk_.data, &window_);
        lists_ = new QWidget(&window_);
        window_.setCentralWidget(panel_);
        window_.resize(1000, 400);
        commands_ = new ArchiveCommands(desk_.archive, *panel_, actions_, values_, {lists_}, window_);
        QObject::connect(commands_, &ArchiveCommands::Told, [this](const QString& text) { told_ << text; });
        window_.show();
    }

    QAction& Action(const char* name) {
        auto* action = window_.findChild<QAction*>(QString::fromLatin1(name));
        EXPECT_NE(action, nullptr) << name;
        return *action;
    }
    QStringList Choose(const char* action, const QStringList& answers) {
        Answers given(answers);
        Action(action).trigger();
        EXPECT_TRUE(given.AllGiven());
        return given.Said();
    }
    QUndoStack& Undo() { return commands_->UndoStack(); }
    QString Count() { return panel_->findChild<QLabel*>(QStringLiteral("lblAnzahl"))->text(); }
    qint64 Titles() { return desk_.archive.Count(); }

    ArchiveDesk desk_;
    WindowValues values_;
    QMainWindow window_;
    DeskActions actions_;
    ArchivePanel* panel_ = nullptr;
    QWidget* lists_ = nullptr;
    ArchiveCommands* commands_ = nullptr;
    QStringList told_;
};

TEST_F(ArchiveCommandsTest, MarkedTitlesAreDeletedAfterAQuestionAndComeBack) {
    EXPECT_TRUE(Choose("TitelAusMusikarchivlLoeschen", {}).isEmpty()) << "nothing is marked";
    panel_->GoToRow(1);
    const QString question =
        QStringLiteral("Löschen|Achtung+++ Die markierten Titel aus dem Musikarchiv löschen? +++Achtung");
    EXPECT_EQ(Choose("TitelAusMusikarchivlLoeschen", {kNo}), QStringList(question));
    EXPECT_EQ(Titles(), 3);
    EXPECT_FALSE(Undo().canUndo());
    Choose("TitelAusMusikarchivlLoeschen", {kYes});
    EXPECT_EQ(Titles(), 2);
    EXPECT_EQ(panel_->CurrentRecord().Interpret, QStringLiteral("Zoo")) << "the title that took its place";
    EXPECT_EQ(Undo().undoText(), QStringLiteral("Löschen aus dem Musikarchiv (1 Titel)"));
    Undo().undo();
    EXPECT_EQ(desk_.archive.RowAt(1).Interpret, QStringLiteral("Juno"));
    EXPECT_FALSE(Undo().canUndo());
    Undo().redo();
    EXPECT_EQ(Titles(), 2);
}

TEST_F(ArchiveCommandsTest, TheDelKeyBelongsToTheGrid) {
    auto& grid = *panel_->findChild<QWidget*>(QStringLiteral("DataGrid2"));
    panel_->GoToRow(0);
    grid.setFocus();
    Answers answers({kYes});
    test::PressKey(grid, Qt::Key_Delete);
    EXPECT_EQ(Titles(), 2);
}

TEST_F(ArchiveCommandsTest, AnUndoThatFailsCanBeTriedAgain) {
    panel_->GoToRow(0);
    Choose("TitelAusMusikarchivlLoeschen", {kYes});
    SqliteDatabase other;
    ASSERT_EQ(other.Open(desk_.archive.Path(), SqliteDatabase::Mode::ReadWrite), SqliteDatabase::Outcome::Opened);
    {
        const SqliteDatabase::Transaction writing(other);
        Undo().undo();
    }
    EXPECT_EQ(Titles(), 2);
    EXPECT_EQ(told_.value(0), QStringLiteral("Das Musikarchiv wird von einem anderen Programm benutzt."));
    QCoreApplication::sendPostedEvents();
    Undo().undo();
    EXPECT_EQ(Titles(), 3);
    EXPECT_FALSE(Undo().canUndo());
}

TEST_F(ArchiveCommandsTest, OneTitleIsDeletedWithItsFileOnlyWhenTicked) {
    for (const bool withFile : {false, true}) {
        panel_->GoToRow(0);
        const QString path = panel_->CurrentRecord().Pfad;
        Action("TitelMitDateiLoeschen").trigger();
        auto* dialog = window_.findChild<frmTitelLoeschen*>();
        ASSERT_TRUE(dialog);
        EXPECT_EQ(dialog->findChild<QLabel*>(QStringLiteral("lblPfad"))->text(), path);
        dialog->findChild<QCheckBox*>(QStringLiteral("Check1"))->setChecked(withFile);
        dialog->findChild<QAbstractButton*>(QStringLiteral("Command2"))->click();
        EXPECT_EQ(QFileInfo::exists(path), !withFile);
        EXPECT_FALSE(desk_.archive.FindByPath(path).has_value());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    EXPECT_EQ(Titles(), 1);
}

TEST_F(ArchiveCommandsTest, TheWholeArchiveAsksTwice) {
    const QString first = QStringLiteral(" Löschen|Achtung!!!, Das gesamte Musikarchiv löschen?");
    const QString second = QStringLiteral(" Löschen|Achtung+++ Sind Sie sicher? +++Achtung");
    EXPECT_EQ(Choose("AlleTitelAusMusikarchivLoeschen", {kNo}), QStringList(first));
    EXPECT_EQ(Count(), QStringLiteral("0 Titel"));
    EXPECT_EQ(Choose("AlleTitelAusMusikarchivLoeschen", {kYes, QStringLiteral("Abbrechen")}),
              QStringList({first, second}));
    EXPECT_EQ(Titles(), 3);
    panel_->Refresh();
    EXPECT_EQ(Count(), QStringLiteral("3 Titel"));
    Choose("AlleTitelAusMusikarchivLoeschen", {kYes, kYes});
    EXPECT_EQ(Titles(), 0);
    EXPECT_EQ(Choose("EigenschaftenMusikarchiv", {QStringLiteral("OK")}),
              QStringList(QStringLiteral(" Kalvo|Keine Titel im Musikarchiv vorhanden")));
    Undo().undo();
    EXPECT_EQ(Choose("EigenschaftenMusikarchiv", {QStringLiteral("OK")}),
              QStringList(QStringLiteral(" Kalvo|Anzahl Titel im Musikarchiv: 3")));
}

TEST_F(ArchiveCommandsTest, FullViewHidesTheListsAndTheSearchOpensOnce) {
    Action("MAVollansicht").trigger();
    EXPECT_TRUE(lists_->isHidden());
    Action("MAVollansicht").trigger();
    EXPECT_FALSE(lists_->isHidden());
    Action("Suchen").trigger();
    Action("Suchen").trigger();
    EXPECT_EQ(window_.findChildren<frmSuchen*>().size(), 1);
    EXPECT_FALSE(window_.findChild<frmSuchen*>()->isModal());
}

TEST_F(ArchiveCommandsTest, TheTreeIsKeptAsTheUserLeftIt) {
    window_.findChild<QAbstractButton*>(QStringLiteral("cmdKategorien"))->click();
    EXPECT_TRUE(values_.treeShown);
    panel_->ShowTree(false);
    values_.treeShown = true;
    Q_EMIT desk_.archive.IndexReady();
    EXPECT_TRUE(panel_->IsTreeShown());
}

} // namespace
} // namespace kalvo
