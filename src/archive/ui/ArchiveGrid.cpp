#include "archive/ui/ArchiveGrid.h"

#include "archive/TitleRow.h"
#include "archive/ui/ArchiveHeader.h"
#include "archive/ui/FoundTextDelegate.h"
#include "base/Settings.h"
#include "widgets/DragTypes.h"
#include "widgets/SkinStyle.h"

#include <QContextMenuEvent>
#include <QDrag>
#include <QGuiApplication>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QUrl>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

namespace kalvo {

ArchiveGrid::ArchiveGrid(Archive& archive, Settings& settings, QWidget* parent)
    : QTableView(parent),
      archive_(archive),
      settings_(settings),
      model_(new ArchiveModel(archive, this)),
      header_(new ArchiveHeader(this)),
      delegate_(new FoundTextDelegate(this)),
      columns_(GridColumns::Read(settings, SkinStyle::Units().F())),
      typeAhead_(archive) {
    setObjectName(QStringLiteral("DataGrid2"));
    setAccessibleName(tr("Titel im Musikarchiv"));
    setFrameShape(NoFrame);
    setHorizontalHeader(header_);
    setModel(model_);
    // Heads never show a selection; asking the view's whether a column is selected goes through all rows.
    header_->setSelectionModel(new QItemSelectionModel(model_, header_));
    setItemDelegate(delegate_);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollMode(ScrollPerPixel);
    setShowGrid(false);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setDragDropMode(DragOnly);
    SetUpHeader();
    ApplyColumns();
    ApplyLook();
    ConnectRows();
}

void ArchiveGrid::ConnectRows() {
    connect(this, &QTableView::doubleClicked, this,
            [this](const QModelIndex& index) { Q_EMIT TitleActivated(archive_.RowAt(index.row())); });
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this](const QModelIndex& current) {
        if (current.isValid())
            currentNr_ = archive_.IdAt(current.row());
        Q_EMIT CurrentTitleChanged();
    });
    // Connected after the view's own answers: the selection is still there before, and empty after a reset.
    connect(model_, &QAbstractItemModel::modelAboutToBeReset, this,
            [this] { marked_.Take(selectionModel()->selection(), archive_); });
    connect(model_, &QAbstractItemModel::modelReset, this, [this] {
        KeepMarks();
        KeepCurrent();
    });
    connect(model_, &QAbstractItemModel::dataChanged, this, [this](const QModelIndex& first) {
        if (first.row() == currentIndex().row())
            Q_EMIT CurrentTitleChanged();
    });
}

void ArchiveGrid::SetUpHeader() {
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    ArchiveHeader* header = header_;
    header->SetListSections({ArchiveModel::ColumnOf(ArchiveField::Interpret),
                             ArchiveModel::ColumnOf(ArchiveField::Album), ArchiveModel::ColumnOf(ArchiveField::Stil),
                             ArchiveModel::ColumnOf(ArchiveField::Bewertung),
                             ArchiveModel::ColumnOf(ArchiveField::Extra1)});
    connect(header, &ArchiveHeader::ValueListRequested, this, &ArchiveGrid::OpenValueList);
    header->setSectionsClickable(true);
    header->setSectionsMovable(true);
    header->setHighlightSections(false);
    header->setResizeContentsPrecision(0);
    header->setTextElideMode(Qt::ElideRight);
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    header->viewport()->installEventFilter(this);
    connect(header, &QHeaderView::sectionClicked, this,
            [this](int section) { Q_EMIT HeaderClicked(ArchiveModel::FieldOf(section)); });
    connect(header, &QHeaderView::sectionResized, this, &ArchiveGrid::ColumnsTouched);
    connect(header, &QHeaderView::sectionMoved, this, &ArchiveGrid::ColumnsTouched);
    connect(header, &QHeaderView::customContextMenuRequested, this, &ArchiveGrid::ShowColumnMenu);
}

void ArchiveGrid::ApplyLook() {
    const FontUnits& units = SkinStyle::Units();
    verticalHeader()->setMinimumSectionSize(units.F());
    verticalHeader()->setDefaultSectionSize(units.TableRow());
    horizontalHeader()->setMinimumSectionSize(units.Of(2));
    horizontalHeader()->setFixedHeight(units.ColumnHead());
    FitColumns();
}

/** Columns that nobody has changed yet follow the width of the grid. */
void ArchiveGrid::FitColumns() {
    if (GridColumns::AreStored(settings_))
        return;
    columns_ = GridColumns::Defaults(SkinStyle::Units().F(), viewport()->width());
    ApplyColumns();
}

void ArchiveGrid::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    FitColumns();
}

void ArchiveGrid::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::StyleChange)
        ApplyLook();
}

void ArchiveGrid::wheelEvent(QWheelEvent* event) {
    const int angle = event->angleDelta().y();
    if (angle == 0 || event->modifiers() != Qt::NoModifier) {
        QTableView::wheelEvent(event);
        return;
    }
    constexpr int notch = QWheelEvent::DefaultDeltasPerStep;
    wheelAngle_ += angle * wheelRows_;
    verticalScrollBar()->setValue(verticalScrollBar()->value() - wheelAngle_ / notch);
    wheelAngle_ %= notch;
    event->accept();
}

void ArchiveGrid::ReloadColumns() {
    columns_ = GridColumns::Read(settings_, SkinStyle::Units().F());
    ApplyColumns();
    Q_EMIT ColumnsChanged();
}

void ArchiveGrid::ApplyColumns() {
    const QScopedValueRollback guard(applying_, true);
    QStringList captions(columns_.size());
    for (const GridColumn& column : std::as_const(columns_))
        captions[ArchiveModel::ColumnOf(column.field)] = column.caption;
    model_->SetCaptions(captions);
    QHeaderView* header = horizontalHeader();
    for (int place = 0; place < columns_.size(); ++place) {
        const GridColumn& column = columns_[place];
        const int section = ArchiveModel::ColumnOf(column.field);
        header->moveSection(header->visualIndex(section), place);
        header->setSectionHidden(section, !column.visible);
        header->resizeSection(section, qRound(double(column.width) / GridColumns::twipsPerPixel));
    }
}

void ArchiveGrid::TakeColumnsFromHeader() {
    const QHeaderView* header = horizontalHeader();
    QList<GridColumn> taken;
    for (int place = 0; place < header->count(); ++place) {
        const int section = header->logicalIndex(place);
        const ArchiveField field = ArchiveModel::FieldOf(section);
        GridColumn column = *std::find_if(columns_.cbegin(), columns_.cend(),
                                          [&](const GridColumn& known) { return known.field == field; });
        // A hidden section has no width of its own; the one that it had comes back with it.
        if (!header->isSectionHidden(section))
            column.width = header->sectionSize(section) * GridColumns::twipsPerPixel;
        taken.append(column);
    }
    columns_ = taken;
}

void ArchiveGrid::ColumnsTouched() {
    if (applying_)
        return;
    columnsDirty_ = true;
    if (!(QGuiApplication::mouseButtons() & Qt::LeftButton))
        WriteColumns();
}

void ArchiveGrid::WriteColumns() {
    columnsDirty_ = false;
    TakeColumnsFromHeader();
    GridColumns::Write(settings_, columns_);
    Q_EMIT ColumnsChanged();
}

bool ArchiveGrid::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease && columnsDirty_ && watched == horizontalHeader()->viewport())
        QMetaObject::invokeMethod(this, &ArchiveGrid::WriteColumns, Qt::QueuedConnection);
    return QTableView::eventFilter(watched, event);
}

void ArchiveGrid::ShowColumnMenu(const QPoint& position) {
    QMenu menu(this);
    const qsizetype shown = VisibleFields().size();
    for (const GridColumn& column : std::as_const(columns_)) {
        QAction* action = menu.addAction(FieldCaption(column.field));
        action->setCheckable(true);
        action->setChecked(column.visible);
        action->setEnabled(!column.visible || shown > 1);
        connect(action, &QAction::toggled, this,
                [this, field = column.field](bool visible) { ShowColumn(field, visible); });
    }
    menu.addSeparator();
    connect(menu.addAction(tr("Standard wiederherstellen")), &QAction::triggered, this, [this] {
        columns_ = GridColumns::Defaults(SkinStyle::Units().F(), viewport()->width());
        ApplyColumns();
        WriteColumns();
    });
    menu.exec(horizontalHeader()->mapToGlobal(position));
}

void ArchiveGrid::ShowColumn(ArchiveField field, bool visible) {
    for (GridColumn& column : columns_) {
        if (column.field == field)
            column.visible = visible;
    }
    ApplyColumns();
    WriteColumns();
}

void ArchiveGrid::OpenValueList(int section) {
    const QPoint corner(header_->sectionViewportPosition(section), 0);
    Q_EMIT ValueListRequested(
        ArchiveModel::FieldOf(section),
        QRect(header_->viewport()->mapToGlobal(corner), QSize(header_->sectionSize(section), header_->height())));
}

QList<qint64> ArchiveGrid::MarkedNumbers() const {
    const QList<int> rows = SelectedRows(selectionModel()->selection());
    QList<qint64> numbers;
    numbers.reserve(rows.size());
    for (const int row : rows)
        numbers.append(archive_.IdAt(row));
    return numbers;
}

QList<TitleRecord> ArchiveGrid::SelectedRecords() const {
    QList<int> rows = SelectedRows(selectionModel()->selection());
    if (rows.isEmpty() && HasCurrent())
        rows.append(currentIndex().row());
    return archive_.RowsAt(rows);
}

TitleRecord ArchiveGrid::CurrentRecord() const {
    return HasCurrent() ? archive_.RowAt(currentIndex().row()) : TitleRecord();
}

void ArchiveGrid::KeepMarks() {
    const auto source = ParseRecordSource(archive_.CurrentRecordSource());
    const QList<RecordCondition> conditions = source ? source->conditions : QList<RecordCondition>();
    if (std::exchange(shown_, conditions) == conditions && !marked_.IsEmpty())
        selectionModel()->select(marked_.RowsIn(*model_, archive_), QItemSelectionModel::ClearAndSelect);
}

/** The current title stays the current one while the new rows hold it; without other marks it is the marked one. */
void ArchiveGrid::KeepCurrent() {
    const int row = currentNr_ == 0 ? -1 : archive_.RowOf(currentNr_);
    if (row < 0) {
        Q_EMIT CurrentTitleChanged();
        return;
    }
    const QModelIndex place = model_->index(row, ArchiveModel::ColumnOf(VisibleFields().first()));
    selectionModel()->setCurrentIndex(place, selectionModel()->hasSelection()
                                                 ? QItemSelectionModel::NoUpdate
                                                 : QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(place);
}

void ArchiveGrid::SetSearchText(const QString& text) {
    delegate_->SetSearchText(text);
    viewport()->update();
}

void ArchiveGrid::SortBy(ArchiveField field, GridFilter filter) {
    filter.visibleFields = VisibleFields();
    model_->HeaderClick(field, filter);
}

void ArchiveGrid::keyboardSearch(const QString& search) {
    const int row = typeAhead_.Type(search);
    if (row < 0)
        return;
    const QModelIndex place = model_->index(row, ArchiveModel::ColumnOf(VisibleFields().first()));
    selectionModel()->setCurrentIndex(place, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(place);
}

void ArchiveGrid::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && HasCurrent()) {
        Q_EMIT PreListenRequested(CurrentRecord());
    } else if (event->key() == Qt::Key_Space && typeAhead_.IsTyping()) {
        keyboardSearch(event->text());
    } else if (event->key() == Qt::Key_Down && event->modifiers() == Qt::AltModifier && HasCurrent() &&
               header_->HasList(currentIndex().column())) {
        OpenValueList(currentIndex().column());
    } else if (event->key() == Qt::Key_Delete) {
        event->ignore(); // the view would take it for a letter
    } else {
        QTableView::keyPressEvent(event);
    }
}

void ArchiveGrid::startDrag(Qt::DropActions) {
    DragTypes::Rows rows;
    QList<QUrl> files;
    for (const TitleRecord& record : SelectedRecords()) {
        rows.append(TitleRow::Pack(record));
        files.append(QUrl::fromLocalFile(record.Pfad));
    }
    if (rows.isEmpty())
        return;
    auto* carried = new QMimeData;
    DragTypes::Put(*carried, DragTypes::ArchiveTitles(), rows);
    carried->setUrls(files);
    auto* drag = new QDrag(this);
    drag->setMimeData(carried);
    drag->exec(Qt::CopyAction);
}

void ArchiveGrid::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    QPainter painter(viewport());
    painter.setPen(SkinStyle::Colours().dim);
    painter.drawText(viewport()->rect(), Qt::AlignCenter, EmptyHint());
    if (hasFocus()) { // without a frame, and perhaps without a row that could show it
        painter.setPen(SkinStyle::Colours().text);
        painter.drawRect(viewport()->rect().adjusted(0, 0, -1, -1));
    }
}

QString ArchiveGrid::EmptyHint() const {
    if (model_->rowCount() > 0)
        return {};
    if (archive_.IsLoading())
        return tr("Das Musikarchiv wird geladen ...");
    return delegate_->IsSearching() ? tr("Kein Titel passt zur Suche.") : QString();
}

} // namespace kalvo
