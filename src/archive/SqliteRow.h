#pragma once

#include <QtGlobal>

#include <string_view>

struct sqlite3_value;

namespace kalvo {

/** A row while SqliteDatabase::VisitRows() hands it out; its columns count from 0. */
class SqliteRow {
public:
    explicit SqliteRow(sqlite3_value** values) : values_(values) {}

    qint64 Number(int column) const;
    /** Valid until the visit ends. */
    std::string_view Utf8(int column) const;

private:
    sqlite3_value** values_;
};

} // namespace kalvo
