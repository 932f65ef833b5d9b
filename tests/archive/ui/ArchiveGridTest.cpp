#include "archive/ui/ArchiveGrid.h"

#include "archive/ArchiveSession.h"
#include "archive/ArchiveStatements.h"
#include "archive/ui/ArchiveDesk.h"
#include "archive/ui/ArchiveHeader.h"
#include "archive/ui/WindowActs.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QWheelEvent>

namespace kalvo {
namespace {

using test::ArchiveDesk;
using test::PressKey;

class ArchiveGridTest : public ::testing::Test {
protected:
    void SetUp() override {
        for (const char* artist : {"Abba", "Älpler", "Beat", "Beatrix", "Caro", "Dora", "Zoo"})
            desk_.Add(QString::fromUtf8(artist), QStringLiteral("Lied %1").arg(99 - number_++), {}, {});
        desk_.archive.Refresh();
        grid_ = std::make_unique<ArchiveGrid>(desk_.archive, desk_.settings);
        grid_->resize(900, 120);
        grid_->show();
    }

    void Mark(const QList<int>& rows) {
        grid_->clearSelection();
        for (const int row : rows)
            grid_->selectionModel()->select(grid_->model()->index(row, 0),
                                            QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    QStringList Marked() {
        QStringList artists;
        for (const qint64 nr : grid_->MarkedNumbers())
            artists.append(desk_.archive.RowAt(desk_.archive.RowOf(nr)).Interpret);
        return artists;
    }
    QString Current() { return grid_->CurrentRecord().Interpret; }
    void Type(const QString& letters) {
        for (const QChar letter : letters)
            PressKey(*grid_, letter == u' ' ? Qt::Key_Space : Qt::Key_A, Qt::NoModifier, QString(letter));
    }
    void Wheel(int y) {
        QWheelEvent event(QPointF(10, 60), grid_->mapToGlobal(QPointF(10, 60)), {}, {0, y}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(grid_->viewport(), &event);
    }

    int number_ = 0;
    ArchiveDesk desk_;
    std::unique_ptr<ArchiveGrid> grid_;
};

TEST_F(ArchiveGridTest, MarksSurviveARefreshAndASortButNotOtherTitles) {
    Mark({0, 2, 3});
    const QStringList marked{QStringLiteral("Abba"), QStringLiteral("Beat"), QStringLiteral("Beatrix")};
    desk_.Add(QStringLiteral("Aaron"), QStringLiteral("Neu"));
    desk_.archive.Refresh();
    EXPECT_EQ(Marked(), marked);
    desk_.archive.SetRecordSource(ArchiveStatements::Sorted(ArchiveField::Interpret, true));
    EXPECT_EQ(Marked(), QStringList(marked.rbegin(), marked.rend()));
    grid_->setCurrentIndex(grid_->model()->index(0, 0));
    Mark({0, 1});
    desk_.archive.SetRecordSource(ArchiveStatements::QuickSearch(QStringLiteral("oo"), grid_->VisibleFields()));
    EXPECT_EQ(Marked(), QStringList(QStringLiteral("Zoo"))) << "the current title alone";
}

TEST_F(ArchiveGridTest, DeletedTitlesLeaveTheMarksAndAllCanBeMarked) {
    grid_->MAAlleTitelAuswaehlen();
    EXPECT_EQ(grid_->MarkedNumbers().size(), 7);
    EXPECT_EQ(grid_->selectionModel()->selection().size(), 1) << "one range, however many rows";
    ASSERT_TRUE(desk_.archive.DeleteTitles({desk_.archive.IdAt(1), desk_.archive.IdAt(6)}));
    desk_.archive.Refresh();
    EXPECT_EQ(Marked().size(), 5);
    EXPECT_FALSE(Marked().contains(QStringLiteral("Zoo")));
    EXPECT_EQ(grid_->SelectedRecords().size(), 5);
}

TEST_F(ArchiveGridTest, LettersJumpInTheSortedColumn) {
    QApplication::setKeyboardInputInterval(60000); // however slowly this machine types
    Type(QStringLiteral("c"));
    EXPECT_EQ(Current(), QStringLiteral("Caro"));
    Type(QStringLiteral("x"));
    EXPECT_EQ(Current(), QStringLiteral("Caro")) << "nothing begins with cx";
    struct Case {
        QString letters;
        bool descending;
        ArchiveField field;
        QString artist;
    };
    const Case cases[] = {{QStringLiteral("BEATR"), false, ArchiveField::Interpret, QStringLiteral("Beatrix")},
                          {QStringLiteral("al"), false, ArchiveField::Interpret, QStringLiteral("Älpler")},
                          {QStringLiteral("be"), true, ArchiveField::Interpret, QStringLiteral("Beatrix")},
                          {QStringLiteral("lied 98"), false, ArchiveField::Titel, QStringLiteral("Älpler")}};
    for (const Case& c : cases) {
        ArchiveGrid fresh(desk_.archive, desk_.settings);
        desk_.archive.SetRecordSource(ArchiveStatements::Sorted(c.field, c.descending));
        for (const QChar letter : c.letters)
            PressKey(fresh, letter == u' ' ? Qt::Key_Space : Qt::Key_A, Qt::NoModifier, QString(letter));
        EXPECT_EQ(fresh.CurrentRecord().Interpret, c.artist) << c.letters.toStdString();
    }
}

TEST_F(ArchiveGridTest, TheWheelGoesByItsRows) {
    grid_->resize(900, 90);
    QApplication::processEvents();
    ASSERT_GE(grid_->verticalScrollBar()->maximum(), 4);
    Wheel(-120);
    EXPECT_EQ(grid_->verticalScrollBar()->value(), 3);
    grid_->SetWheelRows(1);
    Wheel(120);
    EXPECT_EQ(grid_->verticalScrollBar()->value(), 2);
    Wheel(-60);
    EXPECT_EQ(grid_->verticalScrollBar()->value(), 2);
    Wheel(-60);
    EXPECT_EQ(grid_->verticalScrollBar()->value(), 3) << "two halves are a notch";
}

TEST_F(ArchiveGridTest, TheArrowOfAHeadOpensItsValuesAndDoesNotSort) {
    QList<ArchiveField> opened;
    int clicked = 0;
    QObject::connect(grid_.get(), &ArchiveGrid::ValueListRequested, grid_.get(),
                     [&](ArchiveField field, const QRect&) { opened.append(field); });
    QObject::connect(grid_.get(), &ArchiveGrid::HeaderClicked, grid_.get(), [&] { ++clicked; });
    auto& head = *grid_->findChild<ArchiveHeader*>();
    const int artist = ArchiveModel::ColumnOf(ArchiveField::Interpret);
    test::Click(*head.viewport(), head.ArrowRect(artist).center());
    EXPECT_EQ(opened, QList<ArchiveField>{ArchiveField::Interpret});
    EXPECT_EQ(clicked, 0);
    test::Click(*head.viewport(), {head.sectionViewportPosition(artist) + 20, head.height() / 2});
    EXPECT_EQ(clicked, 1);
    EXPECT_TRUE(head.ArrowRect(ArchiveModel::ColumnOf(ArchiveField::Jahr)).isEmpty());
    grid_->setCurrentIndex(grid_->model()->index(0, ArchiveModel::ColumnOf(ArchiveField::Stil)));
    PressKey(*grid_, Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(opened.last(), ArchiveField::Stil);
}

TEST_F(ArchiveGridTest, ColumnsFitTheWindowUntilTheUserChangesThem) {
    grid_->resize(1300, 200);
    QApplication::processEvents();
    const int last = ArchiveModel::ColumnOf(ArchiveField::Extra4);
    EXPECT_LE(grid_->columnViewportPosition(last) + grid_->columnWidth(last), grid_->viewport()->width());
    QList<GridColumn> columns = grid_->Columns();
    columns[0].caption = QStringLiteral("Lied");
    columns[1].visible = false;
    columns.move(0, 2);
    GridColumns::Write(desk_.settings, columns);
    grid_->ReloadColumns();
    EXPECT_EQ(grid_->model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Lied"));
    EXPECT_TRUE(grid_->isColumnHidden(1));
    EXPECT_EQ(grid_->horizontalHeader()->visualIndex(0), 2);
    grid_->resize(700, 200);
    QApplication::processEvents();
    EXPECT_EQ(GridColumns::Read(desk_.settings, 13), columns) << "and kept as they were";
    EXPECT_EQ(grid_->Columns(), columns);
}

TEST(MarkedTitlesTest, TooManySingleRowsAreNotMarkedAgain) {
    ArchiveDesk desk;
    {
        const Archive::Session session(desk.archive);
        for (int i = 0; i < 2 * MarkedTitles::kMostRanges + 4; ++i)
            desk.Add(QStringLiteral("A%1").arg(i, 5, 10, QChar(u'0')), QStringLiteral("T%1").arg(i % 2));
    }
    desk.archive.Refresh();
    ArchiveModel model(desk.archive);
    const auto rows = [&](int first, int last) {
        return QItemSelection(model.index(first, 0), model.index(last, model.columnCount() - 1));
    };
    QItemSelection everySecond;
    for (int i = 0; i <= MarkedTitles::kMostRanges; ++i)
        everySecond.append(QItemSelectionRange(model.index(2 * i, 0), model.index(2 * i, 11)));
    MarkedTitles marked;
    marked.Take(everySecond, desk.archive);
    EXPECT_TRUE(marked.RowsIn(model, desk.archive).isEmpty());
    everySecond.removeLast();
    marked.Take(everySecond, desk.archive);
    EXPECT_EQ(marked.RowsIn(model, desk.archive).size(), MarkedTitles::kMostRanges);
    marked.Take(rows(3, 5), desk.archive);
    EXPECT_EQ(marked.RowsIn(model, desk.archive), rows(3, 5));
}

} // namespace
} // namespace kalvo
