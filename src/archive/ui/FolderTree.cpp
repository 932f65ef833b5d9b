#include "archive/ui/FolderTree.h"

#include "archive/ui/TreeRowDelegate.h"
#include "widgets/SkinStyle.h"

#include <QEvent>
#include <QFileIconProvider>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QScrollBar>

namespace kalvo {

namespace {

/** Looks up no icons, in no theme and on no slow share. */
class NoIcons : public QFileIconProvider {
public:
    QIcon icon(IconType) const override { return {}; }
    QIcon icon(const QFileInfo&) const override { return {}; }
    QString type(const QFileInfo&) const override { return {}; }
};

/** The program's own icon for every folder. */
class FolderModel : public QFileSystemModel {
public:
    using QFileSystemModel::QFileSystemModel;
    int columnCount(const QModelIndex&) const override { return 1; }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role == Qt::DecorationRole)
            return {};
        if (role == TreeRowDelegate::iconNameRole)
            return QStringLiteral("folder");
        return QFileSystemModel::data(index, role);
    }
};

} // namespace

FolderTree::FolderTree(QWidget* parent) : QTreeView(parent), folders_(new FolderModel(this)) {
    folders_->setFilter(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Drives);
    static NoIcons noIcons; // the model's thread asks it until the model is gone
    folders_->setIconProvider(&noIcons);
    folders_->setOption(QFileSystemModel::DontUseCustomDirectoryIcons);
    folders_->setRootPath(QString());
    setModel(folders_);
    setItemDelegate(new TreeRowDelegate(this));
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    // Deep folders are scrolled to rather than cut.
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    setHorizontalScrollMode(ScrollPerPixel);
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& current) {
        if (setting_ || !current.isValid())
            return;
        following_ = false;
        Q_EMIT FolderChosen(folders_->filePath(current));
    });
    arrival_.setSingleShot(true);
    arrival_.setInterval(50);
    connect(&arrival_, &QTimer::timeout, this, &FolderTree::BringIntoView);
    const auto arrived = [this] { arrival_.start(); };
    connect(folders_, &QFileSystemModel::directoryLoaded, this, arrived);
    connect(folders_, &QFileSystemModel::layoutChanged, this, arrived);
    connect(folders_, &QFileSystemModel::rowsInserted, this, arrived);
    setIndentation(SkinStyle::Units().Of(1.4));
}

void FolderTree::SetFolder(const QString& path) {
    const QModelIndex place = folders_->index(path);
    if (!place.isValid())
        return;
    const QScopedValueRollback guard(setting_, true);
    setCurrentIndex(place);
    expand(place);
    following_ = true;
    BringIntoView();
}

QString FolderTree::Folder() const {
    return currentIndex().isValid() ? folders_->filePath(currentIndex()) : QString();
}

/** Folders above the current one arrive one after the other and push it out of view. */
void FolderTree::BringIntoView() {
    if (!following_ || !currentIndex().isValid())
        return;
    scrollTo(currentIndex(), PositionAtCenter);
    QScrollBar* bar = horizontalScrollBar();
    bar->setValue(bar->value() + visualRect(currentIndex()).x() - 2 * indentation());
}

bool FolderTree::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Wheel || event->type() == QEvent::MouseButtonPress)
        following_ = false;
    return QTreeView::viewportEvent(event);
}

void FolderTree::changeEvent(QEvent* event) {
    QTreeView::changeEvent(event);
    if (event->type() == QEvent::StyleChange)
        setIndentation(SkinStyle::Units().Of(1.4));
}

} // namespace kalvo
