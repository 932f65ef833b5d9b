#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

/** Tables for spreadsheets: fields separated by ";", UTF-8. Any thread. */
namespace kalvo::CsvText {

/** One line without its end. Quotes stand where a field needs them; line breaks in a field become blanks. */
QString Line(const QStringList& fields);

/** The fields of one line; what Line() wrote comes back, anything else as well as it goes. */
QStringList Fields(const QString& line);

/** A whole file: byte order mark, by which spreadsheets tell UTF-8, and lines ended by CR LF. */
QByteArray Document(const QList<QStringList>& rows);

} // namespace kalvo::CsvText
