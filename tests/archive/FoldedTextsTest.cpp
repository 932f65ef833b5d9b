#include "archive/FoldedTexts.h"

#include "archive/ByteScan.h"
#include "archive/TextFolding.h"

#include <QString>
#include <gtest/gtest.h>

#include <random>

namespace kalvo::test {
namespace {

/** Few letters, so that needles are found often and nearly found still oftener. */
std::string RandomText(std::mt19937& random, std::size_t maximum) {
    std::string text(random() % (maximum + 1), 'a');
    for (char& c : text)
        c = "abc\xC3"[random() % 4];
    return text;
}

/** The plainest way to match: every "*" tries every length. */
bool MatchesPlainly(std::string_view pattern, std::string_view text) {
    if (pattern.empty())
        return text.empty();
    if (pattern.front() == '*')
        return MatchesPlainly(pattern.substr(1), text) || (!text.empty() && MatchesPlainly(pattern, text.substr(1)));
    return !text.empty() && pattern.front() == text.front() && MatchesPlainly(pattern.substr(1), text.substr(1));
}

TEST(TextFoldingTest, ComparesWithoutCaseInAllOfUnicode) {
    EXPECT_EQ(TextFolding::Folded(u"MA\u0308NNER"), "männer");
    EXPECT_EQ(TextFolding::Folded(u"ΑΘΗΝΑ Дым"), "αθηνα дым");
    EXPECT_EQ(TextFolding::Folded(u"Straße"), "straße");
    EXPECT_EQ(TextFolding::Folded(QString(QChar(0)) + u'A'), " a");
}

TEST(ByteScanTest, VectorsGiveWhatThePlainWayGives) {
    std::mt19937 random(5);
    std::vector<char> text(5 * ByteScan::kBlock + 80);
    for (char& c : text)
        c = "ab\xFF"[random() % 3];
    for (std::size_t offset = 0; offset < 64; ++offset) {
        const ByteScan::Probe probe = {{'a', 'b', '\xFF'}, {offset, offset / 2, 63 - offset}};
        std::array<std::uint64_t, 5> fast = {};
        std::array<std::uint64_t, 5> plain = {};
        ByteScan::FindProbe(text.data() + offset % 7, 5, probe, fast.data());
        ByteScan::FindProbePlain(text.data() + offset % 7, 5, probe, plain.data());
        EXPECT_EQ(fast, plain) << offset;
    }
}

TEST(FoldedTextsTest, FindsWhatTheTextsHold) {
    std::mt19937 random(9);
    for (int round = 0; round < 200; ++round) {
        FoldedTexts texts;
        std::vector<std::string> plain;
        for (auto count = random() % 300; count > 0; --count) {
            plain.push_back(RandomText(random, round % 2 ? 6 : 120));
            texts.Append(plain.back());
        }
        std::string pattern = "*" + RandomText(random, 70) + "*";
        if (random() % 2)
            pattern =
                RandomText(random, 2) + "*" + RandomText(random, 3) + (random() % 2 ? "*" + RandomText(random, 1) : "");
        BitSet hits(texts.Size());
        texts.FindMatching(LikePattern(pattern, true), hits);
        std::vector<std::size_t> expected, found;
        hits.ForEach([&](std::size_t i) { found.push_back(i); });
        for (std::size_t i = 0; i < plain.size(); ++i)
            if (MatchesPlainly(pattern, plain[i]))
                expected.push_back(i);
        ASSERT_EQ(found, expected) << pattern;
    }
}

} // namespace
} // namespace kalvo::test
