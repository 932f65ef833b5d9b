#include "archive/ui/CategoryTree.h"

#include "archive/ui/TreeRowDelegate.h"
#include "widgets/SkinStyle.h"

#include <QEvent>
#include <QKeyEvent>

namespace kalvo {

CategoryTree::CategoryTree(QWidget* parent) : QTreeView(parent), model_(new CategoryTreeModel(this)) {
    setObjectName(QStringLiteral("TreeView1"));
    setAccessibleName(tr("Kategorien des Musikarchivs"));
    setFrameShape(NoFrame);
    setModel(model_);
    setItemDelegate(new TreeRowDelegate(this));
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setExpandsOnDoubleClick(false);
    setEditTriggers(NoEditTriggers);
    setIndentation(SkinStyle::Units().Of(1.4));
    connect(this, &QTreeView::clicked, this, &CategoryTree::Choose);
}

QString CategoryTree::SelectedValue() const {
    const QModelIndexList selected = selectionModel()->selectedIndexes();
    if (selected.isEmpty())
        return {};
    const ArchiveTree::Node node = model_->NodeAt(selected.first());
    return ArchiveTree::ClickOn(node.key) == ArchiveTree::Click::Value ? node.text : QString();
}

void CategoryTree::Choose(const QModelIndex& index) {
    const ArchiveTree::Node node = model_->NodeAt(index);
    switch (ArchiveTree::ClickOn(node.key)) {
    case ArchiveTree::Click::Close:
        clearSelection();
        Q_EMIT CloseRequested();
        return;
    case ArchiveTree::Click::Rebuild:
        clearSelection();
        Q_EMIT RebuildRequested();
        return;
    case ArchiveTree::Click::Value:
        Q_EMIT ValueChosen(ArchiveTree::Statement(node.key, node.text));
        return;
    case ArchiveTree::Click::Nothing:
        setExpanded(index, !isExpanded(index));
        return;
    }
}

void CategoryTree::keyPressEvent(QKeyEvent* event) {
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && currentIndex().isValid())
        return Choose(currentIndex());
    QTreeView::keyPressEvent(event);
}

void CategoryTree::changeEvent(QEvent* event) {
    QTreeView::changeEvent(event);
    if (event->type() == QEvent::StyleChange)
        setIndentation(SkinStyle::Units().Of(1.4));
}

} // namespace kalvo
