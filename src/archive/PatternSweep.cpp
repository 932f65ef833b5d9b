#include "archive/PatternSweep.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

namespace kalvo {

namespace {

constexpr std::size_t kGram = 4;
constexpr std::size_t kGramBits = 16;
constexpr std::size_t kFilterBits = 20;
/** Every so many texts are counted. */
constexpr std::size_t kSample = 16;
constexpr std::size_t kTextsBetween = 4096;

std::size_t HashOf(std::uint64_t bytes, std::size_t bits) {
    return static_cast<std::size_t>((bytes * 0x9E3779B97F4A7C15U) >> (64 - bits));
}

/** The first bytes as a number, the first one lowest, `length` of them at most 8. */
std::uint64_t BytesAt(const char* text, std::size_t length) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, text, length);
    return bytes;
}

static_assert(std::endian::native == std::endian::little, "windows are cut from the low end");

constexpr std::uint64_t FirstBytes(std::size_t length) {
    return ~std::uint64_t{0} >> (64 - 8 * length);
}

} // namespace

PatternSweep::PatternSweep(const FoldedTexts& texts) : texts_(texts) {
    CountGrams();
}

void PatternSweep::CountGrams() {
    grams_.assign(std::size_t{1} << kGramBits, 0);
    for (std::size_t i = 0; i < texts_.Size(); i += kSample) {
        const std::string_view text = texts_.At(i);
        for (std::size_t at = 0; at + kGram <= text.size(); ++at)
            ++grams_[HashOf(BytesAt(text.data() + at, kGram), kGramBits)];
    }
}

std::uint32_t PatternSweep::Add(const std::string& folded) {
    const auto number = static_cast<std::uint32_t>(patterns_.size());
    const auto [known, added] = numbers_.try_emplace(folded, number);
    if (added) {
        patterns_.emplace_back(folded, true);
        AddWindow(number);
    }
    return known->second;
}

void PatternSweep::AddWindow(std::uint32_t pattern) {
    const std::string_view window = RarestWindow(patterns_[pattern]);
    if (window.empty()) {
        unanchored_.push_back(pattern);
        return;
    }
    const std::uint64_t bytes = BytesAt(window.data(), window.size());
    BitSet& filter = filters_[window.size()];
    if (filter.Size() == 0)
        filter.Resize(std::size_t{1} << kFilterBits);
    filter.Set(HashOf(bytes, kFilterBits));
    windows_[window.size()][bytes].push_back(pattern);
}

std::string_view PatternSweep::RarestWindow(const LikePattern& pattern) const {
    std::string_view best;
    std::uint32_t rarity = std::numeric_limits<std::uint32_t>::max();
    for (const std::string_view piece : pattern.Pieces()) {
        const std::size_t length = std::min(piece.size(), kLongest);
        for (std::size_t at = 0; at + length <= piece.size(); ++at) {
            const std::string_view window = piece.substr(at, length);
            const std::uint32_t count = RarityOf(window);
            if (best.empty() || count < rarity || (count == rarity && length > best.size())) {
                best = window;
                rarity = count;
            }
        }
    }
    return best;
}

/** How often a window occurs at most; shorter ones than a gram count as the most frequent. */
std::uint32_t PatternSweep::RarityOf(std::string_view window) const {
    std::uint32_t rarity = std::numeric_limits<std::uint32_t>::max();
    for (std::size_t at = 0; at + kGram <= window.size(); ++at)
        rarity = std::min(rarity, grams_[HashOf(BytesAt(window.data() + at, kGram), kGramBits)]);
    return rarity;
}

void PatternSweep::Try(std::uint32_t pattern, std::uint32_t text) {
    if (tried_[pattern] == text + 1)
        return;
    tried_[pattern] = text + 1;
    if (patterns_[pattern].Matches(texts_.At(text)))
        found_[pattern].push_back(text);
}

void PatternSweep::TryAt(std::uint64_t window, std::size_t length, std::uint32_t text) {
    if (!filters_[length].Test(HashOf(window, kFilterBits)))
        return;
    const auto known = windows_[length].find(window);
    if (known == windows_[length].end())
        return;
    for (const std::uint32_t pattern : known->second)
        Try(pattern, text);
}

std::vector<std::vector<std::uint32_t>> PatternSweep::Run(const std::function<bool(std::size_t)>& goOn) {
    tried_.assign(patterns_.size(), 0);
    found_.assign(patterns_.size(), {});
    std::vector<std::size_t> lengths;
    for (std::size_t length = 1; length <= kLongest; ++length)
        if (filters_[length].Size() > 0)
            lengths.push_back(length);
    for (std::uint32_t text = 0; text < texts_.Size(); ++text) {
        if (text % kTextsBetween == 0 && !goOn(text))
            break;
        const std::string_view bytes = texts_.At(text);
        for (std::size_t at = 0; at < bytes.size(); ++at) {
            // The texts' memory goes on behind the last one; a window beyond a text's end is refused by the comparison.
            const std::uint64_t next = BytesAt(bytes.data() + at, kLongest);
            for (const std::size_t length : lengths)
                TryAt(next & FirstBytes(length), length, text);
        }
        for (const std::uint32_t pattern : unanchored_)
            Try(pattern, text);
    }
    return std::move(found_);
}

} // namespace kalvo
