#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kalvo {

/** Finds rows by the hash of their path. Several rows may share one; the caller compares. */
class PathTable {
public:
    PathTable() : PathTable(std::vector<std::uint32_t>()) {}
    /** hashes: of the rows from 0 on; quicker than to add them one by one. */
    explicit PathTable(const std::vector<std::uint32_t>& hashes);

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
