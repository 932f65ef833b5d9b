#include "archive/ui/ArchiveGrid.h"

#include "archive/ArchiveSession.h"
#include "archive/ArchiveStatements.h"
#include "archive/ui/ArchiveDesk.h"
#include "archive/ui/ArchiveHeader.h"
#include "support/WindowActs.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QWheelEvent>

namespace kalvo::test {
namespace {

using enum ArchiveField;

class ArchiveGridTest : public ::testing::Test, protected ArchiveDesk {
protected:
    ArchiveGridTest() {
        grid_.resize(900, 120);
        grid_.show();
    }

    Archive& Filled() {
        int number = 99;
        for (const char* artist : {"Abba", "Älpler", "Beat", "Beatrix", "Caro", "Dora", "Zoo"})
            Add(QString::fromUtf8(artist), u"Lied %1"_s.arg(number--));
        archive.Refresh();
        return archive;
    }
    void Resize(int width, int height) {
        grid_.resize(width, height);
        QApplication::processEvents();
    }
    void Mark(const QList<int>& rows) {
        grid_.clearSelection();
        for (const int row : rows)
            grid_.selectionModel()->select(grid_.model()->index(row, 0),
                                           QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    QStringList Marked() {
        QStringList artists;
        for (const qint64 nr : grid_.MarkedNumbers())
            artists.append(archive.RowAt(archive.RowOf(nr)).Interpret);
        return artists;
    }
    /** Artist of the title that the letters lead to. */
    static QString Type(ArchiveGrid& grid, const QString& letters) {
        for (const QChar letter : letters)
            PressKey(grid, letter == u' ' ? Qt::Key_Space : Qt::Key_A, Qt::NoModifier, QString(letter));
        return grid.CurrentRecord().Interpret;
    }
    /** Where the wheel leads to. */
    int Wheel(int y) {
        QWheelEvent event(QPointF(10, 60), grid_.mapToGlobal(QPointF(10, 60)), {}, {0, y}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(grid_.viewport(), &event);
        return grid_.verticalScrollBar()->value();
    }

    ArchiveGrid grid_{Filled(), settings};
};

TEST_F(ArchiveGridTest, MarksSurviveARefreshAndASortButNotOtherTitles) {
    Mark({0, 2, 3});
    const QStringList marked{u"Abba"_s, u"Beat"_s, u"Beatrix"_s};
    Add(u"Aaron"_s, u"Neu"_s);
    archive.Refresh();
    EXPECT_EQ(Marked(), marked);
    archive.SetRecordSource(ArchiveStatements::Sorted(Interpret, true));
    EXPECT_EQ(Marked(), QStringList(marked.rbegin(), marked.rend()));
    grid_.setCurrentIndex(grid_.model()->index(0, 0));
    Mark({0, 1});
    archive.SetRecordSource(ArchiveStatements::QuickSearch(u"oo"_s, grid_.VisibleFields()));
    EXPECT_EQ(Marked(), QStringList(u"Zoo"_s)) << "the current title alone";
}

TEST_F(ArchiveGridTest, DeletedTitlesLeaveTheMarksAndAllCanBeMarked) {
    grid_.MAAlleTitelAuswaehlen();
    EXPECT_EQ(grid_.MarkedNumbers().size(), 7);
    EXPECT_EQ(grid_.selectionModel()->selection().size(), 1) << "one range, however many rows";
    ASSERT_TRUE(archive.DeleteTitles({archive.IdAt(1), archive.IdAt(6)}));
    archive.Refresh();
    EXPECT_EQ(Marked().join(u' '), u"Abba Beat Beatrix Caro Dora"_s);
    EXPECT_EQ(grid_.SelectedRecords().size(), 5);
}

TEST_F(ArchiveGridTest, LettersJumpInTheSortedColumn) {
    QApplication::setKeyboardInputInterval(60000); // however slowly this machine types
    EXPECT_EQ(Type(grid_, u"c"_s), u"Caro"_s);
    EXPECT_EQ(Type(grid_, u"x"_s), u"Caro"_s) << "nothing begins with cx";
    const struct {
        QString letters;
        bool descending;
        ArchiveField field;
        QString artist;
    } cases[] = {{u"BEATR"_s, false, Interpret, u"Beatrix"_s},
                 {u"al"_s, false, Interpret, u"Älpler"_s},
                 {u"be"_s, true, Interpret, u"Beatrix"_s},
                 {u"lied 98"_s, false, Titel, u"Älpler"_s}};
    for (const auto& c : cases) {
        ArchiveGrid fresh(archive, settings);
        archive.SetRecordSource(ArchiveStatements::Sorted(c.field, c.descending));
        EXPECT_EQ(Type(fresh, c.letters), c.artist) << c.letters.toStdString();
    }
}

TEST_F(ArchiveGridTest, TheWheelGoesByItsRows) {
    Resize(900, 90);
    ASSERT_GE(grid_.verticalScrollBar()->maximum(), 4);
    EXPECT_EQ(Wheel(-120), 3);
    grid_.SetWheelRows(1);
    EXPECT_EQ(Wheel(120), 2);
    EXPECT_EQ(Wheel(-60), 2);
    EXPECT_EQ(Wheel(-60), 3) << "two halves are a notch";
}

TEST_F(ArchiveGridTest, TheArrowOfAHeadOpensItsValuesAndDoesNotSort) {
    QList<ArchiveField> opened;
    int clicked = 0;
    QObject::connect(&grid_, &ArchiveGrid::ValueListRequested, &grid_,
                     [&](ArchiveField field, const QRect&) { opened.append(field); });
    QObject::connect(&grid_, &ArchiveGrid::HeaderClicked, &grid_, [&] { ++clicked; });
    auto& head = *grid_.findChild<ArchiveHeader*>();
    const int artist = ArchiveModel::ColumnOf(Interpret);
    Click(*head.viewport(), head.ArrowRect(artist).center());
    EXPECT_EQ(opened, QList<ArchiveField>{Interpret});
    EXPECT_EQ(clicked, 0);
    Click(*head.viewport(), {head.sectionViewportPosition(artist) + 20, head.height() / 2});
    EXPECT_EQ(clicked, 1);
    EXPECT_TRUE(head.ArrowRect(ArchiveModel::ColumnOf(Jahr)).isEmpty());
    grid_.setCurrentIndex(grid_.model()->index(0, ArchiveModel::ColumnOf(Stil)));
    PressKey(grid_, Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(opened.last(), Stil);
}

TEST_F(ArchiveGridTest, ColumnsFitTheWindowUntilTheUserChangesThem) {
    Resize(1300, 200);
    const int last = ArchiveModel::ColumnOf(Extra4);
    EXPECT_LE(grid_.columnViewportPosition(last) + grid_.columnWidth(last), grid_.viewport()->width());
    QList<GridColumn> columns = grid_.Columns();
    columns[0].caption = u"Lied"_s;
    columns[1].visible = false;
    columns.move(0, 2);
    GridColumns::Write(settings, columns);
    grid_.ReloadColumns();
    EXPECT_EQ(grid_.model()->headerData(0, Qt::Horizontal).toString(), u"Lied"_s);
    EXPECT_TRUE(grid_.isColumnHidden(1));
    EXPECT_EQ(grid_.horizontalHeader()->visualIndex(0), 2);
    Resize(700, 200);
    EXPECT_EQ(GridColumns::Read(settings, 13), columns) << "and kept as they were";
    EXPECT_EQ(grid_.Columns(), columns);
}

TEST(MarkedTitlesTest, TooManySingleRowsAreNotMarkedAgain) {
    ArchiveDesk desk;
    {
        const Archive::Session session(desk.archive);
        for (int i = 0; i < 2 * MarkedTitles::kMostRanges + 4; ++i)
            desk.Add({}, {});
    }
    desk.archive.Refresh();
    const ArchiveModel model(desk.archive);
    for (const int rows : {MarkedTitles::kMostRanges, MarkedTitles::kMostRanges + 1}) {
        QItemSelection everySecond;
        for (int i = 0; i < rows; ++i)
            everySecond.append({model.index(2 * i, 0), model.index(2 * i, model.columnCount() - 1)});
        MarkedTitles marked;
        marked.Take(everySecond, desk.archive);
        EXPECT_EQ(marked.RowsIn(model, desk.archive).size(), rows > MarkedTitles::kMostRanges ? 0 : rows);
    }
}

} // namespace
} // namespace kalvo::test
