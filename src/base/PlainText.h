#pragma once

#include <QByteArray>
#include <QString>

/** What tells a settings or value file from one that a disk fault or a power cut has left. Any thread. */
namespace kalvo::PlainText {

/** Control characters other than tab, line ends, form feed and the old end-of-file mark (0x1A) are in no text. */
bool IsText(const QByteArray& bytes);

/** Line breaks, and control characters that would make a file look damaged, become blanks. */
QString WithoutControls(QString text);

} // namespace kalvo::PlainText
