#pragma once

#include "archive/ArchiveField.h"

#include <QList>
#include <QString>

/**
 * The record sources that the program builds, letter for letter. A text of the user's goes in with every apostrophe
 * replaced by "*", so it can never end the literal that it stands in. Pure functions.
 */
namespace kalvo::ArchiveStatements {

/** "Select * From Daten Order By Interpret, Titel". */
QString Default();
/** The same source as the value list words it for "<alle>". */
QString All();

/** Quick search over the visible columns, in column order. No columns: the default source. */
QString QuickSearch(const QString& text, const QList<ArchiveField>& visible);

/** Header click without a filter. Album goes on by Album, Extra3; every other field by Interpret, Titel. */
QString Sorted(ArchiveField field, bool descending);
/** Header click while `text` filters; empty for Extra2 and Extra3, which are not sorted then. */
QString SortedSearch(const QString& text, const QList<ArchiveField>& visible, ArchiveField field, bool descending);

/** A value of the category tree: equality, Like where the value holds an apostrophe. */
QString TreeValue(ArchiveField field, const QString& value);
/** A value of the list under a column header. */
QString ColumnValue(ArchiveField field, const QString& value);

/** The import's test whether a path is in the archive already. */
QString DuplicateCheck(const QString& path);

/** Fields of the search dialog in the order in which their boxes are tested. */
constexpr std::array<ArchiveField, 6> kSearchFields = {ArchiveField::Interpret, ArchiveField::Titel,
                                                       ArchiveField::Album,     ArchiveField::Bewertung,
                                                       ArchiveField::Stil,      ArchiveField::Extra1};
/** The search dialog's; empty for an empty text, which searches nothing. field: one of kSearchFields. */
QString SearchField(const QString& text, ArchiveField field);

/** What the category lists are built from. */
QString Categories();

/** What the duplicate finder walks, and its groups of one key. */
QString DuplicateCandidates();
QString FileNameDuplicates(const QString& key);
QString TitleDuplicates(const QString& key);

/** The automatic DJ's draw for a value. */
QString DrawnTitles(ArchiveField field, const QString& value);

/** The criterion by which a played title is found: "Pfad Like '...'", no record source of its own. */
QString PathCriterion(const QString& path);

} // namespace kalvo::ArchiveStatements
