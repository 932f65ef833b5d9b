// What stands around the archive's grid.

#include "archive/ui/ArchivePanel.h"

#include "archive/ui/ArchiveSide.h"
#include "archive/ui/SelectedTitleView.h"
#include "widgets/IconButton.h"
#include "widgets/SkinStyle.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>

namespace kalvo {

void ArchivePanel::BuildSearchBox() {
    search_->setObjectName(QStringLiteral("Text1"));
    search_->setAccessibleName(tr("Suche im Musikarchiv"));
    search_->setPlaceholderText(tr("Suchen"));
    searchSign_ = search_->addAction(QIcon(), QLineEdit::LeadingPosition);
    clearSearch_ = search_->addAction(QIcon(), QLineEdit::TrailingPosition);
    clearSearch_->setText(tr("Suche löschen"));
    clearSearch_->setToolTip(clearSearch_->text());
    clearSearch_->setVisible(false);
    connect(clearSearch_, &QAction::triggered, search_, &QLineEdit::clear);
    connect(search_, &QLineEdit::textChanged, this, &ArchivePanel::QuickSearch);
    search_->installEventFilter(this);
}

QBoxLayout* ArchivePanel::BuildHead() {
    count_->setForegroundRole(QPalette::PlaceholderText);
    found_->setAccessibleName(tr("Ergebnis der Suche"));
    auto* import = new IconButton(QStringLiteral("import"), IconButton::Size::Normal, this);
    import->setObjectName(QStringLiteral("cmdTitelEinlesen"));
    import->setAccessibleName(tr("Titel zum Musikarchiv hinzufügen"));
    import->setToolTip(import->accessibleName());
    import->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(import, &QPushButton::clicked, this, &ArchivePanel::ImportRequested);
    tools_.append(import);
    tree_->setObjectName(QStringLiteral("cmdKategorien"));
    tree_->setAccessibleName(tr("Kategorien"));
    tree_->setToolTip(tree_->accessibleName());
    tree_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);

    auto* row = new QHBoxLayout;
    row->addWidget(heading_);
    row->addWidget(tree_);
    row->addWidget(search_, 4);
    row->addWidget(found_);
    row->addStretch(1);
    row->addWidget(count_);
    row->addWidget(import);
    return row;
}

void ArchivePanel::AddTool(const QString& icon, QAction& action) {
    auto* tool = new IconButton(icon, IconButton::Size::Normal, head_);
    tool->setObjectName(QStringLiteral("cmd") + action.objectName());
    tool->setAccessibleName(action.iconText());
    const QString keys = action.shortcut().toString(QKeySequence::NativeText);
    tool->setToolTip(keys.isEmpty() ? action.iconText() : action.iconText() + QStringLiteral(" (%1)").arg(keys));
    tool->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(tool, &IconButton::clicked, &action, &QAction::trigger);
    static_cast<QBoxLayout*>(head_->layout())->addWidget(tool);
    tool->setVisible(mode_ != LayoutMode::Narrow);
    tools_.append(tool);
}

void ArchivePanel::ShowSide(bool shown) {
    sideShown_ = shown;
    ApplySide();
}

/** The title stands beside the grid where that is high enough for it, else below. */
void ArchivePanel::ApplySide() {
    const bool beside = sideShown_ && mode_ == LayoutMode::Wide &&
                        height() - SkinStyle::Units().PanelHead() >= ArchiveSide::LowestHeight();
    if (beside == side_->isHidden()) {
        if (beside)
            side_->TakeTitle(*title_);
        else
            layout()->addWidget(title_);
        title_->SetForm(beside ? SelectedTitleView::Form::Card : SelectedTitleView::Form::Line);
        side_->setVisible(beside);
        Q_EMIT SideChanged();
    }
    title_->setVisible(mode_ != LayoutMode::Narrow);
}

void ArchivePanel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    ApplySide();
}

void ArchivePanel::paintEvent(QPaintEvent*) {
    const Skin& skin = SkinStyle::Colours();
    QPainter painter(this);
    painter.fillRect(rect(), skin.panel);
    painter.setPen(skin.line);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    painter.fillRect(0, head_->geometry().bottom(), width(), 1, skin.line);
}

} // namespace kalvo
