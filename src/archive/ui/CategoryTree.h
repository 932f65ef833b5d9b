#pragma once

#include "archive/ui/CategoryTreeModel.h"

#include <QTreeView>

namespace kalvo {

/** The category tree `TreeView1` beside the archive grid. A node acts when it is clicked or Enter is pressed on it. */
class CategoryTree : public QTreeView {
    Q_OBJECT

public:
    explicit CategoryTree(QWidget* parent = nullptr);

    /** All categories are collapsed then, nothing is selected. */
    void SetBranches(const QList<ArchiveTree::Branch>& branches) { model_->SetBranches(branches); }
    /** Text of the selected value node; empty when another node or none is selected. */
    QString SelectedValue() const;

Q_SIGNALS:
    void CloseRequested();
    void RebuildRequested();
    /** A value was chosen; statement: the record source that it stands for. */
    void ValueChosen(const QString& statement);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void Choose(const QModelIndex& index);

    CategoryTreeModel* model_;
};

} // namespace kalvo
