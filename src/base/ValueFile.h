#pragma once

#include <QByteArray>
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

/** The line, its end included. A quote inside a text is doubled; line breaks and control characters become blanks. */
QByteArray Bytes(const QList<Value>& values);

/**
 * The values as texts, in order, over all lines. Broken lines give what can be read: a quote counts as the end of a
 * text only before a comma or a line's end, which ends it in any case.
 */
QStringList Parse(const QByteArray& bytes);

/** Replaces the file atomically by one line; false when it could not be written. */
bool Write(const QString& path, const QList<Value>& values);

/** The file's values; none when it is missing, unreadable or damaged, see PlainText. */
QStringList Read(const QString& path);

} // namespace kalvo::ValueFile
