#pragma once

#include <QString>

/** What the archive's windows say about numbers of titles. Pure functions; a negative number counts as none. */
namespace kalvo::ArchiveTexts {

/** The main window's count, "17 Titel"; "0 Titel" when the record source is empty. */
QString Count(qint64 records);
/** The count right after the question whether to delete everything: "0 Titel", also where nothing was deleted. */
QString CountAfterDeleteAll();
/** "17 Titel gefunden". */
QString Found(qint64 records);
/** "Anzahl Titel im Musikarchiv: 17", or "Keine Titel im Musikarchiv vorhanden". */
QString Properties(qint64 records);

} // namespace kalvo::ArchiveTexts
