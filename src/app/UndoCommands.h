#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QUndoGroup>

class QMenu;
class QWidget;

namespace kalvo {

/**
 * Undo and redo in the edit menu, one pair for all that can be taken back: each topic brings its own stack. It acts on
 * the stack whose widgets got the focus last, or that was changed last.
 */
class UndoCommands : public QObject {
    Q_OBJECT

public:
    explicit UndoCommands(QMenu& editMenu, QObject* parent = nullptr);

    /** places: the widgets that the stack belongs to, with all inside them. The stack outlives this. */
    void Add(QUndoStack& stack, const QList<QWidget*>& places);

protected:
    /** A text field without anything to take back leaves the keys to the menu. */
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Topic {
        QPointer<QWidget> place;
        QUndoStack* stack;
    };

    void FocusChanged(const QWidget* focused);

    QUndoGroup group_;
    QList<Topic> topics_;
};

} // namespace kalvo
