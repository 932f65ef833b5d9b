// The part of Archive that deletes titles and brings them back.

#include "archive/Archive.h"
#include "archive/MemoryIndex.h"
#include "archive/RowCache.h"

namespace kalvo {

using namespace Qt::StringLiterals;

namespace {

/** More titles than these are put into the index by loading it anew. */
constexpr qsizetype kPutSingly = 10000;

} // namespace

WriteResult Archive::DeleteTitles(const QList<qint64>& numbers, const QList<Trash::Item>& files) {
    WriteResult deleted = database_.Delete(numbers);
    TakeDeletion(files, [&] { index_->Remove({numbers.begin(), numbers.end()}); });
    return deleted;
}

WriteResult Archive::DeleteAll() {
    WriteResult deleted = database_.DeleteAll();
    TakeDeletion({}, [&] { *index_ = MemoryIndex(); });
    return deleted;
}

/** Follows a deletion, if there was one. */
void Archive::TakeDeletion(const QList<Trash::Item>& files, const std::function<void()>& updateIndex) {
    if (binned_.size() == database_.Deletions().size())
        return;
    binned_.append(files);
    cache_->Clear();
    if (index_)
        updateIndex();
    else
        Reload();
    Q_EMIT CountChanged();
    Q_EMIT UndoChanged();
}

bool Archive::CanUndo() const {
    return !database_.Deletions().isEmpty();
}

QString Archive::UndoText() const {
    return CanUndo() ? QString::number(database_.Deletions().last()) + u" Titel"_s : QString();
}

WriteResult Archive::Undo() {
    QList<qint64> numbers;
    WriteResult undone = database_.UndoDelete(numbers);
    if (!undone)
        return undone;
    for (const Trash::Item& file : binned_.takeLast())
        if (!Trash::Restore(file))
            undone.reason = u"Die Datei konnte nicht aus dem Papierkorb geholt werden: "_s + file.path;
    TakeRestored(numbers);
    Q_EMIT CountChanged();
    Q_EMIT UndoChanged();
    return undone;
}

void Archive::TakeRestored(const QList<qint64>& numbers) {
    if (!index_ || numbers.size() > kPutSingly) {
        Reload();
        return;
    }
    for (const TitleRecord& record : database_.Read(numbers))
        index_->Put(record);
}

} // namespace kalvo
