#pragma once

#include "archive/FoldedTexts.h"

#include <array>
#include <string>
#include <unordered_map>

namespace kalvo {

/**
 * Tells which of many patterns a text may match, in one sweep over the text: each pattern is represented by its rarest
 * piece, and each piece by a rare window of up to eight bytes in it, for which a sweep looks. Patterns that share a
 * piece are met together.
 */
class PatternSweep {
public:
    /** sample: texts like those that will be swept; they tell what is rare. Not needed afterwards. */
    explicit PatternSweep(const FoldedTexts& sample);

    /** folded: with "*" as wildcard. Returns the pattern's number; equal patterns share one. */
    std::uint32_t Add(const std::string& folded);
    std::size_t Size() const { return patterns_.size(); }
    const LikePattern& At(std::uint32_t pattern) const { return patterns_[pattern]; }

    /**
     * Appends the patterns whose piece the text holds; one may come more than once. text: of a FoldedTexts, since some
     * bytes behind it are read too.
     */
    void FindIn(std::string_view text, std::vector<std::uint32_t>& found) const;

private:
    static constexpr std::size_t kSizes = 4; ///< windows of 1, 2, 4 and 8 bytes

    static constexpr std::uint32_t kNone = 0xFFFFFFFFU;

    struct Piece {
        std::string text;
        std::size_t windowAt; ///< where in it the window begins
        std::uint32_t next;   ///< another piece with the same window
        std::vector<std::uint32_t> patterns;
    };
    /** The windows of one size. */
    struct Windows {
        struct Slot {
            std::uint64_t window = 0;
            std::uint32_t piece = kNone; ///< the latest one with this window; none: the slot is free
        };
        /** Its slot, or the free one for it. */
        std::size_t PlaceOf(std::uint64_t window) const;
        void Grow();

        std::vector<Slot> slots; ///< by hash; their number is a power of two
        std::size_t used = 0;
        BitSet filter; ///< hashes of the windows
    };
    struct Window {
        std::size_t at = 0;
        std::uint32_t rarity = 0;
    };

    void CountGrams(const FoldedTexts& sample);
    std::uint32_t RarityOf(std::string_view window) const;
    Window RarestWindow(std::string_view piece) const;
    void AddPiece(const std::string& piece, std::size_t windowAt, std::uint32_t pattern);
    void TryWindow(const Windows& windows, std::uint64_t window, std::string_view text, std::size_t at,
                   std::vector<std::uint32_t>& found) const;

    std::vector<std::uint32_t> grams_; ///< how often four-byte pieces occur in the sample, by hash
    std::unordered_map<std::string, std::uint32_t> numbers_;
    std::vector<LikePattern> patterns_;
    std::vector<std::uint32_t> anywhere_; ///< patterns without any piece
    std::unordered_map<std::string, std::uint32_t> pieceNumbers_;
    std::vector<Piece> pieces_;
    std::array<Windows, kSizes> windows_; ///< by the binary logarithm of their size
    BitSet beginnings_; ///< hashes of the first half of the longest windows: small enough for the first cache
};

} // namespace kalvo
