#include "archive/SqliteDatabase.h"

#include <QFile>
#include <QStringEncoder>
#include <QUrl>

#include <sqlite3.h>

#include <algorithm>
#include <new>

namespace kalvo {

namespace {

/** Steps of the engine between two looks at a stop request. */
constexpr int kStepsBetween = 10000;

int PrimaryCode(sqlite3* handle) {
    return sqlite3_extended_errcode(handle) & 0xFF;
}

SqliteDatabase::Outcome OutcomeOf(int code) {
    switch (code & 0xFF) {
    case SQLITE_OK:
        return SqliteDatabase::Outcome::Opened;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return SqliteDatabase::Outcome::Locked;
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
        return SqliteDatabase::Outcome::NotDatabase;
    default:
        return SqliteDatabase::Outcome::Failed;
    }
}

int Flags(SqliteDatabase::Mode mode) {
    switch (mode) {
    case SqliteDatabase::Mode::Create:
        return SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    case SqliteDatabase::Mode::ReadWrite:
        return SQLITE_OPEN_READWRITE;
    case SqliteDatabase::Mode::ReadOnly:
        return SQLITE_OPEN_READONLY;
    }
    return SQLITE_OPEN_READONLY;
}

/** The engine would count its memory under a lock that all threads share; nobody asks for the count. */
void LeaveMemoryUncounted() {
    static const int configured = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0); // before the first database is opened
    static_cast<void>(configured);
}

std::string_view TextOf(const unsigned char* text, int bytes) {
    return {reinterpret_cast<const char*>(text), text != nullptr ? static_cast<std::size_t>(bytes) : 0};
}

/** As QString::toUtf8() does, but into the memory of the text before, which is mostly enough. */
void EncodeInto(QByteArray& utf8, const QString& text) {
    QStringEncoder encoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
    utf8.resize(encoder.requiredSpace(text.size()));
    const char* end = encoder.appendToBuffer(utf8.data(), text);
    utf8.resize(end - utf8.constData());
    if (encoder.hasError())
        utf8 = text.toUtf8();
}

using Visit = std::function<bool(const SqliteRow&)>;

void VisitRow(sqlite3_context* context, int, sqlite3_value** values) try {
    if (!(*static_cast<const Visit*>(sqlite3_user_data(context)))(SqliteRow(values)))
        sqlite3_result_error_code(context, SQLITE_ABORT);
} catch (const std::bad_alloc&) { // not through the engine
    sqlite3_result_error_nomem(context);
}

void EndVisit(sqlite3_context*) {}

} // namespace

qint64 SqliteRow::Number(int column) const {
    return sqlite3_value_int64(values_[column]);
}

std::string_view SqliteRow::Utf8(int column) const {
    const unsigned char* text = sqlite3_value_text(values_[column]);
    return TextOf(text, sqlite3_value_bytes(values_[column]));
}

void SqliteStatement::Finalize::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

void SqliteDatabase::CloseHandle::operator()(sqlite3* handle) const {
    sqlite3_close_v2(handle);
}

SqliteStatement::SqliteStatement(sqlite3_stmt* statement) : statement_(statement), failed_(statement == nullptr) {}

SqliteStatement& SqliteStatement::Bind(int parameter, const QString& text) {
    failed_ = failed_ || ended_ || sqlite3_stmt_busy(statement_.get()) != 0; // not reset: it has the text before
    if (failed_)
        return *this;
    const auto place = static_cast<std::size_t>(parameter);
    texts_.resize(std::max(texts_.size(), place + 1));
    EncodeInto(texts_[place], text);
    failed_ = sqlite3_bind_text(statement_.get(), parameter, texts_[place].constData(),
                                static_cast<int>(texts_[place].size()), SQLITE_STATIC) != SQLITE_OK;
    return *this;
}

SqliteStatement& SqliteStatement::Bind(int parameter, qint64 number) {
    if (!failed_)
        failed_ = sqlite3_bind_int64(statement_.get(), parameter, number) != SQLITE_OK;
    return *this;
}

bool SqliteStatement::Step() {
    if (failed_ || ended_)
        return false;
    const int code = sqlite3_step(statement_.get());
    ended_ = code == SQLITE_DONE;
    failed_ = code != SQLITE_ROW && !ended_;
    return code == SQLITE_ROW;
}

bool SqliteStatement::Run() {
    Step();
    const bool done = !failed_;
    Reset();
    return done;
}

void SqliteStatement::Reset() {
    if (!statement_)
        return;
    sqlite3_reset(statement_.get());
    failed_ = false;
    ended_ = false;
}

QString SqliteStatement::Text(int column) const {
    const std::string_view text = Utf8(column);
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string_view SqliteStatement::Utf8(int column) const {
    const unsigned char* text = sqlite3_column_text(statement_.get(), column);
    return TextOf(text, sqlite3_column_bytes(statement_.get(), column));
}

qint64 SqliteStatement::Number(int column) const {
    return sqlite3_column_int64(statement_.get(), column);
}

SqliteDatabase::Outcome SqliteDatabase::Open(const QString& path, Mode mode, int busyMilliseconds) {
    const QByteArray name = QFile::encodeName(path);
    int code = OpenNamed(name, Flags(mode), busyMilliseconds);
    if (mode == Mode::ReadOnly && OutcomeOf(code) == Outcome::Failed && QFile::exists(path)) {
        // Without write permission for the folder, or without room, a log cannot be shared; then nobody writes and none
        // is needed.
        const QByteArray uri = QUrl::fromLocalFile(path).toEncoded() + "?immutable=1";
        code = OpenNamed(uri, Flags(mode) | SQLITE_OPEN_URI, busyMilliseconds);
    }
    return OutcomeOf(code);
}

int SqliteDatabase::OpenNamed(const QByteArray& name, int flags, int busyMilliseconds) {
    Close();
    LeaveMemoryUncounted();
    sqlite3* handle = nullptr;
    int code = sqlite3_open_v2(name.constData(), &handle, flags | SQLITE_OPEN_EXRESCODE | SQLITE_OPEN_NOMUTEX, nullptr);
    handle_.reset(handle);
    if (code == SQLITE_OK) {
        sqlite3_busy_timeout(handle, busyMilliseconds);
        code = sqlite3_exec(handle, "SELECT count(*) FROM sqlite_schema", nullptr, nullptr, nullptr);
    }
    if (code != SQLITE_OK)
        Close();
    return code;
}

void SqliteDatabase::Close() {
    handle_.reset();
}

bool SqliteDatabase::Execute(const QString& sql) {
    return handle_ && sqlite3_exec(handle_.get(), sql.toUtf8().constData(), nullptr, nullptr, nullptr) == SQLITE_OK;
}

SqliteStatement SqliteDatabase::Prepare(const QString& sql) {
    sqlite3_stmt* statement = nullptr;
    if (handle_)
        sqlite3_prepare_v2(handle_.get(), sql.toUtf8().constData(), -1, &statement, nullptr);
    return SqliteStatement(statement);
}

bool SqliteDatabase::VisitRows(const QString& columns, const QString& table,
                               const std::function<bool(const SqliteRow&)>& visit) {
    auto* visitor = const_cast<Visit*>(&visit);
    const auto define = [&](auto step, auto end) {
        return sqlite3_create_function_v2(handle_.get(), "visit_row", -1, SQLITE_UTF8 | SQLITE_DIRECTONLY, visitor,
                                          nullptr, step, end, nullptr) == SQLITE_OK;
    };
    if (!handle_ || !define(VisitRow, EndVisit))
        return false;
    SqliteStatement select = Prepare(QStringLiteral("SELECT visit_row(%1) FROM \"%2\"").arg(columns, table));
    return select.Step();
}

void SqliteDatabase::FailWhenStopped(std::stop_token stop) {
    stop_ = std::move(stop);
    const auto stopped = [](void* token) { return static_cast<std::stop_token*>(token)->stop_requested() ? 1 : 0; };
    if (handle_)
        sqlite3_progress_handler(handle_.get(), kStepsBetween, stopped, &stop_);
}

qint64 SqliteDatabase::LastInsertId() const {
    return handle_ ? sqlite3_last_insert_rowid(handle_.get()) : 0;
}

int SqliteDatabase::Changes() const {
    return handle_ ? sqlite3_changes(handle_.get()) : 0;
}

QString SqliteDatabase::LastError() const {
    switch (handle_ ? PrimaryCode(handle_.get()) : SQLITE_CANTOPEN) {
    case SQLITE_FULL:
        return QStringLiteral("der Datenträger ist voll");
    case SQLITE_READONLY:
    case SQLITE_PERM:
        return QStringLiteral("die Datei ist schreibgeschützt");
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return QStringLiteral("ein anderes Programm benutzt die Datei");
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return QStringLiteral("die Datei ist beschädigt");
    case SQLITE_CANTOPEN:
        return QStringLiteral("kein Zugriff auf die Datei");
    case SQLITE_IOERR:
        return QStringLiteral("der Datenträger meldet einen Fehler");
    case SQLITE_NOMEM:
        return QStringLiteral("der Arbeitsspeicher reicht nicht");
    case SQLITE_ERROR: // a table or a field is missing
        return QStringLiteral("die Datei hat einen anderen Aufbau");
    default:
        return QStringLiteral("Fehler %1 der Datenbank").arg(sqlite3_extended_errcode(handle_.get()));
    }
}

bool SqliteDatabase::LastErrorIsLocked() const {
    return handle_ && (PrimaryCode(handle_.get()) == SQLITE_BUSY || PrimaryCode(handle_.get()) == SQLITE_LOCKED);
}

bool SqliteDatabase::LastErrorIsReadOnly() const {
    return handle_ && PrimaryCode(handle_.get()) == SQLITE_READONLY;
}

SqliteDatabase::ReadPass::ReadPass(SqliteDatabase& database)
    : database_(database),
      open_(database.handle_ && sqlite3_get_autocommit(database.handle_.get()) != 0 &&
            database.Execute(QStringLiteral("BEGIN"))) {}

SqliteDatabase::ReadPass::~ReadPass() {
    if (open_)
        database_.Execute(QStringLiteral("COMMIT"));
}

SqliteDatabase::Transaction::Transaction(SqliteDatabase& database)
    : database_(database), open_(database.Execute(QStringLiteral("BEGIN IMMEDIATE"))) {}

SqliteDatabase::Transaction::~Transaction() {
    if (open_)
        database_.Execute(QStringLiteral("ROLLBACK"));
}

bool SqliteDatabase::Transaction::Commit() {
    const bool committed = open_ && database_.Execute(QStringLiteral("COMMIT"));
    open_ = open_ && !committed;
    return committed;
}

} // namespace kalvo
