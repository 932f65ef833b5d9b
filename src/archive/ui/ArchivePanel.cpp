#include "archive/ui/ArchivePanel.h"

#include "archive/ArchiveStatements.h"
#include "archive/ArchiveTexts.h"
#include "archive/ui/ArchiveCategories.h"
#include "archive/ui/ArchiveSide.h"
#include "archive/ui/CategoryTree.h"
#include "archive/ui/EmptyArchive.h"
#include "archive/ui/SelectedTitleView.h"
#include "widgets/ElidedLabel.h"
#include "widgets/HourGlass.h"
#include "widgets/IconButton.h"
#include "widgets/Icons.h"
#include "widgets/KeySplitter.h"
#include "widgets/SkinStyle.h"

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QStackedWidget>

namespace kalvo {

namespace {

const QString waiting = QStringLiteral("Bitte Suche abwarten ...");

QLabel* NamedLabel(const QString& name, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

ArchivePanel::ArchivePanel(Archive& archive, Settings& settings, const DataFolder& folder, QWidget* parent)
    : QWidget(parent),
      archive_(archive),
      folder_(folder),
      heading_(new QLabel(tr("Musikarchiv"), this)),
      search_(new QLineEdit(this)),
      found_(NamedLabel(QStringLiteral("Label23"), this)),
      count_(NamedLabel(QStringLiteral("lblAnzahl"), this)),
      tree_(new IconButton(QStringLiteral("tree"), IconButton::Size::Normal, this)),
      head_(new QWidget(this)),
      sides_(new KeySplitter(Qt::Horizontal, this)),
      body_(new QStackedWidget(this)),
      grid_(new ArchiveGrid(archive, settings, this)),
      empty_(new EmptyArchive(this)),
      title_(new SelectedTitleView(this)),
      side_(new ArchiveSide(this)),
      categories_(new ArchiveCategories(archive, folder, *this)) {
    BuildSearchBox();
    head_->setLayout(BuildHead());
    BuildBody();
    ConnectArchive();
    ConnectGrid();
    ConnectTree();
    auto* find = new QShortcut(QKeySequence::Find, this);
    connect(find, &QShortcut::activated, search_, [this] {
        search_->setFocus(Qt::ShortcutFocusReason);
        search_->selectAll();
    });
    ApplyLook();
    ShowCount();
    ShowCurrentTitle();
}

void ArchivePanel::BuildBody() {
    body_->addWidget(grid_);
    body_->addWidget(empty_);
    sides_->setObjectName(QStringLiteral("TeilerArchiv"));
    sides_->addWidget(categories_->Tree());
    sides_->addWidget(body_);
    sides_->NameHandle(1, QStringLiteral("TeilerKategorien"), tr("Teiler zwischen Kategorien und Titeln"));
    sides_->setStretchFactor(1, 1);
    sides_->setChildrenCollapsible(false);
    categories_->Tree()->hide();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(1, 1, 1, 1);
    column->setSpacing(0);
    column->addWidget(head_);
    auto* row = new QHBoxLayout;
    row->setSpacing(0);
    row->addWidget(sides_, 1);
    row->addWidget(side_);
    column->addLayout(row, 1);
    column->addWidget(title_);
    side_->hide();
    setTabOrder(search_, grid_);
}

void ArchivePanel::ConnectArchive() {
    // An import adds thousands of titles per second; the label follows a few times.
    countDelay_.setSingleShot(true);
    countDelay_.setInterval(40);
    connect(&countDelay_, &QTimer::timeout, this, &ArchivePanel::ShowCount);
    connect(&archive_, &Archive::CountChanged, this, [this] {
        if (!countDelay_.isActive())
            countDelay_.start();
    });
    connect(&archive_, &Archive::RecordsChanged, this, [this] {
        ShowCount();
        ShowFound();
    });
}

void ArchivePanel::ConnectGrid() {
    connect(grid_, &ArchiveGrid::TitleActivated, this, &ArchivePanel::TitleActivated);
    connect(grid_, &ArchiveGrid::PreListenRequested, this, &ArchivePanel::PreListenRequested);
    connect(grid_, &ArchiveGrid::CurrentTitleChanged, this, [this] {
        ShowCurrentTitle();
        Q_EMIT CurrentTitleChanged();
    });
    connect(grid_, &ArchiveGrid::HeaderClicked, this, &ArchivePanel::SortBy);
    connect(grid_, &ArchiveGrid::ValueListRequested, categories_, &ArchiveCategories::OpenValueList);
    connect(grid_, &ArchiveGrid::ColumnsChanged, this, &ArchivePanel::SaveLayout);
    connect(title_, &SelectedTitleView::AddToListRequested, this,
            [this](int list) { Q_EMIT AddToListRequested(list, SelectedRecords()); });
    connect(title_, &SelectedTitleView::PreListenRequested, this, [this] {
        if (grid_->HasCurrent())
            Q_EMIT PreListenRequested(CurrentRecord());
    });
    connect(title_, &SelectedTitleView::HeadphonesRequested, this,
            [this] { Q_EMIT HeadphonesRequested(CurrentRecord()); });
    connect(empty_, &EmptyArchive::ImportRequested, this, &ArchivePanel::ImportRequested);
}

void ArchivePanel::SortBy(ArchiveField field) {
    const HourGlass hourGlass;
    grid_->SortBy(field, Filter());
}

void ArchivePanel::ConnectTree() {
    connect(tree_, &IconButton::clicked, this, [this] {
        ShowTree(!IsTreeVisible());
        Q_EMIT TreeChanged();
    });
    connect(categories_, &ArchiveCategories::CloseRequested, this, [this] {
        ShowTree(false);
        Q_EMIT TreeChanged();
    });
    connect(categories_, &ArchiveCategories::StatementChosen, this,
            [this](const QString& statement) { ShowSource(statement); });
    connect(sides_, &QSplitter::splitterMoved, this, [this] {
        treeWidth_ = sides_->sizes().constFirst();
        Q_EMIT TreeChanged();
    });
}

/** While the tree shows no chosen value, what was typed is what the rows are narrowed to. */
GridFilter ArchivePanel::Filter() const {
    const QString value = IsTreeVisible() ? categories_->Tree()->SelectedValue() : QString();
    const bool typed = SearchText().size() >= 2;
    return {SearchText(), IsTreeVisible() && (!value.isEmpty() || !typed), value, {}};
}

void ArchivePanel::ShowTree(bool shown) {
    if (shown == IsTreeVisible())
        return;
    treeShown_ = shown;
    treeFolded_ = false;
    ApplyTree();
    if (shown)
        categories_->FillArchiveTree();
    else
        ShowSource(ArchiveStatements::Default());
}

void ArchivePanel::ApplyTree() {
    const bool visible = IsTreeVisible();
    tree_->SetOn(visible);
    categories_->Tree()->setVisible(visible);
    if (visible)
        SetTreeWidth(treeWidth_);
}

void ArchivePanel::SetTreeWidth(int width) {
    treeWidth_ = width;
    sides_->setSizes({width, qMax(1, sides_->width() - width)});
}

bool ArchivePanel::ShowSource(const QString& statement, const QString& found) {
    if (!ShowRows(statement, found))
        return false;
    SetSearchText({});
    return true;
}

bool ArchivePanel::ShowRows(const QString& statement, const QString& found) {
    const QString before = found_->text();
    found_->setText(waiting);
    found_->repaint();
    const HourGlass hourGlass;
    if (!archive_.SetRecordSource(statement)) {
        found_->setText(before);
        return false;
    }
    grid_->SetSearchText(found);
    grid_->scrollToTop();
    if (archive_.Count() > 0)
        ShowGuide(false); // what was found is to be seen
    return true;
}

void ArchivePanel::GoToRow(int row) {
    grid_->selectRow(row);
    grid_->scrollTo(grid_->currentIndex());
}

void ArchivePanel::ShowCountText(const QString& text) {
    countDelay_.stop();
    count_->setText(text);
}

void ArchivePanel::Refresh() {
    archive_.Refresh();
}

void ArchivePanel::SetLayoutMode(LayoutMode mode) {
    if (mode != mode_)
        treeFolded_ = mode == LayoutMode::Narrow;
    mode_ = mode;
    ApplyLook();
}

void ArchivePanel::AddContextActions(const QList<QAction*>& actions) {
    if (!grid_->actions().isEmpty()) {
        auto* separator = new QAction(grid_);
        separator->setSeparator(true);
        grid_->addAction(separator);
    }
    grid_->addActions(actions);
    grid_->setContextMenuPolicy(Qt::ActionsContextMenu);
}

void ArchivePanel::SetSearchText(const QString& text) {
    const QScopedValueRollback guard(settingSearch_, true);
    search_->setText(text);
}

QString ArchivePanel::SearchText() const {
    return search_->text();
}

void ArchivePanel::QuickSearch(const QString& text) {
    clearSearch_->setVisible(!text.isEmpty());
    if (settingSearch_ || text.size() == 1)
        return;
    categories_->Tree()->clearSelection();
    ShowRows(ArchiveStatements::QuickSearch(text, grid_->VisibleFields()), text);
}

void ArchivePanel::ShowCount() {
    const qint64 count = archive_.Count();
    count_->setText(ArchiveTexts::Count(count));
    ShowBody();
}

void ArchivePanel::ShowBody() {
    QWidget* titles = archive_.Count() > 0 ? static_cast<QWidget*>(grid_) : empty_;
    body_->setCurrentWidget(guideShown_ ? guide_ : titles);
}

void ArchivePanel::SetGuide(QWidget& guide) {
    guide_ = &guide;
    body_->addWidget(guide_);
}

void ArchivePanel::ShowGuide(bool shown) {
    guideShown_ = shown;
    ShowBody();
}

/** Only once something was searched for; while the index is loading the answer follows with the rows. */
void ArchivePanel::ShowFound() {
    if (!found_->text().isEmpty() && archive_.IsIndexReady())
        found_->setText(ArchiveTexts::Found(archive_.RowCount()));
}

void ArchivePanel::ShowCurrentTitle() {
    title_->Show(CurrentRecord());
}

void ArchivePanel::SaveLayout() {
    LayoutFile& layout = archive_.Layout();
    const QList<GridColumn>& columns = grid_->Columns();
    for (std::size_t i = 0; i < layout.columnWidths.size(); ++i)
        layout.columnWidths[i] = columns[static_cast<qsizetype>(i)].width;
    layout.rowHeight = double(SkinStyle::Units().TableRow()) * GridColumns::twipsPerPixel;
    layout.Write(folder_.Path(QStringLiteral("\\mp3tabelle.dll")));
}

void ArchivePanel::ApplyLook() {
    const FontUnits& units = SkinStyle::Units();
    heading_->setFont(units.Font(1.25, true));
    found_->setFont(units.Font(1, true));
    // Its place is reserved, so that the search box does not jump while somebody types.
    found_->setMinimumWidth(QFontMetrics(found_->font()).horizontalAdvance(waiting));
    head_->setFixedHeight(units.PanelHead());
    head_->layout()->setContentsMargins(units.Gap(2), 0, units.Gap(2), 0);
    head_->layout()->setSpacing(units.Gap(2));
    const bool narrow = mode_ == LayoutMode::Narrow;
    search_->setMinimumWidth(units.Of(8));
    search_->setMaximumWidth(units.Of(narrow ? 18 : mode_ == LayoutMode::Wide ? 30 : 23));
    for (QWidget* tool : std::as_const(tools_))
        tool->setVisible(!narrow);
    const QColor& dim = SkinStyle::Colours().dim;
    searchSign_->setIcon(Icons::Icon(QStringLiteral("search"), dim));
    clearSearch_->setIcon(Icons::Icon(QStringLiteral("close"), dim));
    categories_->Tree()->setMinimumWidth(units.Of(8));
    ApplyTree();
    title_->ApplyLook();
    ApplySide();
}

/** Del is taken before a shortcut of the window is: it means what has the focus. */
bool ArchivePanel::event(QEvent* event) {
    if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress)
        return QWidget::event(event);
    const auto* key = static_cast<QKeyEvent*>(event);
    if (!key->matches(QKeySequence::Delete) || focusWidget() != grid_)
        return QWidget::event(event);
    if (event->type() == QEvent::KeyPress)
        Q_EMIT DeleteRequested();
    event->accept();
    return true;
}

void ArchivePanel::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange)
        ApplyLook();
}

bool ArchivePanel::eventFilter(QObject* watched, QEvent* event) {
    if (watched != search_ || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Escape && !search_->text().isEmpty()) {
        search_->clear();
        return true;
    }
    if (key != Qt::Key_Down && key != Qt::Key_Return && key != Qt::Key_Enter)
        return QWidget::eventFilter(watched, event);
    if (!grid_->HasCurrent() && archive_.RowCount() > 0)
        grid_->selectRow(0);
    grid_->setFocus(Qt::OtherFocusReason);
    return true;
}

} // namespace kalvo
