#include "archive/TextDictionary.h"

#include "archive/TextFolding.h"

#include <array>
#include <cstring>
#include <deque>
#include <utility>

namespace kalvo {

namespace {

/** Eight bytes from `start` on as a number that sorts as they do. */
std::uint64_t Prefix(std::string_view key, std::size_t start) {
    std::uint64_t prefix = 0;
    for (std::size_t i = start; i < start + 8; ++i)
        prefix = prefix << 8 | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0U);
    return prefix;
}

} // namespace

std::uint64_t HashText(std::string_view text, std::uint64_t seed) {
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15U;
    std::uint64_t hash = seed ^ text.size();
    std::size_t at = 0;
    for (std::uint64_t piece = 0; at < text.size(); at += sizeof piece) {
        piece = 0;
        std::memcpy(&piece, text.data() + at, std::min(sizeof piece, text.size() - at));
        hash = (hash ^ piece) * kFactor;
        hash ^= hash >> 32;
    }
    return hash;
}

void TextOrder::Keep(const BitSet& numbers) {
    TextOrder kept{{}, BitSet(order.size())};
    bool first = true; // of those kept that share a key
    for (std::size_t i = 0; i < order.size(); ++i) {
        first = first || !tied.Test(i);
        if (!numbers.Test(order[i]))
            continue;
        if (!std::exchange(first, false))
            kept.tied.Set(kept.order.size());
        kept.order.push_back(order[i]);
    }
    *this = std::move(kept);
}

TextOrder SortedTexts(const FoldedTexts& texts) {
    constexpr std::size_t kWords = 3;
    struct Item {
        std::array<std::uint64_t, kWords> beginning;
        std::uint32_t index;
        bool longer; ///< the key goes on behind the beginning
    };
    std::vector<Item> items(texts.Size());
    std::vector<std::string_view> keys(texts.Size());
    std::deque<std::string> made;
    for (std::uint32_t i = 0; i < texts.Size(); ++i) {
        keys[i] = texts.At(i);
        if (!TextFolding::IsAscii(keys[i]))
            keys[i] = made.emplace_back(TextFolding::SortKey(keys[i]));
        items[i] = {{Prefix(keys[i], 0), Prefix(keys[i], 8), Prefix(keys[i], 16)}, i, keys[i].size() > 8 * kWords};
    }
    std::sort(items.begin(), items.end(), [&](const Item& left, const Item& right) {
        for (std::size_t word = 0; word < kWords; ++word)
            if (left.beginning[word] != right.beginning[word])
                return left.beginning[word] < right.beginning[word];
        const int order = left.longer || right.longer ? keys[left.index].compare(keys[right.index]) : 0;
        return order != 0 ? order < 0 : left.index < right.index;
    });
    TextOrder sorted{std::vector<std::uint32_t>(items.size()), BitSet(items.size())};
    for (std::size_t i = 0; i < items.size(); ++i) {
        sorted.order[i] = items[i].index;
        if (i > 0 && items[i].beginning == items[i - 1].beginning &&
            (!items[i].longer || keys[items[i].index] == keys[items[i - 1].index]))
            sorted.tied.Set(i);
    }
    return sorted;
}

TextDictionary::TextDictionary() : table_(64, 0) {}

std::size_t TextDictionary::PlaceOf(std::string_view folded) const {
    std::size_t place = HashText(folded) & (table_.size() - 1);
    while (table_[place] != 0 && values_.At(table_[place] - 1) != folded)
        place = (place + 1) & (table_.size() - 1);
    return place;
}

std::uint32_t TextDictionary::CodeOf(std::string_view folded) {
    const std::size_t place = PlaceOf(folded);
    if (table_[place] != 0)
        return table_[place] - 1;
    const std::uint32_t code = values_.Append(folded);
    table_[place] = code + 1;
    if (values_.Size() * 2 > table_.size())
        Grow();
    return code;
}

void TextDictionary::Grow() {
    table_.assign(table_.size() * 2, 0);
    for (std::uint32_t code = 0; code < values_.Size(); ++code)
        table_[PlaceOf(values_.At(code))] = code + 1;
}

void TextDictionary::Settle() {
    if (ranks_.Size() > 0) {
        ranks_.Extend(values_.Size(), [this](std::uint32_t left, std::uint32_t right) {
            return TextFolding::Compare(values_.At(left), values_.At(right));
        });
        return;
    }
    TextOrder sorted = SortedTexts(values_);
    ranks_.Assign(std::move(sorted.order), [&](std::size_t place) { return sorted.tied.Test(place); });
}

std::size_t TextDictionary::Bytes() const {
    return values_.Bytes() + ranks_.Bytes() + table_.capacity() * sizeof(table_[0]);
}

} // namespace kalvo
