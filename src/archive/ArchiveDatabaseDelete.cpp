// The part of ArchiveDatabase that deletes and takes deletions back.

#include "archive/ArchiveDatabase.h"

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

/** Name of the temporary table that keeps the deletion of this place, counted from 0. */
QString KeptTable(qsizetype deletion) {
    return u"temp.\"Geloescht%1\""_s.arg(deletion);
}

qint64 RowsIn(SqliteDatabase& database, const QString& table) {
    SqliteStatement count = database.Prepare(u"SELECT count(*) FROM "_s + table);
    return count.Step() ? count.Number(0) : 0;
}

} // namespace

/** move(kept): copies the rows into the table of that name and deletes them. */
WriteResult ArchiveDatabase::KeepAndDelete(const std::function<bool(const QString& kept)>& move) {
    if (readOnly_)
        return Failure();
    Commit();
    const QString kept = KeptTable(deletions_.size());
    SqliteDatabase::Transaction transaction(database_);
    if (!transaction.IsOpen() ||
        !database_.Execute(u"CREATE TABLE %1 AS SELECT * FROM main.\"Daten\" WHERE 0"_s.arg(kept)) || !move(kept))
        return Failure();
    const qint64 titles = RowsIn(database_, kept);
    if (titles == 0)
        return {true, {}};
    if (!transaction.Commit())
        return Failure();
    deletions_.append(titles);
    return {true, {}};
}

WriteResult ArchiveDatabase::Delete(const QList<qint64>& numbers) {
    return KeepAndDelete([&](const QString& kept) {
        SqliteStatement keep =
            database_.Prepare(u"INSERT INTO %1 SELECT * FROM main.\"Daten\" WHERE Nr = ?"_s.arg(kept));
        SqliteStatement drop = database_.Prepare(u"DELETE FROM main.\"Daten\" WHERE Nr = ?"_s);
        for (const qint64 number : numbers)
            if (!keep.Bind(1, number).Run() || !drop.Bind(1, number).Run())
                return false;
        return true;
    });
}

WriteResult ArchiveDatabase::DeleteAll() {
    WriteResult deleted = KeepAndDelete([&](const QString& kept) {
        return database_.Execute(
            u"INSERT INTO %1 SELECT * FROM main.\"Daten\"; DELETE FROM main.\"Daten\""_s.arg(kept));
    });
    if (deleted) // gives the disk space back; fails harmlessly while another program reads
        database_.Execute(u"VACUUM main; PRAGMA wal_checkpoint(TRUNCATE)"_s);
    return deleted;
}

WriteResult ArchiveDatabase::UndoDelete(QList<qint64>& numbers) {
    if (deletions_.isEmpty())
        return {false, u"Es wurde nichts gelöscht."_s};
    Commit();
    const QString kept = KeptTable(deletions_.size() - 1);
    {
        SqliteStatement select = database_.Prepare(u"SELECT Nr FROM "_s + kept);
        while (select.Step())
            numbers.append(select.Number(0));
    }
    SqliteDatabase::Transaction transaction(database_);
    if (!transaction.IsOpen() || !database_.Execute(u"INSERT INTO main.\"Daten\" SELECT * FROM %1"_s.arg(kept)) ||
        !database_.Execute(u"DROP TABLE "_s + kept) || !transaction.Commit())
        return Failure();
    deletions_.removeLast();
    return {true, {}};
}

} // namespace kalvo
