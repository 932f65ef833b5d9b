#pragma once

#include <QByteArray>
#include <QString>

/**
 * Texts in settings, record and M3U files: Windows-1252, and UTF-8 where that cannot hold them.
 * Any thread. Decode(Encode(text)) gives the text back as long as it has no lone surrogates.
 */
namespace kalvo::AnsiText {

/** Windows-1252; UTF-8 when a character is not in it or when the bytes would be taken for UTF-8 on reading. */
QByteArray Encode(const QString& text);

/** Whether the bytes are valid UTF-8 throughout with at least one multi-byte character. */
bool IsUtf8(const QByteArray& bytes);

/** Valid UTF-8 with at least one multi-byte character is read as such, everything else as Windows-1252. */
QString Decode(const QByteArray& bytes);

/** The longest beginning of the text whose encoded form has at most `width` bytes; never half a character. */
QByteArray EncodeCut(const QString& text, int width);

} // namespace kalvo::AnsiText
