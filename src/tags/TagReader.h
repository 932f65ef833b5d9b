#pragma once

#include "tags/TagData.h"

namespace kalvo {

/**
 * Reads tags and technical data of a file; the format is told by its content. Everything is empty when the file cannot
 * be read as sound. Time and memory are bounded whatever the file holds. Any thread.
 */
TagData ReadTags(const QString& path);

} // namespace kalvo
