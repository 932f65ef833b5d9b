#pragma once

#include "base/Clock.h"

#include <QStringList>

namespace kalvo {

/**
 * Renames a damaged file to "name.defekt-JJJJMMTT-hhmmss", so that nothing of it is lost; "-2", "-3", … follow where
 * the name is taken. Files beside it that end in one of `companions` ("-wal") move along under the new name.
 * Returns the new path, empty when the file could not be renamed. A companion that stays behind counts as a failure:
 * then the file keeps its name too.
 */
QString SetAside(const QString& path, const Clock& clock, const QStringList& companions = {});

} // namespace kalvo
