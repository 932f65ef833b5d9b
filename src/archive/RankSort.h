#pragma once

#include "archive/InHalves.h"

#include <QtGlobal>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace kalvo {

/** SortByRank() for rows that are much fewer than the ranks. */
template<typename Value, typename RankAt, typename ValueAt>
std::vector<std::uint32_t> SortFewByRank(RankAt rankAt, ValueAt valueAt, std::span<Value> sorted) {
    std::vector<std::pair<std::uint32_t, std::uint32_t>> ranked; // and its place now
    for (std::uint32_t i = 0; i < sorted.size(); ++i)
        ranked.emplace_back(rankAt(i), i);
    std::sort(ranked.begin(), ranked.end());
    std::vector<std::uint32_t> ends;
    for (std::uint32_t i = 0; i < ranked.size(); ++i) {
        sorted[i] = valueAt(ranked[i].second);
        if (i + 1 == ranked.size() || ranked[i].first != ranked[i + 1].first)
            ends.push_back(i + 1);
    }
    return ends;
}

/**
 * Puts valueAt(i) of each i below sorted.size() into its place by rankAt(i), which is below distinct. Stable. Returns
 * the places behind the parts of equal rank, ascending; parts may be empty.
 */
template<typename Value, typename RankAt, typename ValueAt>
std::vector<std::uint32_t> SortByRank(std::size_t distinct, RankAt rankAt, ValueAt valueAt, std::span<Value> sorted) {
    const std::size_t rows = sorted.size();
    if (rows < distinct / 8)
        return SortFewByRank(rankAt, valueAt, sorted);
    std::array<std::vector<std::uint32_t>, 2> next; // by half: how many rows a rank has, then where its next one goes
    next.fill(std::vector<std::uint32_t>(distinct, 0));
    InHalves(rows, rows, [&](std::size_t half, std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i)
            ++next[half][rankAt(i)];
    });
    std::uint32_t place = 0;
    for (std::size_t rank = 0; rank < distinct; ++rank)
        for (std::vector<std::uint32_t>& half : next)
            place += std::exchange(half[rank], place);
    InHalves(rows, rows, [&](std::size_t half, std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i)
            sorted[next[half][rankAt(i)]++] = valueAt(i);
    });
    return std::move(next.back());
}

/** A title's number with its rank in a field. Small, for what is written all over the memory has its price. */
struct RankedNumber {
    std::uint32_t number;
    std::uint32_t rank;
};

/** Sorts many small groups of numbers. */
class GroupSorter {
public:
    /** distinct: number of ranks; those of the numbers are below it. */
    explicit GroupSorter(std::size_t distinct) : next_(distinct, 0) {}

    /** Writes the numbers by their ranks to sorted, which has as many places. Stable. */
    void Sort(std::span<const RankedNumber> group, std::span<qint64> sorted);

private:
    std::vector<std::uint32_t> next_;                          ///< by rank, all 0 between two calls
    std::vector<std::pair<std::uint32_t, std::uint32_t>> few_; ///< rank and place
};

} // namespace kalvo
