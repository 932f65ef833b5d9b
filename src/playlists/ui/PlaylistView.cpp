#include "playlists/ui/PlaylistView.h"

#include "widgets/SkinStyle.h"

#include <QDrag>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>

namespace kalvo {

namespace {

constexpr int dropLineWidth = 3;
constexpr int comingRows = 3;

/** Widths in font heights; Title and Artist share what is left. */
constexpr double timeWidth = 4.2, infoWidth = 5.6;
constexpr double titleShare = 1.25 / 2.25;

/** A tag with a text that goes along with the pointer. */
QPixmap DragPicture(const QString& text, double ratio) {
    const FontUnits& units = SkinStyle::Units();
    const QFontMetrics metrics(units.Font());
    const QString shown = metrics.elidedText(text.simplified(), Qt::ElideRight, units.Of(14));
    const QSize size(metrics.horizontalAdvance(shown) + units.Of(1.2), units.TableRow());
    QPixmap picture(size * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(SkinStyle::Colours().highlight);
    QPainter painter(&picture);
    painter.setFont(units.Font());
    painter.setPen(SkinStyle::Colours().highlightText);
    painter.drawText(QRect(QPoint(), size), Qt::AlignCenter, shown);
    return picture;
}

} // namespace

PlaylistView::PlaylistView(Playlist& list, QWidget* parent)
    : QTableView(parent), list_(list), delegate_(new PlaylistDelegate(this)) {
    setObjectName(QStringLiteral("List%1").arg(list.Number()));
    setAccessibleName(QStringLiteral("Wiedergabeliste %1").arg(list.Number()));
    setModel(&list);
    setItemDelegate(delegate_);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setCornerButtonEnabled(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setHorizontalScrollMode(ScrollPerPixel);
    setDragDropMode(DragDrop);
    setDropIndicatorShown(false); // the line between the rows is painted here
    setContextMenuPolicy(Qt::ActionsContextMenu);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    QHeaderView* head = horizontalHeader();
    head->moveSection(head->visualIndex(Playlist::RowNumber), 0);
    head->moveSection(head->visualIndex(Playlist::Mark), 0);
    head->setSectionResizeMode(QHeaderView::Fixed);
    head->setSectionsClickable(false);
    head->setHighlightSections(false);
    head->setMinimumSectionSize(0);
    hideColumn(Playlist::ShuffleKey);
    TakeUnits();
    SetLayoutMode(mode_);
}

void PlaylistView::SetLayoutMode(LayoutMode mode) {
    mode_ = mode;
    const bool isNarrow = mode == LayoutMode::Narrow;
    delegate_->SetNarrow(isNarrow);
    setColumnHidden(Playlist::Artist, isNarrow);
    setColumnHidden(Playlist::Info, isNarrow);
    horizontalHeader()->setVisible(mode == LayoutMode::Wide);
    SizeColumns();
    viewport()->update();
}

QList<int> PlaylistView::SelectedRows() const {
    QList<int> rows;
    const QItemSelection selection = selectionModel()->selection();
    for (const QItemSelectionRange& range : selection) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.append(row);
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

int PlaylistView::FirstSelectedRow() const {
    int first = -1;
    const QItemSelection selection = selectionModel()->selection();
    for (const QItemSelectionRange& range : selection)
        first = first < 0 ? range.top() : std::min(first, range.top());
    return first;
}

void PlaylistView::ShowComing(int row) {
    if (row < 0)
        return;
    executeDelayedItemsLayout(); // rows that have just come are not in the scroll bar's range yet
    updateGeometries();
    scrollTo(list_.index(std::min(row + comingRows, list_.Count() - 1), Playlist::Title));
    scrollTo(list_.index(row, Playlist::Title));
}

void PlaylistView::keyPressEvent(QKeyEvent* event) {
    const bool withControl = event->modifiers() == Qt::ControlModifier;
    if (event->key() == Qt::Key_Delete && event->modifiers() == Qt::NoModifier)
        Q_EMIT RemoveRequested(SelectedRows());
    else if (withControl && event->key() == Qt::Key_Up)
        MoveSelected(-1);
    else if (withControl && event->key() == Qt::Key_Down)
        MoveSelected(1);
    else if (event->key() == Qt::Key_Up && event->modifiers() == (Qt::ControlModifier | Qt::ShiftModifier))
        MoveSelectedTo(0);
    else if (event->key() == Qt::Key_Down && event->modifiers() == (Qt::ControlModifier | Qt::ShiftModifier))
        MoveSelectedTo(list_.Count());
    else if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && currentIndex().isValid())
        Q_EMIT PlayRequested(currentIndex().row());
    else
        QTableView::keyPressEvent(event);
}

void PlaylistView::mouseDoubleClickEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->pos());
    if (event->button() == Qt::LeftButton && index.isValid())
        Q_EMIT PlayRequested(index.row());
    else
        QTableView::mouseDoubleClickEvent(event);
}

void PlaylistView::startDrag(Qt::DropActions) {
    const QList<int> rows = SelectedRows();
    if (rows.isEmpty())
        return;
    auto* drag = new QDrag(this);
    drag->setMimeData(PlaylistDrag::Pack(list_, rows).release());
    const QString what = rows.size() == 1 ? list_.At(rows.first()).title : QStringLiteral("%1 Titel").arg(rows.size());
    drag->setPixmap(DragPicture(what, devicePixelRatioF()));
    drag->setHotSpot(QPoint(-1, -1) * SkinStyle::Units().Of(1)); // beside the pointer, the line between rows stays free
    drag->exec(Qt::MoveAction | Qt::CopyAction, Qt::MoveAction);
}

void PlaylistView::dragEnterEvent(QDragEnterEvent* event) {
    dragMoveEvent(event);
}

void PlaylistView::dragMoveEvent(QDragMoveEvent* event) {
    if (!Accept(event))
        return;
    const int y = event->position().toPoint().y();
    ShowDropRow(DropRow(y));
    if (y < autoScrollMargin() || y > viewport()->height() - autoScrollMargin())
        startAutoScroll();
}

void PlaylistView::dragLeaveEvent(QDragLeaveEvent*) {
    stopAutoScroll();
    ShowDropRow(-1);
}

void PlaylistView::dropEvent(QDropEvent* event) {
    stopAutoScroll();
    ShowDropRow(-1);
    if (!Accept(event))
        return;
    const QMimeData* dragged = event->mimeData();
    const int row = DropRow(event->position().toPoint().y());
    if (const auto entries = PlaylistDrag::TakeEntries(dragged)) {
        // Rows of another running program are not ours to remove.
        const bool isMove = event->dropAction() == Qt::MoveAction && event->source();
        Q_EMIT EntriesDropped(row, entries->dragged, isMove ? entries->source : 0);
    } else if (const auto titles = PlaylistDrag::TakeTitles(dragged)) {
        Q_EMIT TitlesDropped(row, *titles);
    } else {
        Q_EMIT FilesDropped(row, PlaylistDrag::TakePaths(dragged));
    }
}

void PlaylistView::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (model()->rowCount() == 0) {
        QPainter painter(viewport());
        painter.setPen(SkinStyle::Colours().dim);
        const int margin = SkinStyle::Units().Gap(3);
        painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                         Qt::AlignCenter | Qt::TextWordWrap,
                         tr("Noch kein Titel: aus dem Musikarchiv oder einem Ordner hierher ziehen."));
    }
    if (dropRow_ < 0)
        return;
    const int y = dropRow_ * SkinStyle::Units().TableRow() - verticalOffset();
    QPainter painter(viewport());
    painter.fillRect(0, std::max(0, y - dropLineWidth / 2 - 1), viewport()->width(), dropLineWidth,
                     SkinStyle::Colours().text);
}

void PlaylistView::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    SizeColumns();
}

void PlaylistView::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::StyleChange)
        TakeUnits();
}

void PlaylistView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTableView::selectionChanged(selected, deselected);
    viewport()->update(); // the frame of the red row spans its cells
    Q_EMIT SelectionChanged();
}

void PlaylistView::TakeUnits() {
    const FontUnits& units = SkinStyle::Units();
    setFont(units.Font());
    verticalHeader()->setMinimumSectionSize(0);
    verticalHeader()->setDefaultSectionSize(units.TableRow());
    horizontalHeader()->setFixedHeight(units.ColumnHead());
    SizeColumns();
}

void PlaylistView::SizeColumns() {
    const FontUnits& units = SkinStyle::Units();
    const bool isNarrow = mode_ == LayoutMode::Narrow;
    const int mark = units.Of(isNarrow ? 2.3 : 2.6);
    const int number = units.Of(list_.Count() > 999 ? 3.2 : 2.2);
    const int time = units.Of(timeWidth);
    const int info = isNarrow ? 0 : units.Of(infoWidth);
    const int room = std::max(0, viewport()->width() - mark - number - time - info);
    const int title = isNarrow ? room : qRound(room * titleShare);
    setColumnWidth(Playlist::Mark, mark);
    setColumnWidth(Playlist::RowNumber, number);
    setColumnWidth(Playlist::Title, title);
    setColumnWidth(Playlist::Artist, room - title);
    setColumnWidth(Playlist::Duration, time);
    setColumnWidth(Playlist::Info, info);
}

void PlaylistView::MoveSelected(int direction) {
    const QList<int> rows = SelectedRows();
    if (rows.isEmpty() || (direction < 0 && rows.first() == 0) || (direction > 0 && rows.last() == list_.Count() - 1))
        return;
    MoveSelectedTo(direction < 0 ? rows.first() - 1 : rows.last() + 2);
}

void PlaylistView::MoveSelectedTo(int target) {
    const QList<int> rows = SelectedRows();
    if (rows.isEmpty())
        return;
    Q_EMIT MoveRequested(rows, target);
    scrollTo(list_.index(target <= rows.first() ? FirstSelectedRow() : SelectedRows().value(rows.size() - 1),
                         Playlist::Title));
}

int PlaylistView::DropRow(int y) const {
    const int height = SkinStyle::Units().TableRow();
    return std::clamp((y + verticalOffset() + height / 2) / height, 0, list_.Count());
}

void PlaylistView::ShowDropRow(int row) {
    if (row == dropRow_)
        return;
    dropRow_ = row;
    viewport()->update();
}

bool PlaylistView::Accept(QDropEvent* event) const {
    const QMimeData* dragged = event->mimeData();
    if (!PlaylistDrag::IsWelcome(dragged)) {
        event->ignore();
        return false;
    }
    const bool isCopied = !PlaylistDrag::TakeEntries(dragged) || event->modifiers().testFlag(Qt::ControlModifier);
    event->setDropAction(isCopied ? Qt::CopyAction : Qt::MoveAction);
    event->accept();
    return true;
}

} // namespace kalvo
