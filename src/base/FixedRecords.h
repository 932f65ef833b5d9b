#pragma once

#include "base/Clock.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <variant>
#include <vector>

class QFile;

namespace kalvo {

/** What a record of a fixed-record file is made of. */
struct RecordLayout {
    /** Stands for a signed little-endian integer of two bytes; every other field is a text of so many bytes. */
    static constexpr int kNumber = 0;

    int length = 0; ///< bytes of a record; what the fields leave over is written as zeros
    std::vector<int> fields;
};

/** The values of one record in the order of its layout's fields. */
using Record = std::vector<std::variant<qint16, QString>>;

/**
 * A file of records of one length, numbered from 1, as older programs read and write it: ANSI texts padded with blanks.
 * Texts are trimmed and zero bytes count as blanks; what does not fit into a field is cut between characters. The file
 * is opened for each operation. One thread at a time.
 *
 * A length that is no multiple of the record's, after a power cut for example: the odd bytes at the end are no record.
 * Before they would be overwritten they are kept beside the file, as "name.rest-JJJJMMTT-hhmmss".
 */
class FixedRecords {
public:
    FixedRecords(QString path, RecordLayout layout, const Clock& clock);

    /** 0 when the file is missing or cannot be read. */
    int Count() const;
    /** Empty when there is no such record. */
    std::optional<Record> Read(int number) const;
    /** Every record in order; empty when the file is missing or cannot be read. */
    std::vector<Record> ReadAll() const;
    /** Control characters in a text: no file of such records. */
    bool IsDamaged() const;

    /**
     * Writes one record in its place with one call, so that a killed program leaves the old or the new one; syncing is
     * left to the system. Records skipped behind the end are empty. The file is created when missing. False when it
     * could not be written or the number is below 1. A value that is missing or of the other kind is written as an
     * empty one.
     */
    bool Write(int number, const Record& record);
    /** Writes behind the last record. */
    bool Append(const Record& record);
    /** Replaces the whole file atomically; an empty list leaves an empty file. False when it could not be read. */
    bool WriteAll(const std::vector<Record>& records);

    /** The bytes of one record, and back. */
    QByteArray Pack(const Record& record) const;
    Record Unpack(const QByteArray& bytes) const;

private:
    bool IsUnreadable() const;
    bool KeepTail(QFile& file) const;

    QString path_;
    RecordLayout layout_;
    const Clock& clock_;
};

} // namespace kalvo
