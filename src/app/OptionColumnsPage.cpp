#include "app/OptionColumnsPage.h"

#include "widgets/ButtonPainting.h"
#include "widgets/RingRoom.h"
#include "widgets/SkinStyle.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>

#include <algorithm>

namespace kalvo {

namespace {

enum ColumnPlace { Caption, Width, PlaceCount };

constexpr int fieldRole = Qt::UserRole;
constexpr int longestCaption = 60;

} // namespace

OptionColumnsPage::OptionColumnsPage(QWidget* parent)
    : OptionPage(tr("Musikarchiv"), parent), table_(new QTableWidget(0, PlaceCount, this)) {
    BuildTable();
    AddRow(table_);
    AddRow(BuildButtons());
    wheel_ = AddNumber(QStringLiteral("Wheel"), tr("Zeilen je Raste des Mausrads"), 1, 20, {});
    ApplyLook();
    ShowButtons();
}

void OptionColumnsPage::BuildTable() {
    Named(table_, QStringLiteral("lstSpalten"), tr("Spalten des Musikarchivs, von links nach rechts"));
    table_->setHorizontalHeaderLabels({tr("Spalte"), tr("Breite in Bildpunkten")});
    table_->horizontalHeader()->setSectionResizeMode(Caption, QHeaderView::Stretch);
    table_->horizontalHeader()->setSectionResizeMode(Width, QHeaderView::ResizeToContents);
    table_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table_->horizontalHeaderItem(Width)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    table_->horizontalHeader()->setSectionsClickable(false);
    table_->horizontalHeader()->setHighlightSections(false);
    table_->verticalHeader()->hide();
    table_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setAlternatingRowColors(true);
    table_->setShowGrid(false);
    table_->setTabKeyNavigation(false);
    connect(table_, &QTableWidget::currentCellChanged, this, &OptionColumnsPage::ShowButtons);
}

QPushButton* OptionColumnsPage::AddButton(const QString& name, const QString& text, QWidget* row) {
    auto* button = Named(new QPushButton(text, row), name, text);
    button->setAutoDefault(false);
    row->layout()->addWidget(button);
    return button;
}

QWidget* OptionColumnsPage::BuildButtons() {
    auto* row = new RingRoom(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(focusRingMargin, focusRingMargin, focusRingMargin, focusRingMargin);
    up_ = AddButton(QStringLiteral("cmdHoch"), tr("Nach oben"), row);
    down_ = AddButton(QStringLiteral("cmdRunter"), tr("Nach unten"), row);
    layout->addStretch(1);
    standard_ = AddButton(QStringLiteral("cmdStandard"), tr("Standard"), row);
    connect(up_, &QPushButton::clicked, this, [this] { MoveCurrent(-1); });
    connect(down_, &QPushButton::clicked, this, [this] { MoveCurrent(1); });
    connect(standard_, &QPushButton::clicked, this,
            [this] { ShowColumns(GridColumns::Defaults(SkinStyle::Units().F())); });
    return row;
}

void OptionColumnsPage::changeEvent(QEvent* event) {
    OptionPage::changeEvent(event);
    if (event->type() == QEvent::StyleChange)
        ApplyLook();
}

void OptionColumnsPage::ApplyLook() {
    const FontUnits& units = SkinStyle::Units();
    table_->verticalHeader()->setMinimumSectionSize(units.F());
    table_->verticalHeader()->setDefaultSectionSize(units.TableRow());
    table_->setMinimumSize(units.Of(24), units.ColumnHead() + 5 * units.TableRow());
}

void OptionColumnsPage::ShowColumns(const QList<GridColumn>& columns) {
    const int row = std::max(0, table_->currentRow());
    table_->setRowCount(static_cast<int>(columns.size()));
    for (int place = 0; place < columns.size(); ++place) {
        const GridColumn& column = columns[place];
        auto* caption = new QTableWidgetItem(column.caption);
        caption->setData(fieldRole, static_cast<int>(column.field));
        caption->setCheckState(column.visible ? Qt::Checked : Qt::Unchecked);
        if (!GridColumns::HasFreeCaption(column.field))
            caption->setFlags(caption->flags() & ~Qt::ItemIsEditable);
        caption->setToolTip(tr("Feld: ") + FieldCaption(column.field));
        auto* width = new QTableWidgetItem;
        width->setData(Qt::EditRole, column.width / GridColumns::twipsPerPixel);
        width->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        table_->setItem(place, Caption, caption);
        table_->setItem(place, Width, width);
    }
    table_->setCurrentCell(row, Caption);
    ShowButtons();
}

QList<GridColumn> OptionColumnsPage::TakeColumns() const {
    QList<GridColumn> columns;
    for (int row = 0; row < table_->rowCount(); ++row) {
        const QTableWidgetItem* caption = table_->item(row, Caption);
        const int pixels = std::clamp(table_->item(row, Width)->data(Qt::EditRole).toInt(),
                                      GridColumns::narrowestPixels, GridColumns::widestPixels);
        columns.append({static_cast<ArchiveField>(caption->data(fieldRole).toInt()),
                        caption->text().left(longestCaption), pixels * GridColumns::twipsPerPixel,
                        caption->checkState() == Qt::Checked});
    }
    return columns;
}

void OptionColumnsPage::MoveCurrent(int by) {
    const int from = table_->currentRow();
    const int to = from + by;
    if (from < 0 || to < 0 || to >= table_->rowCount())
        return;
    QList<GridColumn> columns = TakeColumns();
    columns.move(from, to);
    ShowColumns(columns);
    table_->setCurrentCell(to, Caption);
}

void OptionColumnsPage::ShowButtons() {
    up_->setEnabled(table_->currentRow() > 0);
    down_->setEnabled(table_->currentRow() >= 0 && table_->currentRow() < table_->rowCount() - 1);
}

void OptionColumnsPage::Show(const OptionValues& values) {
    ShowColumns(values.columns);
    wheel_->setValue(values.wheelRows);
}

void OptionColumnsPage::Take(OptionValues& values) const {
    QList<GridColumn> columns = TakeColumns();
    if (GridColumns::VisibleFields(columns).isEmpty() && !columns.isEmpty())
        columns.first().visible = true; // an archive without columns shows nothing and offers no way back
    for (GridColumn& column : columns) {
        // A width kept in twips that no pixel meets stays as it is while nobody changes it.
        for (const GridColumn& kept : values.columns) {
            if (kept.field == column.field &&
                kept.width / GridColumns::twipsPerPixel == column.width / GridColumns::twipsPerPixel)
                column.width = kept.width;
        }
    }
    values.columns = columns;
    values.wheelRows = wheel_->value();
}

} // namespace kalvo
