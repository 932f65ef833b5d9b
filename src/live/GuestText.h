#pragma once

#include <QByteArray>
#include <QString>

/** Texts on their way to a guest's telephone and back. Any thread. */
namespace kalvo::GuestText {

/** UTF-8 that is only text in HTML, within elements and within quoted attributes. */
QByteArray Escaped(const QString& text);

/** One line without control and direction characters, blanks trimmed and joined, cut to so many characters. */
QString Cleaned(const QString& text, int characters);

} // namespace kalvo::GuestText
