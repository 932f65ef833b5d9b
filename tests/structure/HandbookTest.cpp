#include "support/ProjectTexts.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <regex>
#include <vector>

namespace kalvo::test {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

std::string Trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(kBlanks);
    return first == std::string::npos ? std::string() : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/** From behind the opening quote; leaves `at` behind the closing one. */
std::string ReadLiteral(const std::string& source, std::size_t& at) {
    std::string text;
    for (; at < source.size() && source[at] != '"'; ++at) {
        if (source[at] != '\\') {
            text += source[at];
            continue;
        }
        const char escaped = source[++at];
        text += escaped == 'n' ? ' ' : escaped == 't' ? '\t' : escaped;
    }
    ++at;
    return text;
}

/** Behind comments and single characters, whose quotes open no literal. */
std::size_t BehindNoise(const std::string& source, std::size_t at) {
    if (source.compare(at, 2, "//") == 0)
        return std::min(source.find('\n', at), source.size());
    if (source.compare(at, 2, "/*") == 0)
        return std::min(source.find("*/", at), source.size());
    if (source.compare(at, 3, "'\"'") == 0 || source.compare(at, 4, "'\\\"'") == 0)
        return source.find('\'', at + 2) + 1;
    return at;
}

/** Whether another literal follows, with blanks and prefixes between; leaves `at` behind its quote then. */
bool GoesOn(const std::string& source, std::size_t& at) {
    auto next = std::min(source.find_first_not_of(kBlanks, at), source.size());
    next += source.compare(next, 1, "u") == 0 ? 1 : 0;
    if (source.compare(next, 1, "\"") != 0)
        return false;
    at = next + 1;
    return true;
}

/** The string literals of a source file, those that stand in a row joined. */
std::vector<std::string> LiteralsOf(const std::string& source) {
    std::vector<std::string> found;
    for (std::size_t at = 0; at < source.size();) {
        if (const std::size_t behind = BehindNoise(source, at); behind != at) {
            at = behind;
        } else if (source[at++] == '"') {
            std::string text = ReadLiteral(source, at);
            while (GoesOn(source, at))
                text += ReadLiteral(source, at);
            found.push_back(std::move(text));
        }
    }
    return found;
}

/** As it is seen on a button or in a menu: no mnemonic, no key behind a tab, no dots or colon at the end. */
std::string Seen(const std::string& text) {
    static const std::regex mnemonic("&([^ ])");
    std::string seen = Trimmed(std::regex_replace(text.substr(0, text.find('\t')), mnemonic, "$1"));
    for (const std::string_view end : {"...", "…", ":"}) {
        if (seen.ends_with(end))
            seen = Trimmed(seen.substr(0, seen.size() - end.size()));
    }
    return seen;
}

/** What the program says, as its sources have it, to look up the texts that the handbook quotes. */
class ProgramTexts {
public:
    void Add(const std::string& source) {
        static const std::regex sign("[[:punct:]]");
        static const std::regex place(R"(\\%\d)");
        for (const std::string& literal : LiteralsOf(source)) {
            const std::string seen = Seen(literal);
            texts_.insert(seen);
            const auto letters =
                std::count_if(seen.begin(), seen.end(), [](unsigned char c) { return std::isalpha(c) != 0; });
            if (seen.find("%1") != std::string::npos && letters >= 4)
                patterns_.emplace_back(std::regex_replace(std::regex_replace(seen, sign, R"(\$&)"), place, ".+"));
        }
    }

    /** Whether the program shows this text; a literal's %1 stands for anything. */
    bool Has(const std::string& quoted) const {
        const std::string seen = Seen(quoted);
        return texts_.contains(seen) ||
               std::any_of(patterns_.begin(), patterns_.end(),
                           [&seen](const std::regex& pattern) { return std::regex_match(seen, pattern); });
    }

private:
    std::set<std::string> texts_;
    std::vector<std::regex> patterns_; ///< of texts with %1
};

/** A piece of markup in the handbook's texts. */
struct HandbookMark {
    std::string name;   ///< of a role or directive
    std::string target; ///< what it names: a text of the program, a label, a page, a picture
};

/**
 * Roles, pictures and pages of tables of contents in a page; of "text <target>" the target. The parts of a
 * menuselection are marks of their own.
 */
std::vector<HandbookMark> MarksOf(const std::string& page) {
    static const std::regex role(R"(:([a-z]+):`([^`]+)`)");
    static const std::regex picture(R"(\.\. (image|figure):: (\S+))");
    static const std::regex entry(R"(\n   ([a-z][a-z-]*)(?=\n))");
    std::vector<HandbookMark> marks;
    for (std::sregex_iterator it(page.begin(), page.end(), role), end; it != end; ++it) {
        const std::string text = (*it)[2];
        const auto open = text.rfind('<');
        if ((*it)[1] == "menuselection") {
            std::size_t from = 0;
            for (std::size_t arrow = 0; arrow != std::string::npos; from = arrow + 3) {
                arrow = text.find("-->", from);
                marks.push_back({"guilabel", Trimmed(text.substr(from, arrow - from))});
            }
        } else if (text.back() == '>' && open != std::string::npos && (*it)[1] != "guilabel") {
            marks.push_back({(*it)[1], text.substr(open + 1, text.size() - open - 2)});
        } else {
            marks.push_back({(*it)[1], text});
        }
    }
    for (std::sregex_iterator it(page.begin(), page.end(), picture), end; it != end; ++it)
        marks.push_back({"image", (*it)[2]});
    if (page.find(".. toctree::") != std::string::npos) {
        for (std::sregex_iterator it(page.begin(), page.end(), entry), end; it != end; ++it)
            marks.push_back({"doc", (*it)[1]});
    }
    return marks;
}

std::string SmallLetters(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

/** The labels that a page defines, in small letters. */
std::vector<std::string> LabelsOf(const std::string& page) {
    static const std::regex label(R"((?:^|\n)\.\. _([^:\n]+):(?=\n))");
    std::vector<std::string> labels;
    for (std::sregex_iterator it(page.begin(), page.end(), label), end; it != end; ++it)
        labels.push_back(SmallLetters((*it)[1]));
    return labels;
}

/** Sources and handbook of the folder that is tested. */
struct HandbookTest : ::testing::Test {
    HandbookTest() {
        for (const auto& [name, text] : TextsIn("docs/handbuch", {".rst"})) {
            pages[name.substr(0, name.find('.'))] = text;
            for (const std::string& label : LabelsOf(text))
                ++labels[label];
        }
    }

    std::map<std::string, std::string> sources = TextsIn("src", {".cpp", ".h"});
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

TEST_F(HandbookTest, EveryWindowHasAPlaceForItsF12AndEveryPlaceAWindow) {
    static const std::regex classes(R"(\nclass (\w+)[^;{]*\{)");
    static const std::regex window(R"(frm\w+|xMessageBox|Option\w+Page)");
    std::set<std::string> names;
    int windows = 0;
    for (const auto& [path, text] : sources) {
        for (std::sregex_iterator it(text.begin(), text.end(), classes), end; it != end; ++it) {
            const std::string name = (*it)[1];
            names.insert(SmallLetters(name));
            if (!path.ends_with(".h") || !std::regex_match(name, window))
                continue;
            ++windows;
            const std::string label = "fenster-" + SmallLetters(name);
            EXPECT_EQ(labels[label], 1) << "docs/handbuch needs one \".. _" << label << ":\" where it explains it";
        }
        for (const std::string& literal : LiteralsOf(text)) // objectNames
            names.insert(SmallLetters(literal));
    }
    EXPECT_GT(windows, 30);
    for (const auto& [label, count] : labels)
        EXPECT_TRUE(!label.starts_with("fenster-") || names.contains(label.substr(8))) << label << " of no window";
}

TEST_F(HandbookTest, EveryLinkLeadsSomewhere) {
    const std::filesystem::path folder = std::getenv("KALVO_SOURCE") + std::string("/docs/handbuch");
    for (const auto& [name, text] : pages) {
        for (const HandbookMark& mark : MarksOf(text)) {
            const bool leads = mark.name == "doc"     ? pages.contains(mark.target)
                               : mark.name == "ref"   ? labels.contains(mark.target)
                               : mark.name == "image" ? std::filesystem::exists(folder / mark.target)
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

TEST(ProgramTextsTest, LiteralsAreFoundAsTheyAreSeen) {
    ProgramTexts program;
    program.Add(R"(// "nein "
                f('"', "&Löschen...\tEntf", "Musik " u"&& Tanz", "Player %1: &Stop", "  %1 %", "Zeile\nzwei:"))");
    for (const char* seen : {"Löschen", "Musik & Tanz", "Musik && Tanz", "Player 2: Stop", "Zeile zwei"})
        EXPECT_TRUE(program.Has(seen)) << seen;
    for (const char* other : {"Lösche", "Player : Stop", "Stop", "100 %", "Zeile", "nein"})
        EXPECT_FALSE(program.Has(other)) << other;
}

} // namespace
} // namespace kalvo::test
