#pragma once

#include <QFrame>
#include <QStringList>

class QListView;
class QStringListModel;

namespace kalvo {

/** The list `lstKopf` of a column's values that opens under its head. One click chooses. */
class ValueList : public QFrame {
    Q_OBJECT

public:
    explicit ValueList(QWidget* parent = nullptr);

    /** head: of the column, in global coordinates. */
    void Open(const QStringList& entries, const QRect& head);

Q_SIGNALS:
    void EntryChosen(const QString& entry);

private:
    void Choose(const QModelIndex& index);

    QListView* list_;
    QStringListModel* model_;
};

} // namespace kalvo
