#pragma once

#include "base/Clock.h"
#include "base/DataFolder.h"

#include <QStringList>

namespace kalvo {

/**
 * Looks through the small files of the data folder before they are read. One that is no file of its kind any more (a
 * power cut leaves zeros, a broken disk anything) is renamed to "name.defekt-…", and the program goes on with defaults.
 * Missing and empty files are sound. Databases look after themselves.
 * Returns what has to be told, German, one text a file.
 */
QStringList SetDamagedFilesAside(const DataFolder& folder, const Clock& clock);

/** Plain text with at least one section, or nothing but comments. */
bool IsSoundSettings(const QByteArray& bytes);
/** Plain text whose first `numbers` values are numbers or empty; there may be fewer or more. */
bool IsSoundValueFile(const QByteArray& bytes, int numbers);

} // namespace kalvo
