#include "structure/HandbookText.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <regex>
#include <sstream>

namespace kalvo::test {
namespace {

namespace fs = std::filesystem;

/** Sources and handbook of the folder that is tested. */
struct HandbookTest : ::testing::Test {
    HandbookTest() {
        const char* source = std::getenv("KALVO_SOURCE");
        root = source != nullptr ? source : "";
        for (const auto& entry : fs::recursive_directory_iterator(root / "src")) {
            if (entry.path().extension() == ".cpp" || entry.path().extension() == ".h")
                sources[entry.path()] = Read(entry.path());
        }
        for (const auto& entry : fs::directory_iterator(root / "docs/handbuch")) {
            if (entry.path().extension() == ".rst")
                pages[entry.path().stem().string()] = Read(entry.path());
        }
        for (const auto& [name, text] : pages) {
            for (const std::string& label : LabelsOf(text))
                ++labels[label];
        }
    }

    static std::string Read(const fs::path& path) {
        std::ostringstream text;
        text << std::ifstream(path).rdbuf();
        return text.str();
    }

    fs::path root;
    std::map<fs::path, std::string> sources;
    std::map<std::string, std::string> pages; ///< by name
    std::map<std::string, int> labels;        ///< how often each is defined
};

TEST_F(HandbookTest, QuotesOnlyWhatTheProgramSays) {
    ProgramTexts program;
    for (const auto& [path, text] : sources)
        program.Add(text);
    int quoted = 0;
    for (const auto& [name, text] : pages) {
        for (const HandbookMark& mark : MarksOf(text)) {
            if (mark.name != "guilabel")
                continue;
            ++quoted;
            EXPECT_TRUE(program.Has(mark.target)) << name << ".rst: the program has no \"" << mark.target << '"';
        }
    }
    EXPECT_GT(quoted, 200);
}

std::string SmallLetters(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

TEST_F(HandbookTest, EveryWindowHasAPlaceForItsF12AndEveryPlaceAWindow) {
    static const std::regex classes(R"(\nclass (\w+)[^;{]*\{)");
    static const std::regex window(R"(frm\w+|xMessageBox|Option\w+Page)");
    std::set<std::string> names;
    int windows = 0;
    for (const auto& [path, text] : sources) {
        for (std::sregex_iterator it(text.begin(), text.end(), classes), end; it != end; ++it) {
            const std::string name = (*it)[1];
            names.insert(SmallLetters(name));
            if (path.extension() != ".h" || !std::regex_match(name, window))
                continue;
            ++windows;
            const std::string label = "fenster-" + SmallLetters(name);
            EXPECT_EQ(labels[label], 1) << "docs/handbuch needs one \".. _" << label << ":\" where it explains "
                                        << name;
        }
        for (const std::string& literal : ProgramTexts::Literals(text)) // objectNames
            names.insert(SmallLetters(literal));
    }
    EXPECT_GT(windows, 30);
    for (const auto& [label, count] : labels) {
        const bool isPlace = label.rfind("fenster-", 0) == 0;
        EXPECT_TRUE(!isPlace || names.count(label.substr(8)) > 0) << label << " belongs to no window";
    }
}

TEST_F(HandbookTest, EveryLinkLeadsSomewhere) {
    for (const auto& [name, text] : pages) {
        for (const HandbookMark& mark : MarksOf(text)) {
            const bool leads = mark.name == "doc"     ? pages.count(mark.target) == 1
                               : mark.name == "ref"   ? labels.count(mark.target) == 1
                               : mark.name == "image" ? fs::exists(root / "docs/handbuch" / mark.target)
                                                      : true;
            EXPECT_TRUE(leads) << name << ".rst: no " << mark.name << ' ' << mark.target;
        }
    }
    const std::vector<HandbookMark> index = MarksOf(pages["index"]);
    for (const auto& [name, text] : pages) {
        const bool isListed = std::any_of(index.begin(), index.end(), [&page = name](const HandbookMark& mark) {
            return mark.name == "doc" && mark.target == page;
        });
        EXPECT_TRUE(isListed || name == "index") << name << " is in no table of contents";
    }
}

TEST(ProgramTextsTest, LiteralsAreReadAsTheCompilerReadsThem) {
    const std::string source =
        "#include \"a.h\"\n"
        "// \"no\"\n/* \"no\" \"\n */ f('\"', QStringLiteral(\"eins \"\n   u\"zwei\"), \"\\\"drei\\\"\");";
    EXPECT_EQ(ProgramTexts::Literals(source), (std::vector<std::string>{"a.h", "eins zwei", "\"drei\""}));
}

TEST(ProgramTextsTest, TextsAreFoundAsTheyAreSeen) {
    ProgramTexts program;
    program.Add(R"(f("&Löschen...\tEntf", "Musik && Tanz", "Player %1: &Stop", "  %1 %", "Zeile\nzwei:"))");
    for (const char* seen : {"Löschen", "Musik & Tanz", "Musik && Tanz", "Player 2: Stop", "Zeile zwei"})
        EXPECT_TRUE(program.Has(seen)) << seen;
    for (const char* other : {"Lösche", "Player : Stop", "Stop", "100 %", "Zeile"})
        EXPECT_FALSE(program.Has(other)) << other;
}

TEST(HandbookTextTest, MarksAndLabelsAreFound) {
    const std::string page = "\n.. _fenster-frmA:\n\n:menuselection:`Datei --> Neu` :ref:`hier <ziel>` :doc:`seite`\n"
                             ".. figure:: ../bild.png\n\n.. toctree::\n   :hidden:\n\n   eins\n   zwei-drei\n";
    std::string marks;
    for (const HandbookMark& mark : MarksOf(page))
        marks += mark.name + '=' + mark.target + ' ';
    EXPECT_EQ(marks, "guilabel=Datei guilabel=Neu ref=ziel doc=seite image=../bild.png doc=eins doc=zwei-drei ");
    EXPECT_EQ(LabelsOf(page), std::vector<std::string>{"fenster-frma"});
}

} // namespace
} // namespace kalvo::test
