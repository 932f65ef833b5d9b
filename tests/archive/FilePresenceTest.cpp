#include "archive/FilePresence.h"
#include "archive/MissingFiles.h"
#include "archive/ui/ArchiveDesk.h"

#include <QFile>

#include <filesystem>

namespace kalvo::test {
namespace {

/** A folder that is listed answers as single questions do: links, folders, what is gone, what lies among many others.
 */
TEST(FilePresence, AListedFolderAnswersAsEachFileAskedForAlone) {
    const TestFolder folder;
    for (const QString& name : {u"a.mp3"_s, u"Ä 'b'.ogg"_s, u"c"_s, u"voll/1"_s})
        folder.Write(name, {});
    for (int other = 0; other < 200; ++other)
        folder.Write(u"voll/x%1"_s.arg(other), {});
    QFile::link(folder.Path(u"a.mp3"_s), folder.Path(u"link"_s));
    QFile::link(folder.Path(u"nichts"_s), folder.Path(u"tot"_s));

    std::vector<std::string> paths;
    for (const QString& name : {u"a.mp3"_s, u"A.mp3"_s, u"Ä 'b'.ogg"_s, u"c"_s, u"link"_s, u"tot"_s, u"weg"_s,
                                u"voll"_s, u"voll/1"_s, u"voll/2"_s, u"voll/x7"_s, u"voll/x199"_s, u"voll/weg"_s,
                                u"fort/1"_s, u"fort/2"_s, u"fort/3"_s, u"fort/4"_s, u"a.mp3"_s})
        paths.push_back(folder.Path(name).toStdString());
    paths.emplace_back("ohne Ordner");
    paths.emplace_back();

    const std::vector<bool> missing = FilePresence::Missing(paths);
    ASSERT_EQ(missing.size(), paths.size());
    int there = 0;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        EXPECT_EQ(missing[i], !std::filesystem::exists(paths[i])) << paths[i];
        there += missing[i] ? 0 : 1;
    }
    EXPECT_EQ(there, 9);
}

TEST(MissingFiles, AnswersStandInTheOrderOfThePathsWhoeverAsked) {
    const TestFolder folder;
    const std::string there = folder.Write(u"da"_s, {}).toStdString();
    const auto piece = [&](int number) {
        std::vector<std::string> paths(static_cast<std::size_t>(number % 5), there);
        paths.insert(paths.begin() + number % 3 % (number % 5 + 1), there + std::to_string(number));
        return paths;
    };
    std::vector<bool> expected;
    MissingFiles files;
    for (int number = 0; number < 200; ++number) {
        for (const std::string& path : piece(number))
            expected.push_back(path != there);
        files.Add(piece(number));
    }
    EXPECT_EQ(files.Finish(), expected);
    MissingFiles dropped;
    dropped.Add(piece(4));
}

} // namespace
} // namespace kalvo::test
