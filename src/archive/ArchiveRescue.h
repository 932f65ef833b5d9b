#pragma once

#include "base/Clock.h"

#include <QString>

/**
 * An archive file that was found damaged while it was in use, though it can be read: it goes on being used, and is
 * handled at the next opening. A note beside the file, "name.beschaedigt", keeps that in mind.
 */
namespace kalvo::ArchiveRescue {

/** Asks for the rescue at the next opening. */
void Note(const QString& path);
bool IsNoted(const QString& path);

/**
 * Puts a new archive with every title that can be read in the place of the damaged one, which is set aside with its
 * log. The file is not open. message: German, for the user. False, with the old file in place, when it cannot be done;
 * then it is tried again at the next opening.
 */
bool Run(const QString& path, const Clock& clock, QString& message);

} // namespace kalvo::ArchiveRescue
