#include "archive/PatternSweep.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <utility>

namespace kalvo {

namespace {

constexpr std::size_t kGram = 4;
constexpr std::size_t kGramBits = 16;
constexpr std::size_t kBeginningBits = 17;
constexpr std::size_t kFilterBits = 20;
constexpr std::size_t kTableBits = 32; ///< more than a table of windows has slots
/** Every so many texts are counted. */
constexpr std::size_t kSample = 16;
constexpr std::size_t kLongest = 8;

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

std::size_t WindowLength(std::string_view piece) {
    return std::bit_floor(std::min(piece.size(), kLongest));
}

} // namespace

PatternSweep::PatternSweep(const FoldedTexts& sample) : beginnings_(std::size_t{1} << kBeginningBits) {
    CountGrams(sample);
}

void PatternSweep::CountGrams(const FoldedTexts& sample) {
    grams_.assign(std::size_t{1} << kGramBits, 0);
    for (std::size_t i = 0; i < sample.Size(); i += kSample) {
        const std::string_view text = sample.At(i);
        for (std::size_t at = 0; at + kGram <= text.size(); ++at)
            ++grams_[HashOf(BytesAt(text.data() + at, kGram), kGramBits)];
    }
}

/** How often a window occurs at most; one shorter than a gram counts as the most frequent. */
std::uint32_t PatternSweep::RarityOf(std::string_view window) const {
    std::uint32_t rarity = std::numeric_limits<std::uint32_t>::max();
    for (std::size_t at = 0; at + kGram <= window.size(); ++at)
        rarity = std::min(rarity, grams_[HashOf(BytesAt(window.data() + at, kGram), kGramBits)]);
    return rarity;
}

PatternSweep::Window PatternSweep::RarestWindow(std::string_view piece) const {
    const std::size_t length = WindowLength(piece);
    Window best{0, RarityOf(piece.substr(0, length))};
    for (std::size_t at = 1; at + length <= piece.size(); ++at)
        if (const std::uint32_t rarity = RarityOf(piece.substr(at, length)); rarity < best.rarity)
            best = {at, rarity};
    return best;
}

std::uint32_t PatternSweep::Add(const std::string& folded) {
    const auto number = static_cast<std::uint32_t>(patterns_.size());
    const auto [known, added] = numbers_.try_emplace(folded, number);
    if (!added)
        return known->second;
    const LikePattern& pattern = patterns_.emplace_back(folded, true);
    const std::string* rarest = nullptr;
    Window window;
    for (const std::string& piece : pattern.Pieces()) {
        const Window found = RarestWindow(piece);
        if (rarest == nullptr || found.rarity < window.rarity ||
            (found.rarity == window.rarity && piece.size() > rarest->size())) {
            rarest = &piece;
            window = found;
        }
    }
    if (rarest == nullptr)
        anywhere_.push_back(number);
    else
        AddPiece(*rarest, window.at, number);
    return number;
}

void PatternSweep::AddPiece(const std::string& piece, std::size_t windowAt, std::uint32_t pattern) {
    const auto number = static_cast<std::uint32_t>(pieces_.size());
    const auto [known, added] = pieceNumbers_.try_emplace(piece, number);
    if (!added) {
        pieces_[known->second].patterns.push_back(pattern);
        return;
    }
    const std::size_t length = WindowLength(piece);
    const std::uint64_t window = BytesAt(piece.data() + windowAt, length);
    Windows& windows = windows_[static_cast<std::size_t>(std::countr_zero(length))];
    if (windows.used * 2 >= windows.slots.size())
        windows.Grow();
    Windows::Slot& slot = windows.slots[windows.PlaceOf(window)];
    windows.used += slot.piece == kNone ? 1 : 0;
    pieces_.push_back({piece, windowAt, slot.piece, {pattern}});
    slot = {window, number};
    windows.filter.Set(HashOf(window, kFilterBits));
    if (length == kLongest)
        beginnings_.Set(HashOf(window & FirstBytes(kGram), kBeginningBits));
}

std::size_t PatternSweep::Windows::PlaceOf(std::uint64_t window) const {
    std::size_t place = HashOf(window, kTableBits) & (slots.size() - 1);
    while (slots[place].piece != kNone && slots[place].window != window)
        place = (place + 1) & (slots.size() - 1);
    return place;
}

void PatternSweep::Windows::Grow() {
    filter.Resize(std::size_t{1} << kFilterBits);
    const std::vector<Slot> old = std::exchange(slots, std::vector<Slot>(std::max<std::size_t>(64, slots.size() * 2)));
    for (const Slot& slot : old)
        if (slot.piece != kNone)
            slots[PlaceOf(slot.window)] = slot;
}

void PatternSweep::FindIn(std::string_view text, std::vector<std::uint32_t>& found) const {
    found.insert(found.end(), anywhere_.begin(), anywhere_.end());
    for (std::size_t at = 0; at < text.size(); ++at) {
        // The memory goes on behind the text; a window beyond its end is refused by the comparison.
        const std::uint64_t next = BytesAt(text.data() + at, kLongest);
        for (std::size_t size = 0; size + 1 < kSizes; ++size)
            if (windows_[size].used > 0)
                TryWindow(windows_[size], next & FirstBytes(std::size_t{1} << size), text, at, found);
        if (beginnings_.Test(HashOf(next & FirstBytes(kGram), kBeginningBits)))
            TryWindow(windows_.back(), next, text, at, found);
    }
}

void PatternSweep::TryWindow(const Windows& windows, std::uint64_t window, std::string_view text, std::size_t at,
                             std::vector<std::uint32_t>& found) const {
    if (!windows.filter.Test(HashOf(window, kFilterBits)))
        return;
    for (std::uint32_t number = windows.slots[windows.PlaceOf(window)].piece; number != kNone;
         number = pieces_[number].next) {
        const Piece& piece = pieces_[number];
        if (at >= piece.windowAt && text.substr(at - piece.windowAt).starts_with(piece.text))
            found.insert(found.end(), piece.patterns.begin(), piece.patterns.end());
    }
}

} // namespace kalvo
