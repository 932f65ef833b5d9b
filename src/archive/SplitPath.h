#pragma once

#include <string_view>

namespace kalvo {

/** A path parted into its folder, which keeps its closing separator, and the name of the file. */
struct SplitPath {
    explicit SplitPath(std::string_view path) {
        std::size_t length = path.size();
        while (length > 0 && path[length - 1] != '/' && path[length - 1] != '\\')
            --length;
        folder = path.substr(0, length);
        name = path.substr(length);
    }

    std::string_view folder;
    std::string_view name;
};

} // namespace kalvo
