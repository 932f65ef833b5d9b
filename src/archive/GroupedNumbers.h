#pragma once

#include <QtGlobal>

#include <cstdint>
#include <vector>

namespace kalvo {

/** Titles' numbers in an order whose groups can come in turned sequence, while each keeps its order within. */
class GroupedNumbers {
public:
    /** ends: the places behind the groups, ascending; groups may be empty. */
    void Assign(std::vector<qint64> numbers, std::vector<std::uint32_t> ends);
    void Clear() { Assign({}, {}); }
    bool IsEmpty() const { return numbers_.empty(); }
    std::vector<qint64> All(bool lastGroupFirst) const;
    std::size_t Bytes() const;

private:
    std::vector<qint64> numbers_;
    std::vector<std::uint32_t> ends_;
};

} // namespace kalvo
