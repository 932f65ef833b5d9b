#include "archive/ui/ArchivePanel.h"

#include "archive/ui/ArchiveWindowTest.h"
#include "support/WaitUntil.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>

namespace kalvo::test {
namespace {

class ArchivePanelTest : public ArchiveWindowTest {
protected:
    ArchivePanelTest() {
        panel_.resize(1280, 300);
        panel_.show();
    }
    QWidget& Window() override { return panel_; }

    Archive& Filled() {
        Add(u"Juno"_s, u"Nachtzug"_s, u"B"_s, u"02"_s);
        Add(u"Abba"_s, u"Tag am Meer"_s, u"B"_s, u"01"_s);
        Add(u"O'Neil"_s, u"Nacht"_s, u"A"_s, u"01"_s);
        archive.Refresh();
        return archive;
    }
    ArchiveGrid& Grid() { return Find<ArchiveGrid>("DataGrid2"); }
    void Type(const QString& text) {
        for (const QChar letter : text)
            PressKey(Find<QLineEdit>("Text1"), 0, Qt::NoModifier, QString(letter));
    }
    void ClickHead(ArchiveField field) {
        QHeaderView& head = *Grid().horizontalHeader();
        const int section = ArchiveModel::ColumnOf(field);
        Grid().scrollTo(Grid().model()->index(0, section));
        Click(*head.viewport(),
              {head.sectionViewportPosition(section) + head.sectionSize(section) / 2, head.height() / 2});
    }
    void ChooseFromColumnMenu(const QString& entry) {
        bool found = false;
        QTimer::singleShot(0, [&] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            for (QAction* action : menu->actions())
                if (action->text() == entry) {
                    action->trigger();
                    found = true;
                }
            menu->close();
        });
        Q_EMIT Grid().horizontalHeader()->customContextMenuRequested({5, 5});
        EXPECT_TRUE(found) << entry.toStdString();
    }
    QString Head(ArchiveField field) {
        return Grid().model()->headerData(ArchiveModel::ColumnOf(field), Qt::Horizontal).toString();
    }
    QString Titles() {
        QStringList titles;
        for (int row = 0; row < Grid().model()->rowCount(); ++row)
            titles.append(Grid().model()->index(row, 0).data().toString());
        return titles.join(u'|');
    }

    ArchivePanel panel_{Filled(), settings, data};
};

TEST_F(ArchivePanelTest, ShowsAllTitlesByArtistAndTheirCount) {
    EXPECT_EQ(Titles(), u"Tag am Meer|Nachtzug|Nacht"_s);
    EXPECT_EQ(Text("lblAnzahl"), u"3 Titel"_s);
    Add(u"Neu"_s, u"Neu"_s);
    EXPECT_TRUE(WaitUntil([this] { return Text("lblAnzahl") == u"4 Titel"_s; }));
    EXPECT_EQ(Titles(), u"Tag am Meer|Nachtzug|Nacht"_s) << "new titles show after the next refresh";
    panel_.Refresh();
    EXPECT_EQ(Titles(), u"Tag am Meer|Nachtzug|Neu|Nacht"_s);
}

TEST_F(ArchivePanelTest, SearchStartsAtTheSecondCharacterThatIsTyped) {
    const QString before = archive.CurrentRecordSource();
    Type(u"n"_s);
    EXPECT_EQ(archive.CurrentRecordSource(), before);
    EXPECT_EQ(Text("Label23"), QString());
    Type(u"a"_s);
    EXPECT_EQ(Titles(), u"Nachtzug|Nacht"_s);
    EXPECT_EQ(Text("Label23"), u"2 Titel gefunden"_s);
    EXPECT_EQ(Text("lblAnzahl"), u"3 Titel"_s);
    Find<QLineEdit>("Text1").clear();
    EXPECT_EQ(Text("Label23"), u"3 Titel gefunden"_s);
    panel_.SetSearchText(u"Juno"_s);
    EXPECT_EQ(Titles(), u"Tag am Meer|Nachtzug|Nacht"_s) << "the program's own texts do not search";
}

TEST_F(ArchivePanelTest, OnlyVisibleColumnsAreSearched) {
    const int title = ArchiveModel::ColumnOf(ArchiveField::Titel);
    ChooseFromColumnMenu(u"Titel"_s);
    EXPECT_TRUE(Grid().isColumnHidden(title));
    EXPECT_FALSE(Settings(iniPath).GetSwitch(u"MA0"_s, u"Visible"_s, true));
    Type(u"ab"_s);
    EXPECT_TRUE(archive.CurrentRecordSource().startsWith(
        u"SELECT * FROM Daten  Where  Interpret Like '*ab*' or  Album Like '*ab*' or "_s));
    ChooseFromColumnMenu(u"Standard wiederherstellen"_s);
    EXPECT_FALSE(Grid().isColumnHidden(title));
    EXPECT_TRUE(Settings(iniPath).GetSwitch(u"MA0"_s, u"Visible"_s, false));
}

TEST_F(ArchivePanelTest, ColumnWidthsOrderAndLayoutFileAreKept) {
    const int album = ArchiveModel::ColumnOf(ArchiveField::Album);
    QHeaderView& head = *Grid().horizontalHeader();
    head.resizeSection(album, 234);
    head.moveSection(2, 0);
    EXPECT_EQ(Settings(iniPath).GetNumber(u"MA0"_s, u"Width"_s, 0), 234 * 15);
    const LayoutFile layout = LayoutFile::Read(data.Path(u"\\mp3tabelle.dll"_s));
    EXPECT_EQ(layout.columnWidths[0], 234 * 15);
    EXPECT_EQ(layout.archivePath, archive.Path());

    Settings again(iniPath);
    const ArchivePanel second(archive, again, data);
    const auto* grid = second.findChild<ArchiveGrid*>();
    EXPECT_EQ(grid->horizontalHeader()->logicalIndex(0), album);
    EXPECT_EQ(grid->columnWidth(album), 234);
}

TEST_F(ArchivePanelTest, TheLineShowsTheCurrentTitleAndHandsOutTheMarkedOnes) {
    QStringList handed;
    QObject::connect(&panel_, &ArchivePanel::AddToListRequested, &panel_,
                     [&](int list, const QList<TitleRecord>& records) {
                         handed.append(QString::number(list));
                         for (const TitleRecord& record : records)
                             handed.append(record.Interpret);
                     });
    EXPECT_FALSE(Find<QAbstractButton>("cmdListe2").isEnabled());
    Grid().selectRow(1);
    EXPECT_EQ(Text("lblInterpret"), u"Juno"_s);
    EXPECT_EQ(Text("lblTitel"), u"Juno - Nachtzug"_s);
    EXPECT_EQ(Text("lblPfad"), u"/musik/Juno - Nachtzug.mp3"_s);
    panel_.MAAlleTitelAuswaehlen();
    Press("cmdListe2");
    EXPECT_EQ(handed.join(u'|'), u"2|Abba|Juno|O'Neil"_s);
}

TEST_F(ArchivePanelTest, TheCurrentTitleStaysCurrentAmongOtherRows) {
    Grid().selectRow(2);
    Type(u"nacht"_s);
    EXPECT_EQ(panel_.CurrentRecord().Interpret, u"O'Neil"_s);
    ClickHead(ArchiveField::Titel);
    EXPECT_EQ(Titles(), u"Nacht|Nachtzug"_s);
    EXPECT_EQ(Head(ArchiveField::Titel), u"Titel >"_s);
    EXPECT_EQ(Grid().currentIndex().row(), 0);
    EXPECT_EQ(panel_.CurrentRecord().Interpret, u"O'Neil"_s);
    Find<QLineEdit>("Text1").setText(u"Abba"_s);
    EXPECT_EQ(Text("lblTitel"), QString());
    EXPECT_TRUE(panel_.SelectedRecords().isEmpty());
}

TEST_F(ArchivePanelTest, ADoubleClickTellsWhichTitle) {
    QString told;
    QObject::connect(&panel_, &ArchivePanel::TitleActivated, &panel_,
                     [&](const TitleRecord& record) { told += record.Interpret; });
    const QPoint place = Grid().visualRect(Grid().model()->index(1, 0)).center();
    Click(*Grid().viewport(), place);
    QMouseEvent twice(QEvent::MouseButtonDblClick, place, Grid().viewport()->mapToGlobal(place), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(Grid().viewport(), &twice);
    EXPECT_EQ(told, u"Juno"_s);
}

TEST_F(ArchivePanelTest, AnEmptyArchiveOffersTheImport) {
    int wanted = 0;
    QObject::connect(&panel_, &ArchivePanel::ImportRequested, &panel_, [&] { ++wanted; });
    ASSERT_TRUE(archive.DeleteAll());
    EXPECT_TRUE(WaitUntil([&] { return Find<QWidget>("cmdOrdnerEinlesen").isVisible(); }));
    Press("cmdOrdnerEinlesen");
    EXPECT_EQ(wanted, 1);
    Add(u"A"_s, u"B"_s);
    EXPECT_TRUE(WaitUntil([&] { return Grid().isVisible(); }));
}

} // namespace
} // namespace kalvo::test
