#pragma once

#include "live/WishFile.h"

#include <QObject>

namespace kalvo {

/**
 * What the guests have asked for, in the order of their wishes. Every change is in the file at once, so that a crash
 * loses no wish; one that could not be written stays here and goes into the file with the next change. UI thread.
 */
class WishList : public QObject {
    Q_OBJECT

public:
    /** A wish and the row that it was taken from. */
    struct Removed {
        int row = 0;
        Wish wish;
    };

    /** path: of the wish file. The clock outlives the list. Nothing is read before Load(). */
    WishList(const QString& path, const Clock& clock, QObject* parent = nullptr);

    /** Reads the file. */
    void Load();

    const QList<Wish>& Wishes() const { return wishes_; }
    /** Row of a wish, counting from 0; -1 when it is gone. A guest's place in the queue is one more. */
    int RowOf(quint64 id) const;

    /**
     * Adds a wish at the end: texts trimmed, the present time where it has none. Gives its id; 0, and nothing is added,
     * without a path. Call it on the UI thread.
     */
    quint64 Add(Wish wish);
    /** Removes these and tells what they were, in rising order of their rows; unknown ids are passed over. */
    QList<Removed> Remove(const QList<quint64>& ids);
    /** Brings removed wishes back to their rows, under their ids. */
    void PutBack(const QList<Removed>& removed);
    QList<Removed> Clear();

    /** Writes all wishes as records 1 to n; no wishes leave an empty file. False, after WriteFailed(), when it failed.
     */
    bool Save();

Q_SIGNALS:
    void Changed();
    /** A wish has come in; Changed() has been told. */
    void Added(const kalvo::Wish& wish);
    /** German. The wishes are still here. */
    void WriteFailed(const QString& reason);

private:
    bool Note(bool isWritten);

    WishFile file_;
    const Clock& clock_;
    QList<Wish> wishes_;
    quint64 lastId_ = 0;
    bool isSaved_ = true; ///< the file holds what the list holds
};

} // namespace kalvo
