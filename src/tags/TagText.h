#pragma once

#include <QString>

#include <tstring.h>

namespace kalvo::TagText {

/** Blanks and zeros at the end cut off. */
QString FromTag(const TagLib::String& text);
TagLib::String ToTag(const QString& text);

/** Genre texts as names: numbers and "(17)" by the ID3v1 list, "(17)Rock" and "Rock" as "Rock". */
QString GenreName(const QString& text);
/** How many genres have a number. */
int GenreCount();
/** Name of a genre number; empty out of range. */
QString GenreAt(int index);
/** Number of a genre's name, compared without case; 255 when it has none. */
int GenreIndex(const QString& name);

/**
 * Has 8-bit texts of ID3v2 tags read as Windows-1252 (or UTF-8 where they are), as programs really write them. Once per
 * process, before the first file; further calls do nothing.
 */
void UseAnsiTexts();

} // namespace kalvo::TagText
