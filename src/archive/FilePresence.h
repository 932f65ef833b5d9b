#pragma once

#include <string>
#include <vector>

namespace kalvo::FilePresence {

/**
 * For each path whether there is nothing at it: neither a file nor a folder, or what a link points to is gone. Paths of
 * one folder that follow one another are answered by a listing of the folder, which takes a fraction of the time of a
 * question per file. UTF-8. Any thread; may wait for a disk.
 */
std::vector<bool> Missing(const std::vector<std::string>& paths);

} // namespace kalvo::FilePresence
