#include "archive/FilePresence.h"

#include <cstddef>
#include <filesystem>
#include <string_view>
#include <unordered_set>

namespace kalvo::FilePresence {

namespace {

namespace fs = std::filesystem;

/** Paths of one folder from which on a listing is worth it. */
constexpr std::size_t kWorthListing = 4;
/** Entries of a folder for each path asked for; a fuller one is not listed to its end. */
constexpr std::size_t kEntriesPerPath = 8;

std::string_view ListedFolder(std::string_view path) {
    return path.substr(0, path.rfind('/') + 1); // npos + 1 is 0
}

bool IsMissing(const std::string& path) {
    std::error_code error;
    return !fs::exists(path, error);
}

/** Names in a folder that are there for certain. */
std::unordered_set<std::string> SurelyIn(std::string_view folder, std::size_t mostEntries) {
    std::unordered_set<std::string> names;
    std::error_code error;
    std::size_t entries = 0;
    for (fs::directory_iterator entry(fs::path(folder), error);
         !error && entry != fs::directory_iterator() && entries < mostEntries; entry.increment(error), ++entries) {
        std::error_code unknown;
        if (entry->is_regular_file(unknown) || entry->is_directory(unknown)) // told by the listing but for links
            names.insert(entry->path().filename().string());
    }
    return names;
}

} // namespace

std::vector<bool> Missing(const std::vector<std::string>& paths) {
    std::vector<bool> missing;
    missing.reserve(paths.size());
    for (std::size_t begin = 0; begin < paths.size();) {
        const std::string_view folder = ListedFolder(paths[begin]);
        std::size_t end = begin + 1;
        while (end < paths.size() && ListedFolder(paths[end]) == folder)
            ++end;
        std::unordered_set<std::string> names;
        if (end - begin >= kWorthListing && !folder.empty())
            names = SurelyIn(folder, kEntriesPerPath * (end - begin));
        for (; begin < end; ++begin)
            missing.push_back(names.count(paths[begin].substr(folder.size())) == 0 && IsMissing(paths[begin]));
    }
    return missing;
}

} // namespace kalvo::FilePresence
