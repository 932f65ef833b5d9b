#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kalvo {

/** A pattern over folded texts in which "*" stands for any characters, none included. */
class LikePattern {
public:
    /** folded: the pattern's folded text. wildcards: false takes "*" as itself, for equality. */
    LikePattern(std::string_view folded, bool wildcards);

    bool Matches(std::string_view folded) const;

    /** Every matching text holds this piece; empty when the pattern has none. */
    std::string_view LongestPiece() const;
    /** What a matching text holds, in this order; none is empty. */
    const std::vector<std::string>& Pieces() const { return pieces_; }
    /** Whether holding LongestPiece() is enough to match: "*piece*", "*". */
    bool IsContains() const { return openStart_ && openEnd_ && pieces_.size() <= 1; }
    /** Whether the pattern has no "*": then it matches one text only. */
    bool IsExact() const { return !openStart_ && !openEnd_ && pieces_.size() <= 1; }

private:
    std::vector<std::string> pieces_; ///< without empty ones
    bool openStart_ = false;
    bool openEnd_ = false;
};

} // namespace kalvo
