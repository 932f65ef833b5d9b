#include "app/ListCommands.h"

#include "app/Desk.h"
#include "app/Form1.h"
#include "archive/ui/ArchivePanel.h"
#include "playback/FakeAudio.h"
#include "playlists/PlaylistFile.h"
#include "playlists/ui/PlaylistPanel.h"
#include "playlists/ui/frmCharts.h"
#include "playlists/ui/frmVerlauf.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"
#include "widgets/xMessageBox.h"

#include <QAction>
#include <QApplication>
#include <QDropEvent>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QTimer>
#include <QUrl>
#include <gtest/gtest.h>

namespace kalvo {

namespace {

/** The main window with a desk whose sound is made up. */
struct ListCommandsTest : ::testing::Test {
    ListCommandsTest() {
        EXPECT_TRUE(window.Load());
        window.show();
        for (const char* name : {"a-60", "b-60", "c-60"})
            desk.list1.Append({{QString::fromLatin1(name),
                                {},
                                QStringLiteral("01:00"),
                                {},
                                {},
                                folder.Write(QString::fromLatin1(name), "x")}});
    }
    QAction* Action(const char* name) const {
        QAction* action = window.findChild<QAction*>(QString::fromLatin1(name));
        EXPECT_NE(action, nullptr) << name;
        return action;
    }
    QString Caption(const char* label) const { return window.findChild<QLabel*>(QString::fromLatin1(label))->text(); }
    /** Presses a button of the next question as soon as it is open. */
    void AnswerNext(const QString& button) {
        auto* waiting = new QTimer(&window);
        QObject::connect(waiting, &QTimer::timeout, &window, [waiting, button] {
            auto* box = qobject_cast<xMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr)
                return;
            waiting->deleteLater();
            for (QPushButton* one : box->findChildren<QPushButton*>()) {
                if (one->text().remove(u'&') == button)
                    one->click();
            }
        });
        waiting->start(5);
    }
    void DropOnWindow(const QStringList& paths) {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString& path : paths)
            urls.append(QUrl::fromLocalFile(path));
        data.setUrls(urls);
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&window, &enter); // makes the window the drag's target
        EXPECT_TRUE(enter.isAccepted());
        QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&window, &drop);
        EXPECT_TRUE(drop.isAccepted());
    }

    test::TestFolder folder;
    Desk desk{DataFolder(folder.Path(QStringLiteral("Kalvo"))), std::make_unique<test::FakeAudio>()};
    Form1 window{desk, CommandLine()};
};

} // namespace

TEST_F(ListCommandsTest, ClearingResetsTheCaptionAndComesBack) {
    AnswerNext(QStringLiteral("Ja"));
    Action("AlleTitelAusWiedergabelisteLoeschen")->trigger();
    EXPECT_EQ(desk.list1.Count(), 0);
    EXPECT_EQ(Caption("Label16"), QStringLiteral("Player 1"));
    EXPECT_EQ(Action("Rueckgaengig")->text(), QStringLiteral("&Rückgängig: Alle Titel löschen"));
    Action("Rueckgaengig")->trigger();
    EXPECT_EQ(Caption("Label16"), QStringLiteral("Player 1       0. von 3 in Standard"));
    Action("Wiederherstellen")->trigger();
    EXPECT_EQ(desk.list1.Count(), 0);
}

TEST_F(ListCommandsTest, AMenuKeepsTheListThatItWasOpenedFor) {
    window.findChild<QTableView*>(QStringLiteral("List1"))->selectRow(1);
    QMenu menu(&window);
    menu.addAction(Action("MarkiertenTitelAusWiedergabelisteLoeschen"));
    menu.popup({});
    desk.list2.Append(desk.list1.Entries());
    desk.mixer.Play(2, -1);
    ASSERT_TRUE(test::WaitUntil([this] { return desk.list2.CurrentRow() == 0; }));
    menu.hide();
    menu.actions().front()->trigger(); // in this order, as menus do it
    EXPECT_EQ(desk.list1.Count(), 2);
    QCoreApplication::processEvents();
    window.findChild<QTableView*>(QStringLiteral("List2"))->selectRow(1);
    Action("MarkiertenTitelAusWiedergabelisteLoeschen")->trigger();
    EXPECT_EQ(desk.list2.Count(), 2) << "afterwards the list of the player that has started";
}

TEST_F(ListCommandsTest, FilesDroppedOnTheWindowAreTaken) {
    const QString party = folder.Path(QStringLiteral("Party.wil"));
    ASSERT_EQ(
        PlaylistFile(party, desk.clock).Save(PlaylistFile::Lists{QList<PlaylistEntry>(), desk.list1.Entries()}).outcome,
        PlaylistFile::Outcome::Done);
    AnswerNext(QStringLiteral("Ja"));
    DropOnWindow({party, folder.Write(QStringLiteral("d.mp3"), "x")});
    EXPECT_EQ(desk.list2.Count(), 0) << "questions wait for the drag's end";
    EXPECT_TRUE(test::WaitUntil([this] { return desk.list1.Count() == 4; }));
    EXPECT_EQ(desk.list2.Count(), 3);
    EXPECT_EQ(Caption("Label17"), QStringLiteral("Player 2       0. von 3 in Party"));
    QMenu* recent = window.findChild<QMenu*>(QStringLiteral("ZuletztGeoeffnet"));
    Q_EMIT recent->aboutToShow();
    EXPECT_EQ(recent->actions().front()->text(), QStringLiteral("&1 Party.wil"));
}

TEST_F(ListCommandsTest, TheFullViewLeavesThePlayers) {
    const auto* archive = window.findChild<ArchivePanel*>();
    Action("WLVollansicht")->trigger();
    EXPECT_FALSE(archive->isVisible());
    EXPECT_TRUE(window.findChild<QWidget*>(QStringLiteral("cmdPlay1"))->isVisible());
    const auto* list = window.findChild<QWidget*>(QStringLiteral("List1"));
    Action("MAVollansicht")->trigger();
    EXPECT_TRUE(archive->isVisible() && !list->isVisible()) << "one full view ends the other";
    EXPECT_FALSE(Action("WLVollansicht")->isChecked());
    Action("WLVollansicht")->trigger();
    EXPECT_TRUE(!archive->isVisible() && list->isVisible());
    Action("Schnellsuche")->trigger();
    EXPECT_TRUE(archive->isVisible() && list->isVisible()) << "who searches wants to see the archive";
    EXPECT_FALSE(Action("WLVollansicht")->isChecked());
}

TEST_F(ListCommandsTest, WhatIsPlayedShowsInItsWindows) {
    Action("MeineCharts")->trigger();
    Action("VerlaufDesAbends")->trigger();
    desk.mixer.Next(1);
    EXPECT_EQ(window.findChild<frmCharts*>()->windowTitle(),
              QStringLiteral("Kalvo - Charts  << Titelanzahl: 1 >>  << Titelbegrenzung: 200 >>"));
    EXPECT_EQ(window.findChild<frmVerlauf*>()->findChild<QLabel*>(QStringLiteral("Label1"))->text(),
              QStringLiteral("1 Titel, 00:00:00 gespielt"));
    window.findChild<frmCharts*>()->AllesMarkieren();
    AnswerNext(QStringLiteral("Ja"));
    Action("TitelInPlayer1Wiedergeben")->trigger();
    EXPECT_TRUE(test::WaitUntil([this] { return desk.list1.Count() == 4; })) << "asked, since it is there already";
    Action("TitelVonPlayer1Hinzufuegen")->trigger();
    EXPECT_EQ(desk.list1.At(4).duration, QStringLiteral("01:00"));
}

TEST_F(ListCommandsTest, ATitleWhosePathTheChartsCutIsFoundAgain) {
    ASSERT_TRUE(test::WaitUntil([this] { return desk.archive.IsIndexReady(); }));
    TitleRecord title;
    title.Titel = QStringLiteral("Nacht");
    title.Pfad = folder.Write(QString(100, QChar(0x043D)) + QStringLiteral("'s.mp3"), "x"); // 200 bytes and more
    TitleRecord other = title;
    other.Titel = QStringLiteral("Tag");
    other.Pfad = folder.Write(QString(100, QChar(0x043D)) + QStringLiteral(".mp3"), "x");
    ASSERT_TRUE(desk.archive.AddTitle(other) && desk.archive.AddTitle(title));
    ASSERT_TRUE(desk.charts.Count(PlaySource::Player1, title.Pfad, title.Titel, {}, desk.clock.Now()));
    ASSERT_NE(desk.charts.Entries().front().path, title.Pfad);
    Action("MeineCharts")->trigger();
    window.findChild<frmCharts*>()->AllesMarkieren();
    Action("TitelInPlayer2Wiedergeben")->trigger();
    ASSERT_TRUE(test::WaitUntil([this] { return desk.list2.Count() == 1; }));
    EXPECT_EQ(desk.list2.At(0).path, title.Pfad);
}

} // namespace kalvo
