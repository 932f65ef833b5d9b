#include "archive/PathTable.h"

namespace kalvo {

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
