#pragma once

#include "tags/TagChange.h"

#include <optional>

namespace kalvo {

/**
 * Writes changes of a file's tags. The new file is made beside the old one and takes its place by a rename when it is
 * complete, synced and its sound compared: whatever fails, and when the program is killed, the old file is whole; a
 * file that is being played plays on. Parts of the tags that are not changed keep their content. Links are followed,
 * permissions are kept. Any thread.
 *
 * data: what was read of the file. id3v1: the new block, none to leave it alone. Empty when done, else the reason in
 * German.
 */
QString WriteTags(const QString& path, const TagData& data, const QList<TagChange>& changes,
                  const std::optional<Id3v1Block>& id3v1);

} // namespace kalvo
