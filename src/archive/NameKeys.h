#pragma once

#include "archive/FoldedTexts.h"

namespace kalvo {

/**
 * File names as search keys: tells which names end in a key, and which keys occur elsewhere in a text. The names are
 * sorted by their reversed bytes, so that all names ending in a key are neighbours, and each key is linked to the
 * longest other key that it ends in.
 */
class NameKeys {
public:
    /** Names to be found in, by row; the bytes outlive the keys. isKey: whether the name is searched for too. */
    NameKeys(const std::vector<std::string_view>& names, const std::vector<bool>& isKey);

    std::size_t Size() const { return keys_.size(); }
    /** Key of a row whose name is one. */
    std::uint32_t KeyOf(std::size_t row) const { return keyOfRow_[row]; }

    /** Places in Sorted() of the names that end in the key. */
    struct Range {
        std::uint32_t begin = 0;
        std::uint32_t end = 0;
    };
    Range NamesEndingIn(std::uint32_t key) const { return {keys_[key].begin, keys_[key].end}; }
    /** Rows by reversed name. */
    const std::vector<std::uint32_t>& Sorted() const { return sorted_; }

    /**
     * Calls found(key) for every key at every place in the text but its end; a key may come more than once. The empty
     * key, in which every name ends, is left out.
     */
    template<typename Found>
    void FindInside(std::string_view text, Found found) const {
        for (std::size_t end = 1; end < text.size(); ++end)
            if (MayEndAt(text.substr(0, end)))
                for (auto key = LongestAtEnd(text.substr(0, end)); key != kNone; key = keys_[key].parent)
                    if (!NameOf(key).empty())
                        found(key);
    }

private:
    static constexpr std::uint32_t kNone = 0xFFFFFFFFU;
    static constexpr std::size_t kEnding = 4;

    struct Key {
        std::uint32_t begin = 0; ///< in sorted_; its own rows come first
        std::uint32_t end = 0;
        std::uint32_t parent = kNone; ///< the longest other key that it ends in
    };

    void SortRows();
    void LinkKeys(const std::vector<bool>& isKey);
    void NoteEnding(std::string_view name);
    std::string_view NameOf(std::uint32_t key) const { return names_[sorted_[keys_[key].begin]]; }
    bool MayEndAt(std::string_view text) const;
    std::uint32_t LongestAtEnd(std::string_view text) const;

    const std::vector<std::string_view>& names_;
    std::vector<std::uint32_t> sorted_;
    std::vector<Key> keys_; ///< in the order of sorted_
    std::vector<std::uint32_t> keyOfRow_;
    std::array<BitSet, kEnding + 1> endings_; ///< by length: hashes of the last bytes of keys, up to four of them
};

} // namespace kalvo
