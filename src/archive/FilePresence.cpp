#include "archive/FilePresence.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <string_view>

namespace kalvo::FilePresence {

namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

/** Paths of one folder from which on a listing is worth it. */
constexpr std::size_t kWorthListing = 4;
/** Entries of a folder for each path asked for; a fuller one is not listed to its end. */
constexpr std::size_t kEntriesPerPath = 8;

std::string_view ListedFolder(std::string_view path) {
    return path.substr(0, path.rfind('/') + 1); // npos + 1 is 0
}

bool IsMissing(const std::string& path) {
    struct stat status = {};
    return stat(path.c_str(), &status) != 0;
}

/** Names in a folder that are there for certain, sorted. */
std::vector<std::string> SurelyIn(const std::string& folder, std::size_t mostEntries) {
    std::vector<std::string> names;
    const std::unique_ptr<DIR, CloseFolder> opened(opendir(folder.c_str()));
    for (std::size_t entries = 0; opened && entries < mostEntries; ++entries) {
        const dirent* entry = readdir(opened.get());
        if (entry == nullptr)
            break;
        if (entry->d_type == DT_REG ||
            entry->d_type == DT_DIR) // a link may lead nowhere; some file systems do not tell
            names.emplace_back(entry->d_name);
    }
    std::sort(names.begin(), names.end());
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
        std::vector<std::string> names;
        if (end - begin >= kWorthListing && !folder.empty())
            names = SurelyIn(std::string(folder), kEntriesPerPath * (end - begin));
        for (; begin < end; ++begin) {
            const std::string_view name = std::string_view(paths[begin]).substr(folder.size());
            const bool listed = std::binary_search(names.begin(), names.end(), name, std::less<>());
            missing.push_back(!listed && IsMissing(paths[begin]));
        }
    }
    return missing;
}

} // namespace kalvo::FilePresence
