#pragma once

#include "archive/ArchiveField.h"
#include "base/DataFolder.h"

#include <QObject>
#include <QPointer>
#include <QRect>

#include <functional>

namespace kalvo {

class Archive;
class CategoryTree;
class ValueList;
class frmExplorer;

/**
 * What the category lists narrow the archive view to: the tree beside the grid, the list under a column's head and the
 * window that builds the lists where they are missing.
 */
class ArchiveCategories : public QObject {
    Q_OBJECT

public:
    /** The archive outlives this; window: whose child the tree becomes and above which the others open. */
    ArchiveCategories(Archive& archive, const DataFolder& folder, QWidget& window);

    CategoryTree* Tree() const { return tree_; }
    /** Fills the tree from the five category files; a missing one is built first. */
    void FillArchiveTree();
    /** Opens the list of a column's values under its head; a missing list is built first. */
    void OpenValueList(ArchiveField field, const QRect& head);
    /** Builds the lists anew in a window of its own. */
    void BuildCategoryLists(std::function<void()> then);

Q_SIGNALS:
    /** A value was chosen; what it stands for. */
    void StatementChosen(const QString& statement);
    void CloseRequested();

private:
    Archive& archive_;
    DataFolder folder_;
    QWidget& window_;
    CategoryTree* tree_;   ///< `TreeView1`
    ValueList* valueList_; ///< `lstKopf`
    ArchiveField listed_ = ArchiveField::Interpret;
    QPointer<frmExplorer> builder_;
    std::function<void()> then_;
};

} // namespace kalvo
