#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <variant>

/**
 * Small files of values in sequential write form: one line, values separated by commas, texts in double quotes, numbers
 * bare ("\kalvo.dll", "\optionen.dll"). Texts are ANSI.
 */
namespace kalvo::ValueFile {

using Value = std::variant<int, QString>;

/**
 * Replaces the file atomically by one line. A quote inside a text is doubled, a line break becomes a blank.
 * False when the file could not be written.
 */
bool Write(const QString& path, const QList<Value>& values);

/**
 * The values as texts, in order, over all lines; empty when the file is missing or unreadable. Broken lines give what
 * can be read: a quote counts as the end of a text only before a comma or a line's end, which ends it in any case.
 */
QStringList Read(const QString& path);
/** The same of a file's content. */
QStringList Parse(QByteArray bytes);

} // namespace kalvo::ValueFile
