#pragma once

#include "archive/BitSet.h"
#include "archive/ByteScan.h"
#include "archive/LikePattern.h"

#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace kalvo {

/** Room for so many things and some to come, which would else all be moved for the first one that is added. */
constexpr std::size_t WithSpareRoom(std::size_t size) {
    return size + size / 32 + 64;
}

/**
 * Folded texts one behind the other in one piece of memory, each closed by a NUL, so that a search runs over all of
 * them in one sweep. Texts are numbered from 0; they are only ever appended.
 */
class FoldedTexts {
public:
    FoldedTexts();

    /** folded: without NUL. Returns the text's number. */
    std::uint32_t Append(std::string_view folded);
    std::string_view At(std::size_t index) const {
        return {text_.data() + offsets_[index], offsets_[index + 1] - offsets_[index] - 1};
    }
    std::size_t Size() const { return offsets_.size() - 1; }

    /** Sets the bits of the texts that hold the needle; an empty needle is in all. hits has at least Size() bits. */
    void FindContaining(std::string_view needle, BitSet& hits) const;
    void FindMatching(const LikePattern& pattern, BitSet& hits) const;

    /** The same texts in another order, those that `order` does not name left out. */
    FoldedTexts Reordered(std::span<const std::uint32_t> order) const;

    /** Gives spare memory back. */
    void Trim();
    /** Memory in bytes. */
    std::size_t Bytes() const { return text_.capacity() + offsets_.capacity() * sizeof(offsets_[0]); }

private:
    std::uint32_t AppendUncounted(std::string_view folded);
    ByteScan::Probe RarestBytes(std::string_view needle) const;
    /** The last text that begins at or before `position`; from: a text that does. */
    std::size_t TextAt(std::size_t position, std::size_t from) const;

    std::vector<char> text_; ///< ends in kPadding bytes that a sweep may read beyond the last text
    std::vector<std::uint32_t> offsets_;
    std::array<std::uint32_t, 256> frequency_ = {}; ///< of bytes in some of the texts: the rarest ones are looked for
};

} // namespace kalvo
