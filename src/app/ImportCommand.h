#pragma once

#include "base/DataFolder.h"

#include <QString>
#include <QTextStream>

namespace kalvo {

/**
 * Imports a folder into the archive without a window. Prints what was passed over, with the reason, and the closing
 * report. Returns the exit code: 0 when every file is in the archive now, 1 when some were passed over, 2 when nothing
 * could be done.
 */
int RunImportCommand(const DataFolder& dataFolder, const QString& musicFolder, QTextStream& report);

} // namespace kalvo
