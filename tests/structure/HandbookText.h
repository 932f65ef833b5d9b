#pragma once

#include <set>
#include <string>
#include <vector>

namespace kalvo::test {

/** What the program says, as its sources have it, to look up the texts that the handbook quotes. */
class ProgramTexts {
public:
    /** The string literals of a source file, those that stand in a row joined. */
    static std::vector<std::string> Literals(const std::string& source);
    /** As it is seen on a button or in a menu: no mnemonic, no key behind a tab, no dots or colon at the end. */
    static std::string Seen(const std::string& text);

    void Add(const std::string& source);
    /** Whether the program shows this text; a literal's %1 stands for anything. */
    bool Has(const std::string& quoted) const;

private:
    std::set<std::string> texts_;
    std::vector<std::string> patterns_; ///< with %1
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
std::vector<HandbookMark> MarksOf(const std::string& page);
/** The labels that a page defines, in small letters. */
std::vector<std::string> LabelsOf(const std::string& page);

} // namespace kalvo::test
