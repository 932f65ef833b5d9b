#include "support/ProjectTexts.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <regex>
#include <string_view>
#include <vector>

namespace kalvo::test {
namespace {

/** From above to below. */
constexpr std::array<std::string_view, 9> kFolders{"app",  "live",  "playback", "playlists", "archive",
                                                   "tags", "audio", "widgets",  "base"};

struct Place {
    explicit Place(const std::string& path)
        : folder(path.substr(0, path.find('/'))),
          isUi(path.starts_with(folder + "/ui/")),
          rank(kFolders.end() - std::find(kFolders.begin(), kFolders.end(), folder) - 1),
          showsWidgets(isUi || folder == "widgets" || folder == "app") {}

    std::string folder;
    bool isUi;
    std::ptrdiff_t rank; ///< from below to above; -1 for a folder that is none of ours
    bool showsWidgets;
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

std::string OwnInclude(const std::string& path, const std::string& included) {
    const Place from(path);
    const Place to(included);
    if (to.rank < 0)
        return included.ends_with(".moc") ? "" : "is not named from src on";
    if (from.folder == "app")
        return "";
    if (to.rank > from.rank)
        return "lies above";
    if (from.folder == "audio" && to.folder != "audio")
        return "is no part of the audio library";
    if (to.isUi && !(from.isUi && from.folder == to.folder))
        return "belongs to the windows of " + to.folder;
    if (to.folder == "widgets" && !from.showsWidgets)
        return "is for windows only";
    return "";
}

/** Names of the headers that belong to Qt's widgets, e.g. "QLabel". */
const std::set<std::string>& WidgetHeaders() {
    static const std::set<std::string> kNames = [] {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(KALVO_QTWIDGETS_HEADERS))
            names.insert(entry.path().filename().string());
        return names;
    }();
    return kNames;
}

std::string ForeignInclude(const std::string& path, const std::string& included) {
    const Place from(path);
    if (from.folder == "audio" && included.starts_with('Q'))
        return "is Qt in the audio library";
    if (!from.showsWidgets && WidgetHeaders().contains(included.substr(included.rfind('/') + 1)))
        return "is a widget in logic";
    for (const Wrapped& library : kLibraries) {
        if (std::regex_match(included, std::regex(library.headers)) && !library.folders.contains(from.folder))
            return "belongs to " + *library.folders.begin();
    }
    return "";
}

/**
 * What the order of the folders forbids in a file, whose path is relative to src: includes that go upwards or into
 * another window's folder, widgets in logic, foreign libraries outside the one folder that wraps them; and files that
 * have outgrown their size. One line each.
 */
std::vector<std::string> Violations(const std::string& path, const std::string& text) {
    static const std::regex include(R"(\s*#\s*include\s*([<"])([^>"]+)[>"].*)");
    std::vector<std::string> found;
    std::istringstream lines(text);
    std::size_t count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
        std::smatch match;
        if (!std::regex_match(line, match, include))
            continue;
        const std::string name = match[2];
        const std::string reason = match[1] == "<" ? ForeignInclude(path, name) : OwnInclude(path, name);
        if (!reason.empty())
            found.push_back(path + ':' + std::to_string(count + 1) + ": " + name + ' ' + reason);
    }
    const std::size_t limit = path.ends_with(".h") ? 200 : 500;
    if (count > limit)
        found.push_back(path + ": " + std::to_string(count) + " lines, more than " + std::to_string(limit));
    return found;
}

TEST(Structure, TheSourcesKeepTheOrderOfTheFolders) {
    const auto sources = TextsIn("src", {".cpp", ".h"});
    for (const auto& [path, text] : sources) {
        for (const std::string& violation : Violations(path, text))
            ADD_FAILURE() << violation;
    }
    EXPECT_GT(sources.size(), 10U);
}

/** What must not stand behind the #include of each file; what may is in the sources. */
const std::vector<std::pair<std::string, std::vector<std::string>>> kForbidden{
    {"base/Settings.cpp", {"\"app/Form1.h\""}},
    {"audio/Mixer.cpp", {"\"base/Settings.h\"", "<QString>"}},
    {"archive/Archive.cpp",
     {"\"playlists/Playlist.h\"", "\"widgets/Icons.h\"", "\"archive/ui/Grid.h\"", "<QtWidgets/QTableView>"}},
    {"playlists/ui/ListView.cpp", {"\"archive/ui/Grid.h\"", "<sqlite3.h>"}},
    {"playback/Player.cpp", {"\"AudioLibrary.h\"", "<SDL2/SDL.h>", "<vorbis/vorbisfile.h>"}},
    {"app/ui/TagEditor.cpp", {"<id3v2tag.h>"}}};

TEST(IncludeRules, TellStrayIncludesWithTheirLine) {
    for (const auto& [path, includes] : kForbidden) {
        for (const std::string& included : includes) {
            const auto violations = Violations(path, "#pragma once\n  #  include " + included);
            ASSERT_EQ(violations.size(), 1U) << path << ' ' << included;
            EXPECT_TRUE(violations[0].starts_with(path + ":2: ")) << violations[0];
        }
    }
}

} // namespace
} // namespace kalvo::test
