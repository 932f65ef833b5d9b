#include "app/UndoCommands.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QScopedValueRollback>
#include <QUndoStack>

namespace kalvo {

UndoCommands::UndoCommands(QMenu& editMenu, QObject* parent)
    : QObject(parent), undo_(new QAction(this)), redo_(new QAction(this)) {
    undo_->setObjectName(QStringLiteral("Rueckgaengig"));
    undo_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Z));
    redo_->setObjectName(QStringLiteral("Wiederherstellen"));
    redo_->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)});
    connect(undo_, &QAction::triggered, this, &UndoCommands::Undo);
    connect(redo_, &QAction::triggered, this, &UndoCommands::Redo);
    QAction* first = editMenu.actions().value(0);
    editMenu.insertActions(first, {undo_, redo_});
    editMenu.insertSeparator(first);
    Show();
    qApp->installEventFilter(this);
}

void UndoCommands::Add(QUndoStack& stack) {
    connect(&stack, &QUndoStack::indexChanged, this, [this, &stack] { TakeChange(stack); });
    connect(&stack, &QObject::destroyed, this, [this, gone = &stack] { Forget(gone); });
}

void UndoCommands::Forget(const QUndoStack* stack) {
    for (qsizetype place = history_.size() - 1; place >= 0; --place)
        if (history_.at(place) == stack) {
            history_.removeAt(place);
            done_ -= place < done_ ? 1 : 0;
        }
}

/** Told of each push and clearing, and of what Undo() and Redo() do themselves. */
void UndoCommands::TakeChange(QUndoStack& stack) {
    if (isActing_)
        return;
    if (stack.count() == 0) {
        Forget(&stack);
    } else if (stack.canUndo() && !stack.canRedo()) {
        history_.resize(done_);
        history_.append(&stack);
        ++done_;
    }
    Show();
}

void UndoCommands::Undo() {
    if (done_ > 0) {
        const QScopedValueRollback acting(isActing_, true);
        history_.at(--done_)->undo();
    }
    Show();
}

/** A command that could not be done again has left its stack. */
void UndoCommands::Redo() {
    if (done_ < history_.size()) {
        const QScopedValueRollback acting(isActing_, true);
        QUndoStack& stack = *history_.at(done_);
        const int before = stack.index();
        stack.redo();
        if (stack.index() > before)
            ++done_;
        else
            history_.removeAt(done_);
    }
    Show();
}

void UndoCommands::Show() {
    // A stack that keeps a limited number of commands has forgotten its first ones.
    while (done_ > 0 && !history_.at(done_ - 1)->canUndo())
        history_.removeAt(--done_);
    while (done_ < history_.size() && !history_.at(done_)->canRedo())
        history_.removeAt(done_);
    const auto show = [](QAction& action, const QString& verb, const QString& what) {
        action.setText(what.isEmpty() ? verb : verb + QStringLiteral(": ") + what);
    };
    undo_->setEnabled(done_ > 0);
    redo_->setEnabled(done_ < history_.size());
    show(*undo_, QStringLiteral("&Rückgängig"), undo_->isEnabled() ? history_.at(done_ - 1)->undoText() : QString());
    show(*redo_, QStringLiteral("&Wiederherstellen"), redo_->isEnabled() ? history_.at(done_)->redoText() : QString());
}

bool UndoCommands::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::ShortcutOverride)
        return false;
    const auto* field = qobject_cast<QLineEdit*>(watched);
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool isIdle = field != nullptr && ((key->matches(QKeySequence::Undo) && !field->isUndoAvailable()) ||
                                             (key->matches(QKeySequence::Redo) && !field->isRedoAvailable()));
    if (isIdle)
        event->ignore();
    return isIdle;
}

} // namespace kalvo
