#include "archive/ui/ArchiveCategories.h"

#include "archive/CategoryLists.h"
#include "archive/ui/CategoryTree.h"
#include "archive/ui/ValueList.h"
#include "archive/ui/frmExplorer.h"

#include <utility>

namespace kalvo {

ArchiveCategories::ArchiveCategories(Archive& archive, const DataFolder& folder, QWidget& window)
    : QObject(&window),
      archive_(archive),
      folder_(folder),
      window_(window),
      tree_(new CategoryTree(&window)),
      valueList_(new ValueList(&window)) {
    connect(tree_, &CategoryTree::CloseRequested, this, &ArchiveCategories::CloseRequested);
    connect(tree_, &CategoryTree::ValueChosen, this, &ArchiveCategories::StatementChosen);
    connect(tree_, &CategoryTree::RebuildRequested, this,
            [this] { BuildCategoryLists([this] { FillArchiveTree(); }); });
    connect(valueList_, &ValueList::EntryChosen, this,
            [this](const QString& entry) { Q_EMIT StatementChosen(CategoryLists::Statement(listed_, entry)); });
}

void ArchiveCategories::FillArchiveTree() {
    if (const auto branches = ArchiveTree::Fill(folder_))
        tree_->SetBranches(*branches);
    else
        BuildCategoryLists([this] { FillArchiveTree(); });
}

void ArchiveCategories::OpenValueList(ArchiveField field, const QRect& head) {
    const auto values = CategoryLists::Read(folder_, field);
    if (!values)
        return BuildCategoryLists([this, field, head] { OpenValueList(field, head); });
    listed_ = field;
    valueList_->Open(CategoryLists::Entries(*values), head);
}

void ArchiveCategories::BuildCategoryLists(std::function<void()> then) {
    then_ = std::move(then);
    if (!builder_) {
        builder_ = new frmExplorer(archive_, folder_, &window_);
        builder_->setAttribute(Qt::WA_DeleteOnClose);
        connect(builder_, &frmExplorer::Built, this, [this] {
            builder_.clear(); // it closes now; a further build gets a window of its own
            if (const auto next = std::exchange(then_, nullptr))
                next();
        });
        builder_->show();
    }
    builder_->Start();
    builder_->raise();
    builder_->activateWindow();
}

} // namespace kalvo
