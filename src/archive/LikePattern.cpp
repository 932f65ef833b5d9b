#include "archive/LikePattern.h"

#include <algorithm>

namespace kalvo {

LikePattern::LikePattern(std::string_view folded, bool wildcards) {
    if (!wildcards) {
        if (!folded.empty())
            pieces_.emplace_back(folded);
        return;
    }
    openStart_ = folded.starts_with('*');
    openEnd_ = folded.ends_with('*');
    while (!folded.empty()) {
        const std::string_view piece = folded.substr(0, folded.find('*'));
        if (!piece.empty())
            pieces_.emplace_back(piece);
        folded.remove_prefix(std::min(folded.size(), piece.size() + 1));
    }
}

bool LikePattern::Matches(std::string_view folded) const {
    if (pieces_.empty())
        return openStart_ || folded.empty();
    if (IsExact())
        return folded == pieces_.front();
    std::size_t first = 0;
    std::size_t last = pieces_.size();
    if (!openStart_) {
        if (!folded.starts_with(pieces_.front()))
            return false;
        folded.remove_prefix(pieces_[first++].size());
    }
    if (!openEnd_) {
        if (!folded.ends_with(pieces_.back()))
            return false;
        folded.remove_suffix(pieces_[--last].size());
    }
    for (; first < last; ++first) {
        const std::size_t at = folded.find(pieces_[first]);
        if (at == std::string_view::npos)
            return false;
        folded.remove_prefix(at + pieces_[first].size());
    }
    return true;
}

std::string_view LikePattern::LongestPiece() const {
    const auto longest = std::max_element(
        pieces_.begin(), pieces_.end(), [](const auto& left, const auto& right) { return left.size() < right.size(); });
    return longest == pieces_.end() ? std::string_view() : std::string_view(*longest);
}

} // namespace kalvo
