#pragma once

#include <QListView>
#include <QStringList>

class QStringListModel;

namespace kalvo {

/** A list of values to choose from, quick with a hundred thousand of them. Several can be selected. */
class ValueView : public QListView {
    Q_OBJECT

public:
    explicit ValueView(QWidget* parent = nullptr);

    void SetValues(const QStringList& values);
    QStringList Values() const;
    QStringList Selected() const;

Q_SIGNALS:
    /** Double click or Enter on a value. */
    void Chosen();
    void SelectionChanged();

private:
    QStringListModel* values_;
};

} // namespace kalvo
