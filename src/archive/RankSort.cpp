#include "archive/RankSort.h"

namespace kalvo {

void GroupSorter::Sort(std::span<const RankedNumber> group, std::span<qint64> sorted) {
    if (group.size() < next_.size() / 16) {
        few_.clear();
        for (std::uint32_t i = 0; i < group.size(); ++i)
            few_.emplace_back(group[i].rank, i);
        std::sort(few_.begin(), few_.end());
        std::transform(few_.begin(), few_.end(), sorted.begin(),
                       [group](const auto& one) { return group[one.second].number; });
        return;
    }
    for (const RankedNumber& one : group)
        ++next_[one.rank];
    std::uint32_t place = 0;
    for (std::uint32_t& next : next_)
        place += std::exchange(next, place);
    for (const RankedNumber& one : group)
        sorted[next_[one.rank]++] = one.number;
    std::fill(next_.begin(), next_.end(), 0);
}

} // namespace kalvo
