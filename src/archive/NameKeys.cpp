#include "archive/NameKeys.h"

#include <algorithm>
#include <cstring>
#include <numeric>

namespace kalvo {

namespace {

constexpr std::size_t kEndingBits = 20;

std::size_t EndingHash(std::string_view text, std::size_t length) {
    std::uint32_t bytes = 0;
    std::memcpy(&bytes, text.data() + text.size() - length, length);
    return static_cast<std::size_t>((bytes * std::uint64_t{0x9E3779B97F4A7C15U}) >> (64 - kEndingBits));
}

/** The last bytes from `skip` on, backwards, as a number that sorts as they do. */
std::uint64_t LastBytes(std::string_view text, std::size_t skip) {
    std::uint64_t bytes = 0;
    for (std::size_t i = skip; i < skip + sizeof bytes; ++i)
        bytes = bytes << 8 | (i < text.size() ? static_cast<unsigned char>(text[text.size() - 1 - i]) : 0U);
    return bytes;
}

bool ReversedLess(std::string_view left, std::string_view right) {
    return std::lexicographical_compare(left.rbegin(), left.rend(), right.rbegin(), right.rend(), [](char a, char b) {
        return static_cast<unsigned char>(a) < static_cast<unsigned char>(b);
    });
}

} // namespace

NameKeys::NameKeys(const std::vector<std::string_view>& names, const std::vector<bool>& isKey) : names_(names) {
    SortRows();
    LinkKeys(isKey);
}

void NameKeys::SortRows() {
    struct Item {
        std::uint64_t last;
        std::uint64_t before;
        std::uint32_t row;
    };
    std::vector<Item> items(names_.size());
    for (std::uint32_t row = 0; row < names_.size(); ++row)
        items[row] = {LastBytes(names_[row], 0), LastBytes(names_[row], sizeof(std::uint64_t)), row};
    std::sort(items.begin(), items.end(), [this](const Item& left, const Item& right) {
        if (left.last != right.last)
            return left.last < right.last;
        if (left.before != right.before)
            return left.before < right.before;
        return ReversedLess(names_[left.row], names_[right.row]);
    });
    sorted_.resize(items.size());
    std::transform(items.begin(), items.end(), sorted_.begin(), [](const Item& item) { return item.row; });
}

void NameKeys::LinkKeys(const std::vector<bool>& isKey) {
    keyOfRow_.assign(names_.size(), kNone);
    const auto count = static_cast<std::uint32_t>(sorted_.size());
    std::uint32_t open = kNone; // the longest key that the name looked at ends in; the others are its parents
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint32_t row = sorted_[i];
        for (; open != kNone && !names_[row].ends_with(NameOf(open)); open = keys_[open].parent)
            keys_[open].end = i;
        if (!isKey[row])
            continue;
        if (open == kNone || NameOf(open).size() != names_[row].size()) {
            keys_.push_back({i, count, open});
            open = static_cast<std::uint32_t>(keys_.size() - 1);
            NoteEnding(names_[row]);
        }
        keyOfRow_[row] = open;
    }
}

void NameKeys::NoteEnding(std::string_view name) {
    const std::size_t length = std::min(name.size(), kEnding);
    if (length == 0)
        return;
    if (endings_[length].Size() == 0)
        endings_[length].Resize(std::size_t{1} << kEndingBits);
    endings_[length].Set(EndingHash(name, length));
}

bool NameKeys::MayEndAt(std::string_view text) const {
    for (std::size_t length = 1; length <= std::min(kEnding, text.size()); ++length)
        if (endings_[length].Size() > 0 && endings_[length].Test(EndingHash(text, length)))
            return true;
    return false;
}

/** A key that the text ends in is the last key before it in reversed order, or one of that one's parents. */
std::uint32_t NameKeys::LongestAtEnd(std::string_view text) const {
    std::uint32_t begin = 0;
    std::uint32_t end = static_cast<std::uint32_t>(keys_.size());
    while (begin < end) {
        const std::uint32_t middle = begin + (end - begin) / 2;
        if (ReversedLess(text, NameOf(middle)))
            end = middle;
        else
            begin = middle + 1;
    }
    std::uint32_t key = begin == 0 ? kNone : begin - 1;
    while (key != kNone && !text.ends_with(NameOf(key)))
        key = keys_[key].parent;
    return key;
}

} // namespace kalvo
