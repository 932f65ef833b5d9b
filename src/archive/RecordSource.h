#pragma once

#include "archive/ArchiveField.h"

#include <QList>

#include <optional>

namespace kalvo {

/** field Like 'pattern' or field = 'value'. */
struct RecordCondition {
    ArchiveField field = ArchiveField::Titel;
    bool like = true;
    QString text;

    bool operator==(const RecordCondition&) const = default;
};

struct RecordOrder {
    ArchiveField field = ArchiveField::Interpret;
    bool descending = false;

    bool operator==(const RecordOrder&) const = default;
};

/** What a record source statement says: titles that meet any of the conditions (all without one), and their order. */
struct RecordSource {
    QList<RecordCondition> conditions;
    QList<RecordOrder> order; ///< a field may be named more than once; ties go by `Nr`

    bool operator==(const RecordSource&) const = default;
};

/**
 * Understands "Select * From Daten [Where condition {or condition}] [Order By field [DESC|ASC] {, field ...}]", words
 * and field names without case, blanks anywhere between words and none needed around a literal. None for anything else.
 */
std::optional<RecordSource> ParseRecordSource(QStringView statement);

/** Understands a criterion, the conditions alone: "condition {or condition}". No order. */
std::optional<RecordSource> ParseCriterion(QStringView criterion);

} // namespace kalvo
