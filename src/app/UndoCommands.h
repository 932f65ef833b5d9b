#pragma once

#include <QList>
#include <QObject>

class QAction;
class QMenu;
class QUndoStack;

namespace kalvo {

/**
 * Undo and redo in the edit menu, one pair for all that can be taken back: each topic brings its own stack, and the
 * pair acts on what was done last, whichever topic it belongs to.
 */
class UndoCommands : public QObject {
    Q_OBJECT

public:
    explicit UndoCommands(QMenu& editMenu, QObject* parent = nullptr);

    /** From then on the stack is only pushed on and cleared by its owner. It may go earlier than this. */
    void Add(QUndoStack& stack);

protected:
    /** A text field without anything to take back leaves the keys to the menu. */
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void TakeChange(QUndoStack& stack);
    void Forget(const QUndoStack* stack);
    void Undo();
    void Redo();
    /** Texts and whether they can be chosen. */
    void Show();

    QAction* undo_;
    QAction* redo_;
    QList<QUndoStack*> history_; ///< the stack of each command, the oldest first
    qsizetype done_ = 0;         ///< so many of them are not taken back
    bool isActing_ = false;
};

} // namespace kalvo
