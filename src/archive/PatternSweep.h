#pragma once

#include "archive/FoldedTexts.h"

#include <functional>
#include <string>
#include <unordered_map>

namespace kalvo {

/**
 * Finds which of many patterns match which texts in one sweep over the texts: each pattern is represented by a rare
 * window of up to eight bytes that every matching text holds; where one is met, the whole pattern is compared.
 */
class PatternSweep {
public:
    /** The texts outlive the sweep. */
    explicit PatternSweep(const FoldedTexts& texts);

    /** folded: with "*" as wildcard. Returns the pattern's number; equal patterns share one. */
    std::uint32_t Add(const std::string& folded);
    bool IsEmpty() const { return patterns_.empty(); }

    /** Texts of every pattern, ascending. goOn(text): called now and then; false ends the sweep with what was found. */
    std::vector<std::vector<std::uint32_t>> Run(const std::function<bool(std::size_t text)>& goOn);

private:
    static constexpr std::size_t kLongest = 8;

    void CountGrams();
    void AddWindow(std::uint32_t pattern);
    std::string_view RarestWindow(const LikePattern& pattern) const;
    std::uint32_t RarityOf(std::string_view window) const;
    void TryAt(std::uint64_t window, std::size_t length, std::uint32_t text);
    void Try(std::uint32_t pattern, std::uint32_t text);

    const FoldedTexts& texts_;
    std::vector<std::uint32_t> grams_; ///< how often four-byte pieces occur in a sample, by hash
    std::unordered_map<std::string, std::uint32_t> numbers_;
    std::vector<LikePattern> patterns_;
    std::vector<std::uint32_t> unanchored_; ///< patterns without any piece
    /** By the window's length: what windows there are, and a bitmap of their hashes in front. */
    std::array<std::unordered_map<std::uint64_t, std::vector<std::uint32_t>>, kLongest + 1> windows_;
    std::array<BitSet, kLongest + 1> filters_;
    std::vector<std::uint32_t> tried_; ///< by pattern: the text lately compared, plus 1
    std::vector<std::vector<std::uint32_t>> found_;
};

} // namespace kalvo
