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

std::string Content(const fs::path& path) {
    std::ifstream file(path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::vector<SourceFile> ProgramSources() {
    const char* root = std::getenv("KALVO_SOURCE");
    std::vector<SourceFile> files;
    if (!root)
        return files;
    const fs::path source = fs::path(root) / "src";
    for (const auto& entry : fs::recursive_directory_iterator(source)) {
        const fs::path& path = entry.path();
        if (path.extension() == ".h" || path.extension() == ".cpp")
            files.push_back({fs::relative(path, source).generic_string(), Content(path)});
    }
    return files;
}

TEST(Structure, TheSourcesKeepTheOrderOfTheFolders) {
    const IncludeRules rules(WidgetHeaders());
    const std::vector<SourceFile> files = ProgramSources();
    ASSERT_GT(files.size(), 10U);
    for (const SourceFile& file : files) {
        for (const std::string& violation : rules.Violations(file))
            ADD_FAILURE() << violation;
    }
}

struct IncludeCase {
    const char* path;
    const char* line;
    bool allowed;
};

class IncludeRulesTest : public ::testing::TestWithParam<IncludeCase> {};

TEST_P(IncludeRulesTest, TellsStrayIncludes) {
    const IncludeRules rules(WidgetHeaders());
    const IncludeCase& c = GetParam();
    const auto violations = rules.Violations({c.path, std::string("#pragma once\n") + c.line + "\n"});
    ASSERT_EQ(violations.size(), c.allowed ? 0U : 1U) << c.path << ' ' << c.line;
    for (const std::string& violation : violations)
        EXPECT_EQ(violation.rfind(std::string(c.path) + ":2: ", 0), 0U) << violation;
}

INSTANTIATE_TEST_SUITE_P(Includes, IncludeRulesTest,
                         ::testing::Values(
                             // own folders
                             IncludeCase{"playlists/Playlist.cpp", "#include \"base/Settings.h\"", true},
                             IncludeCase{"playlists/Playlist.cpp", "#include \"playlists/NextTitle.h\"", true},
                             IncludeCase{"archive/Archive.cpp", "#include \"playlists/Playlist.h\"", false},
                             IncludeCase{"base/Settings.cpp", "  #  include \"app/Form1.h\"", false},
                             IncludeCase{"archive/ui/Grid.cpp", "#include \"archive/ui/Columns.h\"", true},
                             IncludeCase{"archive/ui/Grid.cpp", "#include \"widgets/Icons.h\"", true},
                             IncludeCase{"archive/Archive.cpp", "#include \"widgets/Icons.h\"", false},
                             IncludeCase{"archive/Archive.cpp", "#include \"archive/ui/Grid.h\"", false},
                             IncludeCase{"playlists/ui/ListView.cpp", "#include \"archive/ui/Grid.h\"", false},
                             IncludeCase{"app/Form1.cpp", "#include \"archive/ui/Grid.h\"", true},
                             IncludeCase{"audio/Mixer.cpp", "#include \"base/Settings.h\"", false},
                             IncludeCase{"playback/Player.cpp", "#include \"audio/AudioLibrary.h\"", true},
                             IncludeCase{"playback/Player.cpp", "#include \"AudioLibrary.h\"", false},
                             IncludeCase{"playback/Player.cpp", "#include \"Player.moc\"", true},
                             // Qt
                             IncludeCase{"archive/Archive.cpp", "#include <QString>", true},
                             IncludeCase{"archive/Archive.cpp", "#include <QTableView>", false},
                             IncludeCase{"archive/Archive.cpp", "#include <QtWidgets/QTableView>", false},
                             IncludeCase{"archive/ui/Grid.cpp", "#include <QTableView>", true},
                             IncludeCase{"audio/Mixer.cpp", "#include <QString>", false},
                             // libraries with a folder of their own
                             IncludeCase{"tags/AudioGenie.cpp", "#include <fileref.h>", true},
                             IncludeCase{"tags/AudioGenie.cpp", "#include <opusfile.h>", true},
                             IncludeCase{"archive/Import.cpp", "#include <taglib/fileref.h>", false},
                             IncludeCase{"playback/Player.cpp", "#include <opusfile.h>", false},
                             IncludeCase{"app/ui/TagEditor.cpp", "#include <id3v2tag.h>", false},
                             IncludeCase{"archive/Database.cpp", "#include <sqlite3.h>", true},
                             IncludeCase{"playlists/PlaylistFile.cpp", "#include <sqlite3.h>", false},
                             IncludeCase{"playback/Player.cpp", "#include <SDL2/SDL.h>", false},
                             IncludeCase{"playback/Player.cpp", "#include <vorbis/vorbisfile.h>", false},
                             IncludeCase{"audio/Mp3Decoder.cpp", "#include <mpg123.h>", true},
                             IncludeCase{"app/MixFile.cpp", "#include <sndfile.h>", true},
                             IncludeCase{"playback/Player.cpp", "#include <sndfile.h>", false}));

TEST(IncludeRules, FilesThatHaveOutgrownTheirSizeAreTold) {
    const IncludeRules rules({});
    const std::string twoHundred = [] {
        std::string text;
        for (int i = 0; i < 200; ++i)
            text += "int x;\n";
        return text;
    }();
    EXPECT_TRUE(rules.Violations({"base/A.h", twoHundred}).empty());
    EXPECT_EQ(rules.Violations({"base/A.h", twoHundred + "int y;\n"}).size(), 1U);
    EXPECT_TRUE(rules.Violations({"base/A.cpp", twoHundred + "int y;\n"}).empty());
    EXPECT_EQ(rules.Violations({"base/A.cpp", twoHundred + twoHundred + twoHundred}).size(), 1U);
}

} // namespace
} // namespace kalvo::test
