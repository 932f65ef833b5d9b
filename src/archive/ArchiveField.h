#pragma once

#include "tags/TitleRecord.h"

#include <array>
#include <optional>

namespace kalvo {

/** The fields of table "Daten" in creation order. */
enum class ArchiveField : quint8 {
    Nr,
    Titel,
    Interpret,
    Album,
    Bewertung,
    Stil,
    Zeit,
    Jahr,
    Pfad,
    Extra1,
    Extra2,
    Extra3,
    Extra4
};

constexpr int kFieldCount = 13;
constexpr int kMaximumFieldLength = 200;
constexpr int kMaximumCommentLength = 50;

/** The text fields in creation order: the grid's columns by default. */
constexpr std::array<ArchiveField, 12> kTextFields = {
    ArchiveField::Titel,  ArchiveField::Interpret, ArchiveField::Album,  ArchiveField::Bewertung,
    ArchiveField::Stil,   ArchiveField::Zeit,      ArchiveField::Jahr,   ArchiveField::Pfad,
    ArchiveField::Extra1, ArchiveField::Extra2,    ArchiveField::Extra3, ArchiveField::Extra4};

/** Name in the database, "Extra1". */
QString FieldName(ArchiveField field);
/** Caption of its column: "Kommentar", "Zuletzt Gespielt", "Track", "BPM" for Extra1 to Extra4, else the name. */
QString FieldCaption(ArchiveField field);
/** Field of a name or of a plain caption, without case; none for anything else. */
std::optional<ArchiveField> FieldOfName(QStringView name);
std::optional<ArchiveField> FieldOfCaption(QStringView caption);

/** The field's text in a record; `Nr` as a decimal number. */
QString FieldText(const TitleRecord& record, ArchiveField field);
/** Cuts a text to so many characters, but none into halves. */
void CutText(QString& text, qsizetype characters);

/** The record's place for a text field; not for `Nr`. */
QString& FieldPlace(TitleRecord& record, ArchiveField field);
const QString& FieldPlace(const TitleRecord& record, ArchiveField field);

} // namespace kalvo
