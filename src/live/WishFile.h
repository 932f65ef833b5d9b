#pragma once

#include "base/FixedRecords.h"

#include <QDateTime>
#include <QList>

namespace kalvo {

/** What a guest asks for. */
struct Wish {
    QString path;    ///< of the file; what comes out of the file may be cut to the record's 100 bytes
    QString display; ///< artist + " - " + title
    QString guest;   ///< who wished it; may be empty
    QString time;    ///< "03.03.2026 09:05"
    quint64 id = 0;  ///< given by the list that holds the wish, different from all others it has ever held

    bool operator==(const Wish&) const = default;
};

/** A wish's display text. */
QString WishDisplay(const QString& artist, const QString& title);
/** The same taken apart at its first " - "; without one all of it is the title. */
struct WishNames {
    QString artist;
    QString title;
};
WishNames NamesOfWish(const QString& display);
/** What people read: the display text, or the file's name where there was neither artist nor title. */
QString ShownWish(const Wish& wish);
/** "03.03.2026 09:05". */
QString WishTime(const QDateTime& moment);

/** The wish list's file: records of 282 bytes, one for each wish. UI thread. */
class WishFile {
public:
    /** The clock outlives this; it names what is kept of a damaged file. Nothing is read yet. */
    WishFile(const QString& path, const Clock& clock);

    /** There is something in the file, but not a single record that names a file. */
    bool IsDamaged() const;
    /** In the file's order; empty records are left out. None when it is missing or cannot be read. */
    QList<Wish> Read() const;
    /** Behind the last record, with a single write. False when it could not be written. */
    bool Append(const Wish& wish);
    /** Replaces the file atomically; an empty list leaves an empty file. False, with the old content, when it failed.
     */
    bool Write(const QList<Wish>& wishes);

    /** A text as it comes back from the field for paths, or for display texts. */
    static QString StoredPath(const QString& path);
    static QString StoredDisplay(const QString& display);
    /** Whether a path out of the file may be the beginning of a longer one. */
    static bool MayBeCut(const QString& path);

private:
    FixedRecords records_;
};

} // namespace kalvo
