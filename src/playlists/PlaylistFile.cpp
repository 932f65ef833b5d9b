#include "playlists/PlaylistFile.h"

#include "archive/SqliteDatabase.h"
#include "base/FileName.h"
#include "base/SetAside.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace kalvo {

namespace {

using Mode = SqliteDatabase::Mode;
using Open = SqliteDatabase::Outcome;

QString Table(int list) {
    return QStringLiteral("Player%1").arg(list + 1);
}

/** The archive's fields, so that one reader serves both. */
bool CreateTables(SqliteDatabase& database) {
    const QStringList fields = {QStringLiteral("Titel"),     QStringLiteral("Interpret"), QStringLiteral("Album"),
                                QStringLiteral("Bewertung"), QStringLiteral("Stil"),      QStringLiteral("Zeit"),
                                QStringLiteral("Jahr"),      QStringLiteral("Pfad"),      QStringLiteral("Extra1"),
                                QStringLiteral("Extra2"),    QStringLiteral("Extra3"),    QStringLiteral("Extra4")};
    const QString columns = fields.join(QStringLiteral(" TEXT, ")) + QStringLiteral(" TEXT");
    const QString create = QStringLiteral("CREATE TABLE IF NOT EXISTS %1 (Nr INTEGER PRIMARY KEY AUTOINCREMENT, %2)");
    return database.Execute(create.arg(Table(0), columns)) && database.Execute(create.arg(Table(1), columns));
}

bool ReadTable(SqliteDatabase& database, const QString& table, QList<PlaylistEntry>& entries) {
    SqliteStatement rows = database.Prepare(
        QStringLiteral("SELECT Titel, Interpret, Zeit, Extra4, Extra1, Pfad FROM %1 ORDER BY Nr").arg(table));
    while (rows.Step())
        entries.append({rows.Text(0), rows.Text(1), rows.Text(2), rows.Text(3), rows.Text(4), rows.Text(5)});
    return !rows.Failed();
}

bool WriteTable(SqliteDatabase& database, const QString& table, const QList<PlaylistEntry>& entries) {
    SqliteStatement insert = database.Prepare(
        QStringLiteral("INSERT INTO %1 (Titel, Interpret, Zeit, Extra4, Extra1, Pfad) VALUES (?, ?, ?, ?, ?, ?)")
            .arg(table));
    for (const PlaylistEntry& entry : entries) {
        insert.Bind(1, entry.title).Bind(2, entry.artist).Bind(3, entry.duration);
        insert.Bind(4, entry.shuffleKey).Bind(5, entry.info).Bind(6, entry.path);
        if (!insert.Run())
            return false;
    }
    return !insert.Failed();
}

bool WriteTables(SqliteDatabase& database, const PlaylistFile::Lists& lists, PlaylistFile::Content content) {
    SqliteDatabase::Transaction transaction(database);
    if (!transaction.IsOpen())
        return false;
    for (int list = 0; list < 2; ++list) {
        const bool isEmptied = content == PlaylistFile::Content::Append ||
                               database.Execute(QStringLiteral("DELETE FROM %1").arg(Table(list)));
        if (!isEmptied || !WriteTable(database, Table(list), lists.at(static_cast<size_t>(list))))
            return false;
    }
    return transaction.Commit();
}

/**
 * Opens only what begins like a database: the engine would delete the -wal beside a file that it cannot read.
 */
Open OpenChecked(SqliteDatabase& database, const QString& path, Mode mode) {
    QFile file(path);
    const QByteArray magic = QByteArrayLiteral("SQLite format 3\0");
    if (file.open(QIODevice::ReadOnly) && file.size() > 0 && file.read(magic.size()) != magic)
        return Open::NotDatabase;
    return database.Open(path, mode);
}

bool IsSound(SqliteDatabase& database) {
    SqliteStatement check = database.Prepare(QStringLiteral("PRAGMA quick_check(1)"));
    return check.Step() && check.Text(0) == QLatin1String("ok");
}

QString Reason(Open outcome) {
    switch (outcome) {
    case Open::Locked:
        return QStringLiteral("ein anderes Programm benutzt die Datei");
    case Open::NotDatabase:
        return QStringLiteral("die Datei ist beschädigt");
    default:
        return QStringLiteral("kein Zugriff auf die Datei");
    }
}

} // namespace

PlaylistFile::PlaylistFile(QString path, const Clock& clock) : path_(std::move(path)), clock_(clock) {}

bool PlaylistFile::Exists() const {
    return QFile::exists(path_);
}

void PlaylistFile::CreateFolder() const {
    QDir().mkpath(QFileInfo(path_).path());
}

PlaylistFile::Result PlaylistFile::CreatePlaylistDatabase() {
    SqliteDatabase database;
    return OpenForWriting(database);
}

PlaylistFile::Result PlaylistFile::Load(Lists& lists) const {
    const auto failure = [this](const QString& reason) {
        return Failure(QStringLiteral("konnte nicht gelesen werden"), reason);
    };
    SqliteDatabase database;
    Open opened = OpenChecked(database, path_, Mode::ReadWrite);
    if (opened == Open::Failed)
        opened = OpenChecked(database, path_, Mode::ReadOnly);
    if (opened != Open::Opened)
        return failure(Reason(opened));
    for (int list = 0; list < 2; ++list) {
        if (!ReadTable(database, Table(list), lists.at(static_cast<size_t>(list))))
            return failure(database.LastError());
    }
    return {};
}

PlaylistFile::Result PlaylistFile::Save(const Lists& lists, Content content) {
    SqliteDatabase database;
    Result opened = OpenForWriting(database);
    if (opened.outcome == Outcome::Failed)
        return opened;
    const Result saved = SaveInto(database, lists, content);
    database.Execute(QStringLiteral("PRAGMA journal_mode=DELETE")); // readable from a read-only medium then
    return saved.outcome == Outcome::Done ? opened : saved;
}

PlaylistFile::Result PlaylistFile::SetAside() {
    const QString aside = kalvo::SetAside(path_, clock_, {QStringLiteral("-wal"), QStringLiteral("-shm")});
    if (aside.isEmpty())
        return Failure(QStringLiteral("konnte nicht beiseitegelegt werden"), QStringLiteral("kein Zugriff"));
    return {Outcome::SetAside, QStringLiteral("Die Wiedergabelisten-Datei war nicht lesbar und liegt nun unter „%1“.")
                                   .arg(FileName::Last(aside))};
}

PlaylistFile::Result PlaylistFile::OpenForWriting(SqliteDatabase& database) {
    const QString what = QStringLiteral("konnte nicht geschrieben werden");
    Result result;
    Open opened = OpenChecked(database, path_, Mode::Create);
    if (opened == Open::NotDatabase) {
        database.Close();
        result = SetAside();
        if (result.outcome == Outcome::Failed)
            return result;
        opened = database.Open(path_, Mode::Create);
    }
    if (opened != Open::Opened)
        return Failure(what, Reason(opened));
    if (!database.Execute(QStringLiteral("PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL")) ||
        !CreateTables(database))
        return Failure(what, database.LastError());
    return result;
}

PlaylistFile::Result PlaylistFile::SaveInto(SqliteDatabase& database, const Lists& lists, Content content) {
    if (WriteTables(database, lists, content))
        return {};
    const QString reason = database.LastError();
    if (database.LastErrorIsLocked() || database.LastErrorIsReadOnly() || IsSound(database))
        return Failure(QStringLiteral("konnte nicht geschrieben werden"), reason);
    database.Close();
    Result aside = SetAside();
    if (aside.outcome == Outcome::Failed)
        return aside;
    Result opened = OpenForWriting(database);
    if (opened.outcome == Outcome::Failed)
        return opened;
    if (!WriteTables(database, lists, content))
        return Failure(QStringLiteral("konnte nicht geschrieben werden"), database.LastError());
    return aside;
}

PlaylistFile::Result PlaylistFile::Failure(const QString& what, const QString& reason) const {
    return {Outcome::Failed, QStringLiteral("Wiedergabeliste „%1“ %2: %3").arg(FileName::Last(path_), what, reason)};
}

} // namespace kalvo
