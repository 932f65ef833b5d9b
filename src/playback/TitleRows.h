#pragma once

#include "archive/SqliteDatabase.h"

#include <QJsonArray>
#include <QString>

#include <optional>

namespace kalvo {

class Clock;

/**
 * Rows of numbers by the paths of titles, in a database of their own. Opened when it is first asked, by the thread that
 * asks; that one alone may use it, but several can be open on one file, one of them to write. Nobody waits for the disk
 * at each row: after a power cut the latest ones may be missing. What cannot be read is not known, what cannot be
 * written is not kept.
 */
class TitleRows {
public:
    enum class Access {
        Read,
        Write ///< creates the file; one that is something else is set aside under a dated name
    };

    /** The clock outlives this. */
    TitleRows(QString file, Access access, const Clock& clock);

    /** None when the path is unknown or has other than so many numbers. */
    std::optional<QJsonArray> Find(const QString& path, qsizetype places);
    void Put(const QString& path, const QJsonArray& row);

private:
    bool IsOpen();
    bool Create();
    bool HasTable();

    QString file_;
    Access access_;
    const Clock& clock_;
    SqliteDatabase database_;
    SqliteStatement select_;
};

} // namespace kalvo
