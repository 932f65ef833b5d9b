#include "archive/ArchiveDatabase.h"

#include "archive/ArchiveField.h"
#include "archive/ArchiveRescue.h"
#include "base/SetAside.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

#include <algorithm>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

constexpr int kBusyMilliseconds = 2000;
constexpr int kBatchTitles = 500;
constexpr qint64 kBatchMilliseconds = 100;

const QString kTable = u"Daten"_s;
const QString kInUse = u"Das Musikarchiv wird von einem anderen Programm benutzt"_s;
const QString kProtected = u"Das Musikarchiv ist schreibgeschützt"_s;
const QString kNoRoom = u"Der Datenträger des Musikarchivs ist voll"_s;
constexpr qint64 kLeastRoom = 64 << 10; ///< bytes; the engine's shared memory alone takes 32 KiB

QString WhyProtected(const QString& path) {
    const QStorageInfo disk(QFileInfo(path).path());
    return disk.isValid() && disk.bytesAvailable() < kLeastRoom ? kNoRoom : kProtected;
}

QString FieldNames(const QString& between) {
    QStringList names;
    for (const ArchiveField field : kTextFields)
        names.append(FieldName(field));
    return names.join(between);
}

void BindTexts(SqliteStatement& statement, const TitleRecord& record) {
    int parameter = 1;
    for (const ArchiveField field : kTextFields)
        statement.Bind(parameter++, FieldPlace(record, field));
}

TitleRecord RecordOf(const SqliteStatement& statement) {
    TitleRecord record;
    record.Nr = statement.Number(0);
    int column = 1;
    for (const ArchiveField field : kTextFields)
        FieldPlace(record, field) = statement.Text(column++);
    return record;
}

SqliteStatement PrepareSelect(SqliteDatabase& database) {
    return database.Prepare(u"SELECT Nr, %1 FROM \"Daten\" WHERE Nr = ?"_s.arg(FieldNames(u", "_s)));
}

QList<TitleRecord> ReadAll(SqliteDatabase& database, SqliteStatement& select, const QList<qint64>& numbers) {
    const SqliteDatabase::ReadPass pass(database);
    QList<TitleRecord> records;
    records.reserve(numbers.size());
    for (const qint64 number : numbers) {
        records.append(select.Bind(1, number).Step() ? RecordOf(select) : TitleRecord());
        select.Reset();
    }
    return records;
}

/** Looked at before the engine does, which would throw a foreign file's log away. */
bool LooksLikeDatabase(const QString& path) {
    QFile file(path);
    return !file.open(QIODevice::ReadOnly) || file.read(15) == "SQLite format 3";
}

/** Whether nothing is in it yet: its creation was broken off. */
bool IsEmpty(SqliteDatabase& database) {
    SqliteStatement count = database.Prepare(u"SELECT count(*) FROM sqlite_schema"_s);
    return count.Step() && count.Number(0) == 0;
}

/** Reason why the record cannot be stored, empty when it can. */
QString TooLong(const TitleRecord& record) {
    if (record.Pfad.size() > kMaximumFieldLength)
        return u"Der Pfad ist länger als %1 Zeichen."_s.arg(kMaximumFieldLength);
    for (const ArchiveField field : kTextFields)
        if (FieldPlace(record, field).size() > kMaximumFieldLength)
            return u"Das Feld %1 ist länger als %2 Zeichen."_s.arg(FieldCaption(field)).arg(kMaximumFieldLength);
    return {};
}

} // namespace

ArchiveDatabase::ArchiveDatabase(const Clock& clock) : clock_(clock) {}

ArchiveDatabase::~ArchiveDatabase() {
    Close();
}

QString ArchiveDatabase::CreateTableStatement(const QString& table, bool limitLengths) {
    QString fields = u"\"Nr\" INTEGER PRIMARY KEY AUTOINCREMENT"_s;
    for (const ArchiveField field : kTextFields) {
        const QString name = FieldName(field);
        fields += u", \"%1\" TEXT NOT NULL DEFAULT ''"_s.arg(name);
        if (limitLengths)
            fields += u" CHECK(length(\"%1\") <= %2)"_s.arg(name).arg(kMaximumFieldLength);
    }
    return u"CREATE TABLE \"%1\" (%2)"_s.arg(table, fields);
}

bool ArchiveDatabase::HasTitleTable(SqliteDatabase& database, const QString& table) {
    SqliteStatement columns = database.Prepare(u"SELECT name FROM pragma_table_info(?)"_s);
    columns.Bind(1, table);
    int known = 0;
    while (columns.Step())
        known += FieldOfName(columns.Text(0)) ? 1 : 0;
    return known == kFieldCount;
}

bool ArchiveDatabase::Open(const QString& path, QString& message) {
    Close();
    path_ = path;
    message.clear();
    if (ArchiveRescue::IsNoted(path))
        ArchiveRescue::Run(path, clock_, message);
    if (!QFileInfo::exists(path) || QFileInfo(path).size() == 0)
        return CreateArchiveDatabase() || (message = u"Das Musikarchiv kann nicht angelegt werden: "_s + path, false);

    if (!LooksLikeDatabase(path))
        return Replace(message);

    const auto outcome = database_.Open(path, SqliteDatabase::Mode::ReadWrite, kBusyMilliseconds);
    if (outcome == SqliteDatabase::Outcome::Locked)
        return OpenForReading(kInUse, message);
    if (outcome == SqliteDatabase::Outcome::Failed)
        return OpenForReading(WhyProtected(path), message);
    const bool unfinished = outcome == SqliteDatabase::Outcome::Opened && IsEmpty(database_);
    if (outcome == SqliteDatabase::Outcome::NotDatabase || (!unfinished && !HasTitleTable(database_, kTable)))
        return Replace(message);
    if (PrepareForWriting() && (!unfinished || database_.Execute(CreateTableStatement(kTable, true))))
        return true;
    return OpenForReading(database_.LastErrorIsLocked() ? kInUse : WhyProtected(path), message);
}

bool ArchiveDatabase::Replace(QString& message) {
    database_.Close();
    const QString kept = SetAside(path_, clock_, {u"-wal"_s, u"-shm"_s});
    if (kept.isEmpty() || !CreateArchiveDatabase()) {
        message = u"Das Musikarchiv ist beschädigt und kann nicht ersetzt werden: "_s + path_;
        return false;
    }
    message = u"Das Musikarchiv war beschädigt. Es wurde neu angelegt, die alte Datei liegt unter "_s + kept;
    return true;
}

/** The lengths, which the table checks for other programs, are looked at here before: see TooLong(). */
bool ArchiveDatabase::PrepareForWriting() {
    return database_.Execute(u"PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL; PRAGMA ignore_check_constraints=ON; "
                             "BEGIN IMMEDIATE; ROLLBACK"_s);
}

bool ArchiveDatabase::CreateArchiveDatabase() {
    QDir().mkpath(QFileInfo(path_).path());
    return database_.Open(path_, SqliteDatabase::Mode::Create, kBusyMilliseconds) == SqliteDatabase::Outcome::Opened &&
           PrepareForWriting() && database_.Execute(CreateTableStatement(kTable, true));
}

bool ArchiveDatabase::OpenForReading(const QString& why, QString& message) {
    const auto outcome = database_.Open(path_, SqliteDatabase::Mode::ReadOnly, kBusyMilliseconds);
    readOnly_ = outcome == SqliteDatabase::Outcome::Opened && HasTitleTable(database_, kTable);
    message = why + (readOnly_ ? u". Es kann nur gelesen werden."_s : u" und kann nicht gelesen werden."_s);
    if (!readOnly_)
        database_.Close();
    return readOnly_;
}

void ArchiveDatabase::Close() {
    Commit();
    batches_ = 0;
    insert_.reset();
    select_.reset();
    deletions_.clear();
    PutBack();
    database_.Close();
    readOnly_ = false;
}

/** A file that was deleted under the program lives on in this connection, and with it alone. */
void ArchiveDatabase::PutBack() {
    if (database_.IsOpen() && !readOnly_ && !QFileInfo::exists(path_))
        database_.Prepare(u"VACUUM main INTO ?"_s).Bind(1, path_).Run();
}

WriteResult ArchiveDatabase::Failure() {
    if (readOnly_)
        return {false, u"Das Musikarchiv kann nur gelesen werden."_s};
    if (database_.LastErrorIsLocked())
        return {false, kInUse + u'.'};
    return {false, u"Das Musikarchiv konnte nicht geschrieben werden: "_s + database_.LastError()};
}

WriteResult ArchiveDatabase::AddTitle(TitleRecord& record) {
    CutText(record.Extra1, kMaximumCommentLength);
    if (const QString reason = TooLong(record); !reason.isEmpty())
        return {false, reason};
    if (readOnly_ || !EnsureTransaction())
        return Failure();
    if (!insert_)
        insert_ = database_.Prepare(
            u"INSERT INTO \"Daten\" (%1) VALUES (?,?,?,?,?,?,?,?,?,?,?,?)"_s.arg(FieldNames(u", "_s)));
    BindTexts(*insert_, record);
    if (!insert_->Run())
        return Failure();
    record.Nr = database_.LastInsertId();
    ++batchTitles_;
    CommitIfDue();
    return {true, {}};
}

WriteResult ArchiveDatabase::UpdateRecord(const TitleRecord& record) {
    if (const QString reason = TooLong(record); !reason.isEmpty())
        return {false, reason};
    if (readOnly_)
        return Failure();
    SqliteStatement update =
        database_.Prepare(u"UPDATE \"Daten\" SET %1 = ? WHERE Nr = ?"_s.arg(FieldNames(u" = ?, "_s)));
    BindTexts(update, record);
    update.Bind(kFieldCount, record.Nr);
    if (!update.Run())
        return Failure();
    return database_.Changes() == 1 ? WriteResult{true, {}}
                                    : WriteResult{false, u"Der Titel ist nicht mehr im Musikarchiv."_s};
}

void ArchiveDatabase::BeginBatch() {
    ++batches_;
}

void ArchiveDatabase::EndBatch() {
    Commit();
    batches_ = std::max(0, batches_ - 1); // closing ends them all
}

bool ArchiveDatabase::EnsureTransaction() {
    if (batches_ == 0 || batch_)
        return true;
    batch_ = std::make_unique<SqliteDatabase::Transaction>(database_);
    batchTitles_ = 0;
    batchStart_ = clock_.Milliseconds();
    if (!batch_->IsOpen())
        batch_.reset();
    return batch_ != nullptr;
}

void ArchiveDatabase::CommitIfDue() {
    if (batchTitles_ >= kBatchTitles || clock_.Milliseconds() - batchStart_ >= kBatchMilliseconds)
        Commit();
}

void ArchiveDatabase::Commit() {
    if (batch_ && !batch_->Commit())
        batchLost_ = true;
    batch_.reset();
}

QList<TitleRecord> ArchiveDatabase::Read(const QList<qint64>& numbers) const {
    if (!select_)
        select_ = PrepareSelect(database_);
    return ReadAll(database_, *select_, numbers);
}

QList<TitleRecord> ArchiveDatabase::Read(SqliteDatabase& database, const QList<qint64>& numbers) {
    SqliteStatement select = PrepareSelect(database);
    return ReadAll(database, select, numbers);
}

std::optional<TitleRecord> ArchiveDatabase::FindByPath(const QString& path) const {
    SqliteStatement select = database_.Prepare(
        u"SELECT Nr, %1 FROM \"Daten\" WHERE Pfad = ? ORDER BY Nr LIMIT 1"_s.arg(FieldNames(u", "_s)));
    if (!select.Bind(1, path).Step())
        return std::nullopt;
    return RecordOf(select);
}

qint64 ArchiveDatabase::Count() const {
    SqliteStatement count = database_.Prepare(u"SELECT count(*) FROM \"Daten\""_s);
    return count.Step() ? count.Number(0) : -1;
}

qint64 ArchiveDatabase::ForeignVersion() const {
    SqliteStatement version = database_.Prepare(u"PRAGMA data_version"_s);
    return version.Step() ? version.Number(0) : 0;
}

} // namespace kalvo
