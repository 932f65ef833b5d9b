#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>

namespace kalvo::test {

/** The texts below a folder of the project whose names end so, by their path from there. */
inline std::map<std::string, std::string> TextsIn(const char* folder, const std::set<std::string>& endings) {
    const std::filesystem::path root = std::filesystem::path(std::getenv("KALVO_SOURCE")) / folder;
    std::map<std::string, std::string> texts;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
        if (!endings.contains(entry.path().extension()))
            continue;
        std::ostringstream text;
        text << std::ifstream(entry.path()).rdbuf();
        texts[entry.path().lexically_relative(root).generic_string()] = text.str();
    }
    return texts;
}

} // namespace kalvo::test
