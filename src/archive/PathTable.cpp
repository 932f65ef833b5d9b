#include "archive/PathTable.h"

#include <algorithm>
#include <bit>

namespace kalvo {

namespace {

constexpr std::size_t kFewest = 64;
/** Rows between the call for a place's memory and its use. */
constexpr std::size_t kPrefetched = 16;

} // namespace

PathTable::PathTable(const std::vector<std::uint32_t>& hashes)
    : entries_(std::bit_ceil(std::max(kFewest, hashes.size() * 2))), used_(hashes.size()) {
    for (std::size_t row = 0; row < hashes.size(); ++row) {
        __builtin_prefetch(&entries_[hashes[std::min(row + kPrefetched, hashes.size() - 1)] & Mask()], 1);
        Insert({hashes[row], static_cast<std::uint32_t>(row)});
    }
}

void PathTable::Add(std::uint32_t hash, std::uint32_t row) {
    if (++used_ * 2 > entries_.size()) {
        std::vector<Entry> old(entries_.size() * 2);
        old.swap(entries_);
        for (const Entry& entry : old)
            if (entry.row != kFree)
                Insert(entry);
    }
    Insert({hash, row});
}

void PathTable::Insert(const Entry& entry) {
    std::size_t place = entry.hash & Mask();
    while (entries_[place].row != kFree)
        place = (place + 1) & Mask();
    entries_[place] = entry;
}

} // namespace kalvo
