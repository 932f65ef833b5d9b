#include "archive/GroupedNumbers.h"

#include <utility>

namespace kalvo {

void GroupedNumbers::Assign(std::vector<qint64> numbers, std::vector<std::uint32_t> ends) {
    numbers_ = std::move(numbers);
    ends_ = std::move(ends);
}

std::vector<qint64> GroupedNumbers::All(bool lastGroupFirst) const {
    if (!lastGroupFirst)
        return numbers_;
    std::vector<qint64> turned;
    turned.reserve(numbers_.size());
    for (std::size_t group = ends_.size(); group-- > 0;) {
        const std::uint32_t begin = group == 0 ? 0 : ends_[group - 1];
        turned.insert(turned.end(), numbers_.begin() + begin, numbers_.begin() + ends_[group]);
    }
    return turned;
}

std::size_t GroupedNumbers::Bytes() const {
    return numbers_.capacity() * sizeof(qint64) + ends_.capacity() * sizeof(std::uint32_t);
}

} // namespace kalvo
