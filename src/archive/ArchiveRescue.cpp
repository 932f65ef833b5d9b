#include "archive/ArchiveRescue.h"

#include "archive/ArchiveDatabase.h"
#include "archive/ArchiveField.h"
#include "base/AtomicFile.h"
#include "base/SetAside.h"

#include <QFile>
#include <QFileInfo>

#include <limits>

namespace kalvo::ArchiveRescue {

namespace {

using namespace Qt::StringLiterals;

const QStringList kCompanions = {u"-wal"_s, u"-shm"_s};

QString NoteOf(const QString& path) {
    return path + u".beschaedigt"_s;
}

void Remove(const QString& path) {
    for (const QString& name : QStringList{path} + QStringList{path + kCompanions[0], path + kCompanions[1]})
        QFile::remove(name);
}

/** The table counts code points. */
QString Fitting(const QString& text) {
    if (text.size() <= kMaximumFieldLength)
        return text;
    const auto points = text.toStdU32String().substr(0, kMaximumFieldLength);
    return QString::fromUcs4(points.data(), static_cast<qsizetype>(points.size()));
}

/** Copies from one damaged place to the other: from the front until the first failure, then from the back. */
class Copy {
public:
    Copy(SqliteDatabase& from, SqliteDatabase& to) : from_(from) {
        QString fields = u"Nr"_s;
        QString places = u"?"_s;
        for (const ArchiveField field : kTextFields) {
            fields += u", "_s + FieldName(field);
            places += u", ?"_s;
        }
        fields_ = fields;
        insert_ = to.Prepare(u"INSERT INTO \"Daten\" (%1) VALUES (%2)"_s.arg(fields, places));
    }

    /** Number of titles; -1 when they cannot be written. */
    qint64 Run() {
        if (Pass(u"ORDER BY Nr"_s))
            return written_ ? titles_ : -1;
        beyond_ = last_;
        Pass(u"ORDER BY Nr DESC"_s);
        return written_ ? titles_ : -1;
    }

private:
    /** False when it broke off. */
    bool Pass(const QString& order) {
        SqliteStatement select = from_.Prepare(u"SELECT %1 FROM \"Daten\" WHERE Nr > ? %2"_s.arg(fields_, order));
        select.Bind(1, beyond_);
        while (written_ && select.Step()) {
            last_ = select.Number(0);
            insert_.Bind(1, last_);
            for (int i = 1; i <= static_cast<int>(kTextFields.size()); ++i)
                insert_.Bind(i + 1, Fitting(select.Text(i)));
            written_ = insert_.Run();
            titles_ += written_ ? 1 : 0;
        }
        return !select.Failed();
    }

    SqliteDatabase& from_;
    QString fields_;
    SqliteStatement insert_;
    qint64 beyond_ = std::numeric_limits<qint64>::min();
    qint64 last_ = std::numeric_limits<qint64>::min();
    qint64 titles_ = 0;
    bool written_ = true;
};

/** Number of titles in the new file; -1 on failure. */
qint64 CopyTitles(const QString& path, const QString& fresh) {
    SqliteDatabase from;
    SqliteDatabase to;
    if (from.Open(path, SqliteDatabase::Mode::ReadOnly) != SqliteDatabase::Outcome::Opened ||
        to.Open(fresh, SqliteDatabase::Mode::Create) != SqliteDatabase::Outcome::Opened ||
        !to.Execute(ArchiveDatabase::CreateTableStatement(u"Daten"_s, true)))
        return -1;
    SqliteDatabase::Transaction transaction(to);
    const qint64 titles = Copy(from, to).Run();
    return transaction.Commit() ? titles : -1;
}

} // namespace

void Note(const QString& path) {
    WriteAtomically(NoteOf(path), {});
}

bool IsNoted(const QString& path) {
    return QFileInfo::exists(NoteOf(path));
}

bool Run(const QString& path, const Clock& clock, QString& message) {
    const QString fresh = path + u".neu"_s;
    // Broken off between its last two steps, the new file is complete and only lacks its name.
    if (!QFileInfo::exists(path) && QFileInfo::exists(fresh))
        return QFile::rename(fresh, path) && QFile::remove(NoteOf(path));
    Remove(fresh);
    const qint64 titles = CopyTitles(path, fresh);
    const QString kept = titles < 0 ? QString() : SetAside(path, clock, kCompanions);
    if (kept.isEmpty())
        Remove(fresh);
    if (kept.isEmpty() || !QFile::rename(fresh, path)) {
        message = u"Das Musikarchiv ist beschädigt und kann nicht erneuert werden: "_s + path;
        return false;
    }
    QFile::remove(NoteOf(path));
    message =
        u"Das Musikarchiv war beschädigt. %1 Titel wurden übernommen, die alte Datei liegt unter %2"_s.arg(titles).arg(
            kept);
    return true;
}

} // namespace kalvo::ArchiveRescue
