#pragma once

#include <QString>
#include <QStringList>

namespace kalvo {

/**
 * Writes a dozen short tagged titles of our own into the folder, which is created when missing: MP3 and OGG in turn,
 * 20 to 30 seconds each. Works on all cores. Returns their absolute paths in playing order; the titles that could not
 * be written are left out.
 */
QStringList WriteDemoTitles(const QString& folder);

} // namespace kalvo
