#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace kalvo {

/** A growing row of bits with its words in reach. */
class BitSet {
public:
    explicit BitSet(std::size_t size = 0, bool value = false) { Resize(size, value); }

    void Resize(std::size_t size, bool value = false) {
        const std::size_t old = size_;
        size_ = size;
        words_.resize((size + 63) / 64, 0);
        if (value)
            for (std::size_t i = old; i < size; ++i)
                Set(i);
    }
    std::size_t Size() const { return size_; }
    bool Test(std::size_t i) const { return (words_[i / 64] >> (i % 64) & 1) != 0; }
    void Set(std::size_t i) { words_[i / 64] |= std::uint64_t{1} << (i % 64); }
    void Clear(std::size_t i) { words_[i / 64] &= ~(std::uint64_t{1} << (i % 64)); }

    std::size_t Count() const {
        std::size_t count = 0;
        for (const std::uint64_t word : words_)
            count += static_cast<std::size_t>(std::popcount(word));
        return count;
    }
    bool None() const {
        for (const std::uint64_t word : words_)
            if (word != 0)
                return false;
        return true;
    }
    /** Both of the same size. */
    BitSet& operator&=(const BitSet& other) {
        for (std::size_t i = 0; i < words_.size(); ++i)
            words_[i] &= other.words_[i];
        return *this;
    }
    BitSet& operator|=(const BitSet& other) {
        for (std::size_t i = 0; i < words_.size(); ++i)
            words_[i] |= other.words_[i];
        return *this;
    }
    std::vector<std::uint64_t>& Words() { return words_; }

    /** Calls visit(i) for every set bit, ascending. */
    template<typename Visit>
    void ForEach(Visit visit) const {
        for (std::size_t w = 0; w < words_.size(); ++w)
            for (std::uint64_t word = words_[w]; word != 0; word &= word - 1)
                visit(w * 64 + static_cast<std::size_t>(std::countr_zero(word)));
    }

private:
    std::size_t size_ = 0;
    std::vector<std::uint64_t> words_;
};

} // namespace kalvo
