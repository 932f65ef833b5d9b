#include "structure/HandbookText.h"

#include <algorithm>
#include <cctype>
#include <regex>
#include <sstream>

namespace kalvo::test {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

std::string Trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(kBlanks);
    return first == std::string::npos ? std::string() : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool EndsWith(const std::string& text, std::string_view end) {
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

/** From behind the opening quote; leaves `at` behind the closing one. */
std::string ReadLiteral(const std::string& source, std::size_t& at) {
    std::string text;
    for (; at < source.size() && source[at] != '"'; ++at) {
        if (source[at] != '\\') {
            text += source[at];
            continue;
        }
        ++at;
        text += at < source.size() && source[at] == 'n'   ? ' '
                : at < source.size() && source[at] == 't' ? '\t'
                                                          : source[at];
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
    auto next = source.find_first_not_of(kBlanks, at);
    if (next != std::string::npos && source[next] == 'u')
        ++next;
    if (next == std::string::npos || next >= source.size() || source[next] != '"')
        return false;
    at = next + 1;
    return true;
}

bool Matches(const std::string& pattern, const std::string& text) {
    std::string expression;
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        const char c = pattern[at];
        if (c == '%' && at + 1 < pattern.size() && std::isdigit(static_cast<unsigned char>(pattern[at + 1])) != 0) {
            expression += ".+";
            ++at;
        } else {
            expression +=
                std::string(std::string_view(R"(.^$|()[]{}*+?\)").find(c) != std::string_view::npos, '\\') + c;
        }
    }
    return std::regex_match(text, std::regex(expression));
}

} // namespace

std::vector<std::string> ProgramTexts::Literals(const std::string& source) {
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

std::string ProgramTexts::Seen(const std::string& text) {
    std::string seen;
    const std::string before = text.substr(0, text.find('\t'));
    for (std::size_t at = 0; at < before.size(); ++at) {
        const bool isMnemonic = before[at] == '&' && at + 1 < before.size() && before[at + 1] != ' ';
        seen += before[isMnemonic ? ++at : at];
    }
    seen = Trimmed(seen);
    for (const std::string_view end : {"...", "…", ":"}) {
        if (EndsWith(seen, end))
            seen = Trimmed(seen.substr(0, seen.size() - end.size()));
    }
    return seen;
}

void ProgramTexts::Add(const std::string& source) {
    for (const std::string& literal : Literals(source)) {
        const std::string seen = Seen(literal);
        texts_.insert(seen);
        const auto letters =
            std::count_if(seen.begin(), seen.end(), [](unsigned char c) { return std::isalpha(c) != 0; });
        if (seen.find("%1") != std::string::npos && letters >= 4)
            patterns_.push_back(seen);
    }
}

bool ProgramTexts::Has(const std::string& quoted) const {
    const std::string seen = Seen(quoted);
    return texts_.count(seen) > 0 ||
           std::any_of(patterns_.begin(), patterns_.end(),
                       [&seen](const std::string& pattern) { return Matches(pattern, seen); });
}

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

std::vector<std::string> LabelsOf(const std::string& page) {
    static const std::regex label(R"((?:^|\n)\.\. _([^:\n]+):(?=\n))");
    std::vector<std::string> labels;
    for (std::sregex_iterator it(page.begin(), page.end(), label), end; it != end; ++it) {
        std::string name = (*it)[1];
        std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::tolower(c); });
        labels.push_back(std::move(name));
    }
    return labels;
}

} // namespace kalvo::test
