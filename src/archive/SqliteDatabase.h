#pragma once

#include "archive/SqliteRow.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>
#include <stop_token>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace kalvo {

/**
 * A prepared statement; lives no longer than its database. Failures are result values, never exceptions: a statement
 * that could not be prepared or stepped says so by Failed() and does nothing from then on.
 */
class SqliteStatement {
public:
    /** Takes the statement over; null stands for one that could not be prepared. */
    explicit SqliteStatement(sqlite3_stmt* statement = nullptr);

    /** Parameters count from 1. A text is stored as UTF-8, a null text as empty text. */
    SqliteStatement& Bind(int parameter, const QString& text);
    SqliteStatement& Bind(int parameter, qint64 number);

    /** True while there is a row; false at the end, as often as asked, and on failure. */
    bool Step();
    /** Steps once and resets: for statements without rows. False on failure. */
    bool Run();
    /** Ready to run again with its parameters as they are. */
    void Reset();
    bool Failed() const { return failed_; }

    /** Columns of the current row count from 0. */
    QString Text(int column) const;
    qint64 Number(int column) const;
    /** Valid until the next step. */
    std::string_view Utf8(int column) const;

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };
    std::vector<QByteArray> texts_; ///< by parameter; the engine reads them where they are
    std::unique_ptr<sqlite3_stmt, Finalize> statement_;
    bool failed_ = false;
    bool ended_ = false; ///< stepping on would start anew
};

/**
 * One connection to a database file. Used by one thread at a time. Failures are result values with the reason in
 * LastError(); nothing throws.
 */
class SqliteDatabase {
public:
    enum class Mode { Create, ReadWrite, ReadOnly };
    enum class Outcome {
        Opened,
        Locked,      ///< another program holds the file
        NotDatabase, ///< the file's content is no database, or a broken one
        Failed       ///< missing, not permitted, disk error
    };

    SqliteDatabase() = default;

    /** Opens the file and reads its schema once, so that a foreign file shows at once. Closes an open one first. */
    Outcome Open(const QString& path, Mode mode, int busyMilliseconds = 5000);
    void Close();
    bool IsOpen() const { return handle_ != nullptr; }

    /** Runs one or several statements without rows. */
    bool Execute(const QString& sql);
    SqliteStatement Prepare(const QString& sql);
    /**
     * Calls visit(row) for each row of the table until it returns false; for whole tables, in half the time of stepping
     * through them. columns: their names with commas. False when it ended early or failed.
     */
    bool VisitRows(const QString& columns, const QString& table, const std::function<bool(const SqliteRow&)>& visit);
    /** Statements fail soon after a stop is requested, by whatever thread. */
    void FailWhenStopped(std::stop_token stop);
    qint64 LastInsertId() const;
    /** Rows changed by the last statement. */
    int Changes() const;
    /** Reason of the last failure, in German, to stand behind a colon. */
    QString LastError() const;
    /** Whether the last failure was another program's lock, respectively missing write permission. */
    bool LastErrorIsLocked() const;
    bool LastErrorIsReadOnly() const;

    /** Rolls back when it ends without a successful Commit(). One at a time. */
    class Transaction {
    public:
        explicit Transaction(SqliteDatabase& database);
        ~Transaction();
        Transaction(const Transaction&) = delete;
        Transaction& operator=(const Transaction&) = delete;

        /** Whether it could begin. */
        bool IsOpen() const { return open_; }
        bool Commit();

    private:
        SqliteDatabase& database_;
        bool open_;
    };

    /** Everything read while it lives is of one moment; begun and ended once instead of with every statement. */
    class ReadPass {
    public:
        /** Within a transaction it does nothing: that is such a pass already. */
        explicit ReadPass(SqliteDatabase& database);
        ~ReadPass();
        ReadPass(const ReadPass&) = delete;
        ReadPass& operator=(const ReadPass&) = delete;

    private:
        SqliteDatabase& database_;
        bool open_;
    };

private:
    struct CloseHandle {
        void operator()(sqlite3* handle) const;
    };
    int OpenNamed(const QByteArray& name, int flags, int busyMilliseconds);

    std::stop_token stop_;
    std::unique_ptr<sqlite3, CloseHandle> handle_;
};

} // namespace kalvo
