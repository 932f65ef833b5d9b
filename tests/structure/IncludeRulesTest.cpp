#include "structure/IncludeRules.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

namespace kalvo::test {
namespace {

namespace fs = std::filesystem;

std::set<std::string> WidgetHeaders() {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(KALVO_QTWIDGETS_HEADERS))
        names.insert(entry.path().filename().string());
    return names;
}

TEST(Structure, TheSourcesKeepTheOrderOfTheFolders) {
    const char* root = std::getenv("KALVO_SOURCE");
    ASSERT_TRUE(root);
    const IncludeRules rules(WidgetHeaders());
    const fs::path source = fs::path(root) / "src";
    int files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(source)) {
        const fs::path& path = entry.path();
        if (path.extension() != ".h" && path.extension() != ".cpp")
            continue;
        std::ostringstream text;
        text << std::ifstream(path).rdbuf();
        ++files;
        for (const std::string& violation : rules.Violations({fs::relative(path, source).generic_string(), text.str()}))
            ADD_FAILURE() << violation;
    }
    EXPECT_GT(files, 10);
}

/** What stands behind the #include of each file. */
using Includes = std::vector<std::pair<std::string, std::vector<std::string>>>;

const Includes kAllowed{{"playlists/Playlist.cpp", {"\"base/Settings.h\"", "\"playlists/NextTitle.h\""}},
                        {"archive/ui/Grid.cpp", {"\"archive/ui/Columns.h\"", "\"widgets/Icons.h\"", "<QTableView>"}},
                        {"app/Form1.cpp", {"\"archive/ui/Grid.h\"", "<sndfile.h>"}},
                        {"playback/Player.cpp", {"\"audio/AudioLibrary.h\"", "\"Player.moc\""}},
                        {"archive/Database.cpp", {"<QString>", "<sqlite3.h>"}},
                        {"tags/AudioGenie.cpp", {"<fileref.h>", "<opusfile.h>"}},
                        {"audio/Mp3Decoder.cpp", {"<mpg123.h>"}}};

const Includes kForbidden{
    {"base/Settings.cpp", {"\"app/Form1.h\""}},
    {"audio/Mixer.cpp", {"\"base/Settings.h\"", "<QString>"}},
    {"archive/Archive.cpp",
     {"\"playlists/Playlist.h\"", "\"widgets/Icons.h\"", "\"archive/ui/Grid.h\"", "<QTableView>",
      "<QtWidgets/QTableView>", "<taglib/fileref.h>"}},
    {"playlists/ui/ListView.cpp", {"\"archive/ui/Grid.h\"", "<sqlite3.h>"}},
    {"playback/Player.cpp",
     {"\"AudioLibrary.h\"", "<opusfile.h>", "<SDL2/SDL.h>", "<vorbis/vorbisfile.h>", "<sndfile.h>"}},
    {"app/ui/TagEditor.cpp", {"<id3v2tag.h>"}}};

TEST(IncludeRules, TellStrayIncludesWithTheirLine) {
    const IncludeRules rules(WidgetHeaders());
    for (const auto& [path, includes] : kAllowed) {
        for (const std::string& included : includes)
            EXPECT_TRUE(rules.Violations({path, "#include " + included}).empty()) << path << ' ' << included;
    }
    for (const auto& [path, includes] : kForbidden) {
        for (const std::string& included : includes) {
            const auto violations = rules.Violations({path, "#pragma once\n  #  include " + included});
            ASSERT_EQ(violations.size(), 1U) << path << ' ' << included;
            EXPECT_EQ(violations[0].rfind(path + ":2: ", 0), 0U) << violations[0];
        }
    }
}

TEST(IncludeRules, FilesThatHaveOutgrownTheirSizeAreTold) {
    const auto violations = [](const char* path, int count) {
        std::string text;
        while (count-- > 0)
            text += "int x;\n";
        return IncludeRules({}).Violations({path, text}).size();
    };
    EXPECT_EQ(violations("base/A.h", 200), 0U);
    EXPECT_EQ(violations("base/A.h", 201), 1U);
    EXPECT_EQ(violations("base/A.cpp", 500), 0U);
    EXPECT_EQ(violations("base/A.cpp", 501), 1U);
}

} // namespace
} // namespace kalvo::test
