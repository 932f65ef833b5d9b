#include "archive/ui/ArchiveGrid.h"

#include "archive/ui/ArchiveDesk.h"

#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QWheelEvent>

namespace kalvo {

namespace {

void Turn(QWidget& widget, int angle) {
    const QPointF place = widget.rect().center();
    QWheelEvent event(place, widget.mapToGlobal(place), {}, QPoint(0, angle), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &event);
}

TEST(ArchiveColumnsTest, ANotchMovesTheChosenNumberOfRows) {
    test::ArchiveDesk desk;
    for (int number = 0; number < 60; ++number)
        desk.Add(QStringLiteral("A"), QStringLiteral("Titel %1").arg(number));
    desk.archive.Refresh();
    ArchiveGrid grid(desk.archive, desk.settings);
    grid.resize(600, 200);
    grid.show();
    const QScrollBar& bar = *grid.verticalScrollBar();
    ASSERT_GT(bar.maximum(), 20);
    grid.SetWheelRows(7);
    Turn(*grid.viewport(), -QWheelEvent::DefaultDeltasPerStep);
    EXPECT_EQ(bar.value(), 7);
    grid.SetWheelRows(1);
    for (int part = 0; part < 4; ++part) // a touchpad sends parts of a notch
        Turn(*grid.viewport(), QWheelEvent::DefaultDeltasPerStep / 4);
    EXPECT_EQ(bar.value(), 6);
}

TEST(ArchiveColumnsTest, ColumnsChangedElsewhereAreTaken) {
    test::ArchiveDesk desk;
    ArchiveGrid grid(desk.archive, desk.settings);
    QList<GridColumn> columns = grid.Columns();
    columns[0].caption = QStringLiteral("Lied");
    columns[1].visible = false;
    columns.move(0, 2);
    GridColumns::Write(desk.settings, columns);
    grid.ReloadColumns();
    EXPECT_EQ(grid.model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Lied"));
    EXPECT_TRUE(grid.isColumnHidden(1));
    EXPECT_EQ(grid.horizontalHeader()->visualIndex(0), 2);
    EXPECT_EQ(GridColumns::Read(desk.settings, 13), columns) << "and kept as they were";
}

} // namespace

} // namespace kalvo
