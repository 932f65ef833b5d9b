#pragma once

#include "archive/BitSet.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <span>
#include <utility>
#include <vector>

namespace kalvo {

/** The sorted order with the sorted further things in their places, behind those that they are equal to. */
template<typename Less>
std::vector<std::uint32_t> Merged(const std::vector<std::uint32_t>& order, const std::vector<std::uint32_t>& added,
                                  Less less) {
    std::vector<std::uint32_t> merged;
    merged.reserve(order.size() + added.size());
    auto from = order.begin();
    for (const std::uint32_t thing : added) {
        const auto to = std::upper_bound(from, order.end(), thing, less);
        merged.insert(merged.end(), from, to);
        merged.push_back(thing);
        from = to;
    }
    merged.insert(merged.end(), from, order.end());
    return merged;
}

/** A sorted order of numbered things and the rank of each; equal things share a rank. Grows without sorting anew. */
class SortRanks {
public:
    /** Takes a finished order; tied(i) tells whether place i shares the rank of the one before. Ties come to ascend. */
    template<typename Tied>
    void Assign(std::vector<std::uint32_t> order, Tied tied) {
        order_ = std::move(order);
        rank_.resize(order_.size());
        tied_ = BitSet(order_.size());
        for (std::size_t place = 1; place < order_.size(); ++place)
            if (tied(place))
                tied_.Set(place);
        RankFrom(0);
        SortTies();
    }

    /** Puts the things from Size() to `size` into their places. compare(a, b): below 0, 0, above 0. */
    template<typename Compare>
    void Extend(std::size_t size, Compare compare) {
        const auto known = static_cast<std::uint32_t>(order_.size());
        if (size == known)
            return;
        std::vector<std::uint32_t> added(size - known);
        std::iota(added.begin(), added.end(), known);
        const auto less = [&](std::uint32_t left, std::uint32_t right) { return compare(left, right) < 0; };
        std::stable_sort(added.begin(), added.end(), less);
        order_ = Merged(order_, added, less);
        rank_.resize(size, 0);
        const BitSet before = std::exchange(tied_, BitSet(size));
        std::size_t old = 0;
        std::size_t first = size;
        for (std::size_t place = 0; place < size; ++place) {
            const bool isNew = order_[place] >= known;
            if (isNew)
                first = std::min(first, place);
            if (isNew ? place > 0 && compare(order_[place - 1], order_[place]) == 0 : before.Test(old++))
                tied_.Set(place);
        }
        RankFrom(first);
    }

    std::size_t Size() const { return order_.size(); }
    std::span<const std::uint32_t> Order() const { return order_; }
    std::span<const std::uint32_t> Ranks() const { return rank_; }
    /** Whether what stands at this place of the order shares its rank with the place before. */
    bool IsTied(std::size_t place) const { return tied_.Test(place); }
    /** Number of different ranks. */
    std::size_t Distinct() const { return order_.empty() ? 0 : rank_[order_.back()] + std::size_t{1}; }
    std::size_t Bytes() const {
        return (order_.capacity() + rank_.capacity()) * sizeof(std::uint32_t) + tied_.Size() / 8;
    }

private:
    /** Ranks what stands from this place on. */
    void RankFrom(std::size_t first) {
        std::uint32_t rank = first == 0 ? 0 : rank_[order_[first - 1]];
        for (std::size_t place = first; place < order_.size(); ++place) {
            rank += place > 0 && !IsTied(place) ? 1 : 0;
            rank_[order_[place]] = rank;
        }
    }

    void SortTies() {
        for (std::size_t end = 0, begin = 0; begin < order_.size(); begin = end) {
            for (end = begin + 1; end < order_.size() && IsTied(end);)
                ++end;
            std::sort(order_.begin() + static_cast<std::ptrdiff_t>(begin),
                      order_.begin() + static_cast<std::ptrdiff_t>(end));
        }
    }

    std::vector<std::uint32_t> order_;
    std::vector<std::uint32_t> rank_;
    BitSet tied_; ///< by place in order_
};

} // namespace kalvo
