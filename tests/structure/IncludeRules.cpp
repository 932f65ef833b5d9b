#include "structure/IncludeRules.h"

#include <algorithm>
#include <array>
#include <regex>
#include <sstream>
#include <string_view>

namespace kalvo::test {

namespace {

constexpr std::size_t kHeaderLines = 200;
constexpr std::size_t kSourceLines = 500;

/** From below to above. */
constexpr std::array<std::string_view, 9> kFolders{"base",      "widgets",  "audio", "tags", "archive",
                                                   "playlists", "playback", "live",  "app"};

struct Place {
    std::string folder;
    bool isUi = false;

    explicit Place(const std::string& path)
        : folder(path.substr(0, path.find('/'))), isUi(path.rfind(folder + "/ui/", 0) == 0) {}

    /** Position in the order; -1 for a folder that is none of ours. */
    std::ptrdiff_t Rank() const {
        const auto* found = std::find(kFolders.begin(), kFolders.end(), folder);
        return found == kFolders.end() ? -1 : found - kFolders.begin();
    }
    bool ShowsWidgets() const { return isUi || folder == "widgets" || folder == "app"; }
};

/** A foreign library and the folders that may include it. */
struct Wrapped {
    const char* headers;
    std::set<std::string> folders;
};

const std::vector<Wrapped> kLibraries{
    {R"(taglib/.*|(fileref|tag|tpropertymap|id3v[12]\w*|mpeg\w+|\w+frame|vorbisfile|xiphcomment)\.h)", {"tags"}},
    {R"(sqlite3\.h)", {"archive"}},
    {R"((SDL2/)?SDL.*|(f?mpg123|samplerate)\.h|(vorbis|opus|ogg)/.*)", {"audio"}},
    {R"(opusfile\.h)", {"audio", "tags"}}, // a name of the decoder's and of the tag library's
    {R"(sndfile\.hh?)", {"audio", "app"}},
    {R"(sodium.*\.h)", {"app"}},
    {R"((httplib|qrencode)\.h)", {"live"}},
};

bool HasEnding(const std::string& text, const std::string& end) {
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

} // namespace

std::string IncludeRules::OwnInclude(const SourceFile& file, const std::string& included) const {
    const Place from(file.path);
    const Place to(included);
    if (to.Rank() < 0)
        return HasEnding(included, ".moc") ? "" : "is not named from src on";
    if (from.folder == "app")
        return "";
    if (to.Rank() > from.Rank())
        return "lies above";
    if (from.folder == "audio" && to.folder != "audio")
        return "is no part of the audio library";
    if (to.isUi && !(from.isUi && from.folder == to.folder))
        return "belongs to the windows of " + to.folder;
    if (to.folder == "widgets" && !from.ShowsWidgets())
        return "is for windows only";
    return "";
}

std::string IncludeRules::ForeignInclude(const SourceFile& file, const std::string& included) const {
    const Place from(file.path);
    if (from.folder == "audio" && included.size() > 1 && included[0] == 'Q')
        return "is Qt in the audio library";
    if (!from.ShowsWidgets() && widgetHeaders_.count(included.substr(included.rfind('/') + 1)) > 0)
        return "is a widget in logic";
    for (const Wrapped& library : kLibraries) {
        if (std::regex_match(included, std::regex(library.headers)) && library.folders.count(from.folder) == 0)
            return "belongs to " + *library.folders.begin();
    }
    return "";
}

std::vector<std::string> IncludeRules::Violations(const SourceFile& file) const {
    static const std::regex include(R"(\s*#\s*include\s*([<"])([^>"]+)[>"].*)");
    std::vector<std::string> found;
    std::istringstream lines(file.text);
    std::size_t count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
        std::smatch match;
        if (!std::regex_match(line, match, include))
            continue;
        const std::string name = match[2];
        const std::string reason = match[1] == "<" ? ForeignInclude(file, name) : OwnInclude(file, name);
        if (!reason.empty())
            found.push_back(file.path + ':' + std::to_string(count + 1) + ": " + name + ' ' + reason);
    }
    const std::size_t limit = HasEnding(file.path, ".h") ? kHeaderLines : kSourceLines;
    if (count > limit)
        found.push_back(file.path + ": " + std::to_string(count) + " lines, more than " + std::to_string(limit));
    return found;
}

} // namespace kalvo::test
