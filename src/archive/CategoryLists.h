#pragma once

#include "archive/ArchiveField.h"
#include "base/DataFolder.h"

#include <QStringList>

/**
 * The five category files in the data folder: the distinct values of a field, joined by line feeds into one line. They
 * are a cache that changes only when it is built anew; see CategoryBuild.
 */
namespace kalvo::CategoryLists {

/** In the order of the tree. */
constexpr std::array<ArchiveField, 5> kFields = {ArchiveField::Interpret, ArchiveField::Album, ArchiveField::Stil,
                                                 ArchiveField::Bewertung, ArchiveField::Extra1};

/** "Interpret", "Album", "Stil", "Bewertung", "Kommentar": the category, and the name of its file. */
QString Name(ArchiveField field);
/** Field of such a name, letter for letter; none for anything else. */
std::optional<ArchiveField> FieldOf(QStringView name);

/** The file's values as they stand, joined by line feeds; none when there is no such file or it cannot be read. */
std::optional<QString> ReadJoined(const DataFolder& folder, ArchiveField field);
/** The same, each by itself, empty ones included. */
std::optional<QStringList> Read(const DataFolder& folder, ArchiveField field);
/** Replaces the file atomically; false, with the old one in place, when it cannot be written. */
bool Write(const DataFolder& folder, ArchiveField field, const QStringList& values);

/** First entry of the list under a column's head: every title. */
QString AllEntry();
/** The list's entries: "<alle>", then the values, trimmed, without empty ones. */
QStringList Entries(const QStringList& values);
/** The record source of a chosen entry. */
QString Statement(ArchiveField field, const QString& entry);

} // namespace kalvo::CategoryLists
