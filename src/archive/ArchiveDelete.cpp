// The part of Archive that deletes titles, brings them back and deletes them again.

#include "archive/Archive.h"
#include "archive/MemoryIndex.h"
#include "archive/RowCache.h"

#include <algorithm>

namespace kalvo {

using namespace Qt::StringLiterals;

namespace {

/** More titles than these are put into the index by loading it anew. */
constexpr qsizetype kPutSingly = 10000;

} // namespace

WriteResult Archive::DeleteTitles(const QList<qint64>& numbers, const QList<Trash::Item>& files) {
    WriteResult deleted = database_.Delete(numbers);
    if (TakeDeletion(files, [&] { index_->Remove({numbers.begin(), numbers.end()}); }))
        Q_EMIT Deleted(database_.Deletions().last());
    return deleted;
}

WriteResult Archive::DeleteAll() {
    WriteResult deleted = database_.DeleteAll();
    if (TakeDeletion({}, [&] { *index_ = MemoryIndex(); }))
        Q_EMIT Deleted(database_.Deletions().last());
    return deleted;
}

/** Follows a deletion; false when there was none. */
bool Archive::TakeDeletion(const QList<Trash::Item>& files, const std::function<void()>& updateIndex) {
    if (log_.binned.size() == database_.Deletions().size())
        return false;
    log_.binned.append(files);
    log_.undone.clear();
    cache_->Clear();
    if (index_)
        updateIndex();
    if (!index_ || isLoading_)
        StartLoading();
    Q_EMIT CountChanged();
    return true;
}

WriteResult Archive::Undo() {
    DeletionLog::Undone undo;
    WriteResult undone = database_.UndoDelete(undo.numbers);
    if (!undone)
        return undone;
    for (const Trash::Item& file : log_.binned.takeLast()) {
        undo.hadFiles = true;
        if (!Trash::Restore(file))
            undone.reason = u"Die Datei konnte nicht aus dem Papierkorb geholt werden: "_s + file.path;
    }
    TakeRestored(undo.numbers);
    log_.undone.append(undo);
    Q_EMIT CountChanged();
    return undone;
}

void Archive::TakeRestored(const QList<qint64>& numbers) {
    if (numbers.size() > kPutSingly)
        index_.reset();
    if (index_)
        index_->Put(database_.Read(numbers));
    if (!index_ || isLoading_)
        StartLoading();
}

WriteResult Archive::Redo() {
    if (log_.undone.isEmpty())
        return {false, u"Es wurde nichts zurückgenommen."_s};
    const DeletionLog::Undone redo = log_.undone.takeLast();
    if (redo.hadFiles)
        return {false, bin_->Start(redo.numbers) ? u"Die Dateien kommen wieder in den Papierkorb ..."_s
                                                 : u"Es kommen noch andere Dateien in den Papierkorb."_s};
    const QList<DeletionLog::Undone> others = log_.undone;
    WriteResult deleted = database_.Delete(redo.numbers);
    if (TakeDeletion({}, [&] { index_->Remove({redo.numbers.begin(), redo.numbers.end()}); })) {
        log_.undone = others;
        return deleted;
    }
    return {false, deleted ? u"Die Titel sind nicht mehr im Musikarchiv."_s : deleted.reason};
}

} // namespace kalvo
