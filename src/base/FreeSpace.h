#pragma once

#include <QString>

namespace kalvo {

/**
 * Bytes that can still be written in a folder, or in the nearest one above it that exists; -1 when unknown. Asks the
 * file system, which may take long.
 */
qint64 FreeSpaceOf(QString folder);

} // namespace kalvo
