#include "app/UndoCommands.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QUndoStack>

#include <utility>

namespace kalvo {

UndoCommands::UndoCommands(QMenu& editMenu, QObject* parent) : QObject(parent) {
    QAction* undo = group_.createUndoAction(this, QStringLiteral("&Rückgängig:"));
    undo->setObjectName(QStringLiteral("Rueckgaengig"));
    undo->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Z));
    QAction* redo = group_.createRedoAction(this, QStringLiteral("&Wiederherstellen:"));
    redo->setObjectName(QStringLiteral("Wiederherstellen"));
    redo->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)});
    QAction* first = editMenu.actions().value(0);
    editMenu.insertActions(first, {undo, redo});
    editMenu.insertSeparator(first);
    connect(qApp, &QApplication::focusChanged, this,
            [this](const QWidget*, const QWidget* focused) { FocusChanged(focused); });
    qApp->installEventFilter(this);
}

void UndoCommands::Add(QUndoStack& stack, const QList<QWidget*>& places) {
    group_.addStack(&stack);
    for (QWidget* place : places)
        topics_.append({place, &stack});
    connect(&stack, &QUndoStack::indexChanged, this, [&stack] { stack.setActive(); });
    if (group_.activeStack() == nullptr)
        stack.setActive();
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

void UndoCommands::FocusChanged(const QWidget* focused) {
    for (const Topic& topic : std::as_const(topics_)) {
        if (topic.place && focused != nullptr && (topic.place == focused || topic.place->isAncestorOf(focused)))
            topic.stack->setActive();
    }
}

} // namespace kalvo
