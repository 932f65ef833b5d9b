#include "archive/ui/FolderTree.h"

#include "widgets/Icons.h"
#include "widgets/SkinStyle.h"

#include <QEvent>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>

namespace kalvo {

namespace {

class TableRowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return {QStyledItemDelegate::sizeHint(option, index).width(), SkinStyle::Units().TableRow()};
    }
};

/** The program's own icon for every folder: no look-ups in themes or on slow shares. */
class FolderModel : public QFileSystemModel {
public:
    using QFileSystemModel::QFileSystemModel;
    int columnCount(const QModelIndex&) const override { return 1; }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role == Qt::DecorationRole)
            return Icons::Icon(QStringLiteral("folder"));
        return QFileSystemModel::data(index, role);
    }
};

} // namespace

FolderTree::FolderTree(QWidget* parent) : QTreeView(parent), folders_(new FolderModel(this)) {
    folders_->setFilter(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Drives);
    folders_->setOption(QFileSystemModel::DontUseCustomDirectoryIcons);
    folders_->setRootPath(QString());
    setModel(folders_);
    setItemDelegate(new TableRowDelegate(this));
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    header()->setStretchLastSection(true);
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& current) {
        if (!setting_ && current.isValid())
            Q_EMIT FolderChosen(folders_->filePath(current));
    });
    connect(folders_, &QFileSystemModel::directoryLoaded, this, &FolderTree::BringIntoView);
    setIndentation(SkinStyle::Units().Of(1.4));
}

void FolderTree::SetFolder(const QString& path) {
    const QModelIndex place = folders_->index(path);
    if (!place.isValid())
        return;
    const QScopedValueRollback guard(setting_, true);
    setCurrentIndex(place);
    expand(place);
    BringIntoView();
}

QString FolderTree::Folder() const {
    return currentIndex().isValid() ? folders_->filePath(currentIndex()) : QString();
}

/** Folders above the current one arrive one after the other and push it out of view. */
void FolderTree::BringIntoView() {
    if (currentIndex().isValid())
        scrollTo(currentIndex(), PositionAtCenter);
}

void FolderTree::changeEvent(QEvent* event) {
    QTreeView::changeEvent(event);
    if (event->type() == QEvent::StyleChange)
        setIndentation(SkinStyle::Units().Of(1.4));
}

} // namespace kalvo
