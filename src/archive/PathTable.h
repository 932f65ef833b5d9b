#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace kalvo {

/** Finds rows by the hash of their path. Several rows may share one; the caller compares. */
class PathTable {
public:
    /** rows: how many are expected. */
    explicit PathTable(std::size_t rows = 0) : entries_(std::bit_ceil(std::max<std::size_t>(64, rows * 2))) {}

    void Add(std::uint32_t hash, std::uint32_t row);

    /** Calls visit(row) for the rows of this hash until it returns true; returns whether it did. */
    template<typename Visit>
    bool Find(std::uint32_t hash, Visit visit) const {
        for (std::size_t place = hash & Mask(); entries_[place].row != kFree; place = (place + 1) & Mask())
            if (entries_[place].hash == hash && visit(entries_[place].row))
                return true;
        return false;
    }

    std::size_t Bytes() const { return entries_.capacity() * sizeof(Entry); }

private:
    static constexpr std::uint32_t kFree = 0xFFFFFFFFU;

    struct Entry {
        std::uint32_t hash = 0;
        std::uint32_t row = kFree;
    };

    std::size_t Mask() const { return entries_.size() - 1; }
    void Insert(const Entry& entry);

    std::vector<Entry> entries_; ///< its size is a power of two
    std::size_t used_ = 0;
};

} // namespace kalvo
