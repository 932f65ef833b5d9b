#include "archive/SqliteDatabase.h"

#include <QFile>
#include <QUrl>

#include <sqlite3.h>

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

} // namespace

void SqliteStatement::Finalize::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

void SqliteDatabase::CloseHandle::operator()(sqlite3* handle) const {
    sqlite3_close_v2(handle);
}

SqliteStatement::SqliteStatement(sqlite3_stmt* statement) : statement_(statement), failed_(statement == nullptr) {}

SqliteStatement& SqliteStatement::Bind(int parameter, const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    if (!failed_)
        failed_ = sqlite3_bind_text(statement_.get(), parameter, utf8.constData(), static_cast<int>(utf8.size()),
                                    SQLITE_TRANSIENT) != SQLITE_OK;
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
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_.get(), column));
    return {text, text ? static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column)) : 0};
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
    return handle_ ? QString::fromUtf8(sqlite3_errmsg(handle_.get())) : QStringLiteral("database is not open");
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
