#include "playback/TitleRows.h"

#include "base/SetAside.h"

#include <QFile>
#include <QJsonDocument>

#include <algorithm>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

bool IsRow(const QJsonArray& row, qsizetype places) {
    return row.size() == places &&
           std::all_of(row.begin(), row.end(), [](const QJsonValue& place) { return place.isDouble(); });
}

} // namespace

TitleRows::TitleRows(QString file, Access access, const Clock& clock)
    : file_(std::move(file)), access_(access), clock_(clock) {}

std::optional<QJsonArray> TitleRows::Find(const QString& path, qsizetype places) {
    if (!IsOpen())
        return std::nullopt;
    select_.Reset();
    if (!select_.Bind(1, path).Step())
        return std::nullopt;
    QJsonArray row = QJsonDocument::fromJson(select_.Text(0).toUtf8()).array();
    select_.Reset(); // or it would go on reading the file as it is now
    return IsRow(row, places) ? std::optional(row) : std::nullopt;
}

void TitleRows::Put(const QString& path, const QJsonArray& row) {
    if (!IsOpen())
        return;
    const QByteArray numbers = QJsonDocument(row).toJson(QJsonDocument::Compact);
    database_.Prepare(u"INSERT OR REPLACE INTO Titel VALUES (?, ?)"_s)
        .Bind(1, path)
        .Bind(2, QString::fromUtf8(numbers))
        .Run();
}

/** A file that another one creates is opened with the next question, and after a failure it is opened anew. */
bool TitleRows::IsOpen() {
    if (database_.IsOpen() && !select_.Failed())
        return true;
    using Outcome = SqliteDatabase::Outcome;
    if (access_ == Access::Read)
        return QFile::exists(file_) && database_.Open(file_, SqliteDatabase::Mode::ReadOnly) == Outcome::Opened &&
               HasTable();
    const Outcome outcome = database_.Open(file_, SqliteDatabase::Mode::Create);
    if (outcome == Outcome::Opened && Create())
        return true;
    database_.Close();
    return outcome != Outcome::Locked && outcome != Outcome::Failed &&
           !SetAside(file_, clock_, {u"-wal"_s, u"-shm"_s}).isEmpty() &&
           database_.Open(file_, SqliteDatabase::Mode::Create) == Outcome::Opened && Create();
}

bool TitleRows::Create() {
    return database_.Execute(u"PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL; CREATE TABLE IF NOT EXISTS "
                             "Titel (Pfad TEXT PRIMARY KEY, Werte TEXT NOT NULL) WITHOUT ROWID"_s) &&
           HasTable();
}

bool TitleRows::HasTable() {
    select_ = database_.Prepare(u"SELECT Werte FROM Titel WHERE Pfad = ?"_s);
    if (select_.Failed())
        database_.Close();
    return !select_.Failed();
}

} // namespace kalvo
