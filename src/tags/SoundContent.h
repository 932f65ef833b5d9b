#pragma once

#include <QByteArray>
#include <QString>

namespace kalvo::SoundContent {

/**
 * Tells sounds apart and finds them again, whatever their tags and names: a hash over the beginning, the middle and the
 * end of the sound and its length. Empty when the file cannot be read. Reads at most some hundred kilobytes. Any
 * thread.
 */
QByteArray Hash(const QString& path);

} // namespace kalvo::SoundContent
