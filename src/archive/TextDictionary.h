#pragma once

#include "archive/FoldedTexts.h"
#include "archive/SortRanks.h"

namespace kalvo {

/** The distinct folded values of a column; a value's code is its number in order of appearance. */
class TextDictionary {
public:
    TextDictionary();

    /** Code of a folded value, given one when it is new. */
    std::uint32_t CodeOf(std::string_view folded);
    const FoldedTexts& Values() const { return values_; }

    /** Ranks the values that are new since the last call. */
    void Settle();
    /** Rank of every code's sort key; valid after Settle(). */
    const SortRanks& Ranks() const { return ranks_; }

    void Trim() { values_.Trim(); }
    std::size_t Bytes() const;

private:
    std::size_t PlaceOf(std::string_view folded) const;
    void Grow();

    FoldedTexts values_;
    SortRanks ranks_;
    std::vector<std::uint32_t> table_; ///< code + 1 by hash, 0 = free; its size is a power of two
};

/** Hash of a folded text. */
std::uint64_t HashText(std::string_view text, std::uint64_t seed = 0);

/** Texts by their numbers in the order of their sort keys, those of equal keys ascending. */
struct TextOrder {
    std::vector<std::uint32_t> order;
    BitSet tied; ///< by place: its key is that of the place before

    /** Leaves the other numbers out. */
    void Keep(const BitSet& numbers);
};
/** The fast way for many at once. */
TextOrder SortedTexts(const FoldedTexts& texts);

} // namespace kalvo
