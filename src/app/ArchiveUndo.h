#pragma once

#include <QObject>
#include <QUndoStack>

namespace kalvo {

class Archive;

/** The archive's deletions as steps of undo, kept until the program ends. Whoever deletes does it in the archive. */
class ArchiveUndo : public QObject {
    Q_OBJECT

public:
    /** The archive outlives this. */
    explicit ArchiveUndo(Archive& archive, QObject* parent = nullptr);

    QUndoStack& Stack() { return stack_; }

Q_SIGNALS:
    /** What was done, or why it could not be, for the status line. */
    void Told(const QString& text);

private:
    class Command;

    void TakeDeletion(qint64 titles);
    /** False, and nothing has changed, on failure. */
    bool Undo(qint64 titles);
    bool Redo(qint64 titles);

    Archive& archive_;
    QUndoStack stack_;
};

} // namespace kalvo
