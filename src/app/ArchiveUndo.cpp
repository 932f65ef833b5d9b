#include "app/ArchiveUndo.h"

#include "archive/Archive.h"
#include "archive/ArchiveTexts.h"
#include "widgets/HourGlass.h"

#include <utility>

namespace kalvo {

/** One deletion. */
class ArchiveUndo::Command final : public QUndoCommand {
public:
    Command(ArchiveUndo& undo, qint64 titles)
        : QUndoCommand(QStringLiteral("Löschen aus dem Musikarchiv (%1)").arg(ArchiveTexts::Count(titles))),
          undo_(undo),
          titles_(titles) {}

    void undo() override {
        if (undo_.Undo(titles_))
            return;
        // A stack takes a step for undone in any case. This one goes, and comes back to be tried again.
        setObsolete(true);
        QMetaObject::invokeMethod(
            &undo_, [&undo = undo_, titles = titles_] { undo.TakeDeletion(titles); }, Qt::QueuedConnection);
    }
    void redo() override {
        const bool isDone = std::exchange(isDone_, false);
        setObsolete(!isDone && !undo_.Redo(titles_));
    }

private:
    ArchiveUndo& undo_;
    qint64 titles_;
    bool isDone_ = true; ///< the stack calls redo() for what has just been done, too
};

ArchiveUndo::ArchiveUndo(Archive& archive, QObject* parent) : QObject(parent), archive_(archive) {
    connect(&archive_, &Archive::Deleted, this, &ArchiveUndo::TakeDeletion);
    connect(&archive_.Bin(), &BinMove::Ended, this, [this](const BinReport& report) {
        const QString kept = report.kept.isEmpty() ? QString() : QStringLiteral(" (%1 nicht)").arg(report.kept.size());
        Q_EMIT Told(report.deleted ? QStringLiteral("In den Papierkorb gelegt: ") +
                                         ArchiveTexts::Count(report.numbers.size()) + kept
                                   : report.deleted.reason);
    });
}

void ArchiveUndo::TakeDeletion(qint64 titles) {
    stack_.push(new Command(*this, titles));
}

bool ArchiveUndo::Undo(qint64 titles) {
    const HourGlass hourGlass;
    const WriteResult undone = archive_.Undo();
    archive_.Refresh();
    Q_EMIT Told(undone.reason.isEmpty() ? QStringLiteral("Wieder im Musikarchiv: ") + ArchiveTexts::Count(titles)
                                        : undone.reason);
    return undone.done;
}

bool ArchiveUndo::Redo(qint64 titles) {
    const HourGlass hourGlass;
    const WriteResult deleted = archive_.Redo();
    archive_.Refresh();
    Q_EMIT Told(deleted.reason.isEmpty() ? QStringLiteral("Wieder gelöscht: ") + ArchiveTexts::Count(titles)
                                         : deleted.reason);
    return deleted.done;
}

} // namespace kalvo
