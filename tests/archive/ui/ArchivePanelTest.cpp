#include "archive/ui/ArchivePanel.h"

#include "archive/ui/ArchiveDesk.h"
#include "archive/ui/ArchiveSide.h"
#include "archive/ui/WindowActs.h"
#include "support/WaitUntil.h"
#include "widgets/SkinStyle.h"

#include <QAbstractButton>
#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QTimer>

namespace kalvo {

namespace {

using test::ArchiveDesk;
using test::WaitUntil;

class ArchivePanelTest : public ::testing::Test {
protected:
    void SetUp() override {
        desk_.Add(QStringLiteral("Juno"), QStringLiteral("Nachtzug"), QStringLiteral("B"), QStringLiteral("02"));
        desk_.Add(QStringLiteral("Abba"), QStringLiteral("Tag am Meer"), QStringLiteral("B"), QStringLiteral("01"));
        desk_.Add(QStringLiteral("O'Neil"), QStringLiteral("Nacht"), QStringLiteral("A"), QStringLiteral("01"));
        desk_.archive.Refresh();
        panel_ = std::make_unique<ArchivePanel>(desk_.archive, desk_.settings, desk_.data);
        panel_->resize(1280, 300);
        panel_->show();
    }

    template<typename Widget>
    Widget& Find(const char* name) {
        auto* found = panel_->findChild<Widget*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
    ArchiveGrid& Grid() { return Find<ArchiveGrid>("DataGrid2"); }
    QString Text(const char* label) { return Find<QLabel>(label).text(); }

    void Type(const QString& text) {
        for (const QChar letter : text) {
            test::PressKey(Find<QLineEdit>("Text1"), 0, Qt::NoModifier, QString(letter));
        }
    }

    void ClickHead(ArchiveField field) {
        QHeaderView& head = *Grid().horizontalHeader();
        const int section = ArchiveModel::ColumnOf(field);
        Grid().scrollTo(Grid().model()->index(0, section));
        test::Click(*head.viewport(),
                    {head.sectionViewportPosition(section) + head.sectionSize(section) / 2, head.height() / 2});
    }
    void ChooseFromColumnMenu(const QString& entry) {
        bool found = false;
        QTimer::singleShot(0, [&] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            for (QAction* action : menu->actions()) {
                if (action->text() == entry) {
                    action->trigger();
                    found = true;
                }
            }
            menu->close();
        });
        Q_EMIT Grid().horizontalHeader()->customContextMenuRequested({5, 5});
        EXPECT_TRUE(found) << entry.toStdString();
    }
    QString Head(ArchiveField field) {
        return Grid().model()->headerData(ArchiveModel::ColumnOf(field), Qt::Horizontal).toString();
    }
    QStringList Titles() {
        QStringList titles;
        for (int row = 0; row < Grid().model()->rowCount(); ++row)
            titles.append(Grid().model()->index(row, 0).data().toString());
        return titles;
    }

    ArchiveDesk desk_;
    std::unique_ptr<ArchivePanel> panel_;
};

TEST_F(ArchivePanelTest, ShowsAllTitlesByArtistAndTheirCount) {
    EXPECT_EQ(Titles(),
              QStringList({QStringLiteral("Tag am Meer"), QStringLiteral("Nachtzug"), QStringLiteral("Nacht")}));
    EXPECT_EQ(Text("lblAnzahl"), QStringLiteral("3 Titel"));
    desk_.Add(QStringLiteral("Neu"), QStringLiteral("Neu"));
    EXPECT_TRUE(WaitUntil([this] { return Text("lblAnzahl") == QStringLiteral("4 Titel"); }));
    EXPECT_EQ(Titles().size(), 3) << "new titles show after the next refresh";
    panel_->Refresh();
    EXPECT_EQ(Titles().size(), 4);
}

TEST_F(ArchivePanelTest, SearchStartsAtTheSecondCharacter) {
    const QString before = desk_.archive.CurrentRecordSource();
    Type(QStringLiteral("n"));
    EXPECT_EQ(desk_.archive.CurrentRecordSource(), before);
    EXPECT_EQ(Text("Label23"), QString());
    Type(QStringLiteral("a"));
    EXPECT_EQ(Titles(), QStringList({QStringLiteral("Nachtzug"), QStringLiteral("Nacht")}));
    EXPECT_EQ(Text("Label23"), QStringLiteral("2 Titel gefunden"));
    EXPECT_EQ(Text("lblAnzahl"), QStringLiteral("3 Titel"));
    Find<QLineEdit>("Text1").clear();
    EXPECT_EQ(Text("Label23"), QStringLiteral("3 Titel gefunden"));
}

TEST_F(ArchivePanelTest, TheProgramsOwnTextsDoNotSearch) {
    const QString source = desk_.archive.CurrentRecordSource();
    panel_->SetSearchText(QStringLiteral("Juno"));
    EXPECT_EQ(desk_.archive.CurrentRecordSource(), source);
}

TEST_F(ArchivePanelTest, OnlyVisibleColumnsAreSearched) {
    ChooseFromColumnMenu(QStringLiteral("Titel"));
    EXPECT_TRUE(Grid().isColumnHidden(ArchiveModel::ColumnOf(ArchiveField::Titel)));
    EXPECT_FALSE(Settings(desk_.iniPath).GetSwitch(QStringLiteral("MA0"), QStringLiteral("Visible"), true));
    Type(QStringLiteral("ab"));
    EXPECT_TRUE(desk_.archive.CurrentRecordSource().startsWith(
        QStringLiteral("SELECT * FROM Daten  Where  Interpret Like '*ab*' or  Album Like '*ab*' or ")));
    ChooseFromColumnMenu(QStringLiteral("Standard wiederherstellen"));
    EXPECT_FALSE(Grid().isColumnHidden(ArchiveModel::ColumnOf(ArchiveField::Titel)));
    EXPECT_TRUE(Settings(desk_.iniPath).GetSwitch(QStringLiteral("MA0"), QStringLiteral("Visible"), false));
}

TEST_F(ArchivePanelTest, HeaderClicksSortAndMark) {
    ClickHead(ArchiveField::Titel);
    EXPECT_EQ(Titles().first(), QStringLiteral("Nacht"));
    EXPECT_EQ(Head(ArchiveField::Titel), QStringLiteral("Titel >"));
    ClickHead(ArchiveField::Titel);
    EXPECT_EQ(Titles().first(), QStringLiteral("Tag am Meer"));
    EXPECT_EQ(Head(ArchiveField::Titel), QStringLiteral("Titel <"));
    ClickHead(ArchiveField::Album);
    EXPECT_EQ(Head(ArchiveField::Titel), QStringLiteral("Titel"));
    EXPECT_EQ(Titles(),
              QStringList({QStringLiteral("Nacht"), QStringLiteral("Tag am Meer"), QStringLiteral("Nachtzug")}));
}

TEST_F(ArchivePanelTest, ColumnWidthsOrderAndLayoutFileAreKept) {
    QHeaderView& head = *Grid().horizontalHeader();
    head.resizeSection(ArchiveModel::ColumnOf(ArchiveField::Album), 234);
    head.moveSection(2, 0);
    EXPECT_EQ(Settings(desk_.iniPath).GetNumber(QStringLiteral("MA0"), QStringLiteral("Width"), 0), 234 * 15);
    const LayoutFile layout = LayoutFile::Read(desk_.data.Path(QStringLiteral("\\mp3tabelle.dll")));
    EXPECT_EQ(layout.columnWidths[0], 234 * 15);
    EXPECT_EQ(layout.archivePath, desk_.archive.Path());

    Settings again(desk_.iniPath);
    const ArchivePanel second(desk_.archive, again, desk_.data);
    const auto* grid = second.findChild<ArchiveGrid*>();
    EXPECT_EQ(grid->horizontalHeader()->logicalIndex(0), ArchiveModel::ColumnOf(ArchiveField::Album));
    EXPECT_EQ(grid->columnWidth(ArchiveModel::ColumnOf(ArchiveField::Album)), 234);
}

TEST_F(ArchivePanelTest, TheLineShowsTheCurrentTitleAndHandsOutTheMarkedOnes) {
    QList<TitleRecord> handed;
    int list = 0;
    QObject::connect(panel_.get(), &ArchivePanel::AddToListRequested, panel_.get(),
                     [&](int to, const QList<TitleRecord>& records) {
                         list = to;
                         handed = records;
                     });
    auto& button = Find<QAbstractButton>("cmdListe2");
    EXPECT_FALSE(button.isEnabled());
    Grid().selectRow(1);
    EXPECT_EQ(Text("lblInterpret"), QStringLiteral("Juno"));
    EXPECT_EQ(Text("lblTitel"), QStringLiteral("Juno - Nachtzug"));
    EXPECT_EQ(Text("lblPfad"), QStringLiteral("/musik/Juno - Nachtzug.mp3"));
    panel_->MAAlleTitelAuswaehlen();
    button.click();
    EXPECT_EQ(list, 2);
    ASSERT_EQ(handed.size(), 3);
    EXPECT_EQ(handed.first().Interpret, QStringLiteral("Abba"));
}

TEST_F(ArchivePanelTest, AWidePanelHasTheTitleBesideTheGridWhereItIsHighEnough) {
    auto& side = Find<QWidget>("Seitenfeld");
    auto* wishes = new QWidget;
    wishes->setMinimumHeight(100);
    panel_->Side().Add(*wishes);
    panel_->SetLayoutMode(LayoutMode::Wide);
    struct Case {
        int height;
        bool beside, wishes;
    };
    for (const Case& c :
         {Case{400, true, true}, Case{200, true, false}, Case{140, false, false}, Case{400, true, true}}) {
        panel_->resize(1700, c.height);
        QApplication::processEvents();
        EXPECT_EQ(side.isVisible(), c.beside) << c.height;
        EXPECT_EQ(wishes->isVisible(), c.wishes) << c.height;
        EXPECT_EQ(Find<QWidget>("lblPfad").isVisible(), !c.beside) << c.height;
        EXPECT_TRUE(Find<QWidget>("Label5").isVisible()) << c.height;
        EXPECT_LE(side.geometry().bottom(), panel_->height());
    }
    panel_->SetLayoutMode(LayoutMode::Narrow);
    EXPECT_FALSE(Find<QWidget>("Label5").isVisible());
}

TEST_F(ArchivePanelTest, TheCurrentTitleStaysCurrentAmongOtherRows) {
    Grid().selectRow(2);
    Type(QStringLiteral("nacht"));
    EXPECT_EQ(panel_->CurrentRecord().Interpret, QStringLiteral("O'Neil"));
    ClickHead(ArchiveField::Titel);
    EXPECT_EQ(Grid().currentIndex().row(), 0);
    EXPECT_EQ(panel_->CurrentRecord().Interpret, QStringLiteral("O'Neil"));
    Find<QLineEdit>("Text1").setText(QStringLiteral("Abba"));
    EXPECT_EQ(Text("lblTitel"), QString());
    EXPECT_TRUE(panel_->SelectedRecords().isEmpty());
}

TEST_F(ArchivePanelTest, EnterAndDoubleClickTellWhichTitle) {
    QStringList told;
    QObject::connect(panel_.get(), &ArchivePanel::PreListenRequested, panel_.get(),
                     [&](const TitleRecord& record) { told.append(QStringLiteral("hören ") + record.Interpret); });
    QObject::connect(panel_.get(), &ArchivePanel::TitleActivated, panel_.get(),
                     [&](const TitleRecord& record) { told.append(QStringLiteral("liste ") + record.Interpret); });
    Grid().selectRow(0);
    test::PressKey(Grid(), Qt::Key_Return);
    const QPoint place = Grid().visualRect(Grid().model()->index(1, 0)).center();
    test::Click(*Grid().viewport(), place);
    QMouseEvent twice(QEvent::MouseButtonDblClick, place, Grid().viewport()->mapToGlobal(place), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(Grid().viewport(), &twice);
    EXPECT_EQ(told, QStringList({QStringLiteral("hören Abba"), QStringLiteral("liste Juno")}));
}

TEST_F(ArchivePanelTest, NarrowFoldsTheLineAndNothingInTheHeadIsCut) {
    SkinStyle::Apply(*qApp, QStringLiteral("Grey"), QStringLiteral("groß"), QStringLiteral("gross"));
    panel_->SetLayoutMode(LayoutMode::Narrow);
    panel_->resize(784, 260);
    Type(QStringLiteral("na"));
    QApplication::processEvents();
    EXPECT_FALSE(Find<QLabel>("lblTitel").isVisible());
    for (const char* name : {"Label23", "lblAnzahl"})
        EXPECT_GE(Find<QLabel>(name).width(), Find<QLabel>(name).sizeHint().width()) << name;
    EXPECT_LE(panel_->minimumSizeHint().width(), 784);
    SkinStyle::Apply(*qApp, QStringLiteral("Light Green"), QStringLiteral("klein"), QStringLiteral("klein"));
}

TEST(EmptyArchiveTest, AnEmptyArchiveOffersTheImport) {
    ArchiveDesk desk;
    ArchivePanel panel(desk.archive, desk.settings, desk.data);
    panel.resize(1000, 300);
    panel.show();
    int wanted = 0;
    QObject::connect(&panel, &ArchivePanel::ImportRequested, &panel, [&] { ++wanted; });
    auto* button = panel.findChild<QAbstractButton*>(QStringLiteral("cmdOrdnerEinlesen"));
    ASSERT_TRUE(button && button->isVisible());
    button->click();
    EXPECT_EQ(wanted, 1);
    EXPECT_EQ(panel.findChild<QLabel*>(QStringLiteral("lblAnzahl"))->text(), QStringLiteral("0 Titel"));
    desk.Add(QStringLiteral("A"), QStringLiteral("B"));
    EXPECT_TRUE(WaitUntil([&] { return panel.findChild<QWidget*>(QStringLiteral("DataGrid2"))->isVisible(); }));
}

} // namespace

} // namespace kalvo
