#pragma once

#include <QByteArray>
#include <QString>

namespace kalvo {

/**
 * Replaces the file's content whole: written to a temporary beside it, synced, renamed, folder synced. After a crash
 * or a power cut either the old or the new content is there. The folder has to exist; links are followed.
 * False, with the old content in place, when anything fails. Any thread.
 */
bool WriteAtomically(const QString& path, const QByteArray& bytes);

/**
 * Puts a complete file, which lies in the same folder, in the place of another one: synced, renamed, folder synced.
 * False with both in place when anything fails. Any thread.
 */
bool ReplaceFile(const QString& replacement, const QString& path);

} // namespace kalvo
