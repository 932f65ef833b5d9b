#include "archive/FoldedTexts.h"

#include <algorithm>
#include <cstring>
#include <numeric>

namespace kalvo {

namespace {

/** The bytes looked for are among as many of a needle's first ones. */
constexpr std::size_t kProbed = 64;
constexpr std::size_t kPadding = ByteScan::kBlock + kProbed;
/** Masks made at one go: small enough to stay in the first cache. */
constexpr std::size_t kBlocksAtOnce = 64;

/** Every so many texts are counted. */
constexpr std::size_t kCounted = 4;

std::uint64_t Beginning(const char* text) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, text, sizeof bytes);
    return bytes;
}

} // namespace

FoldedTexts::FoldedTexts() : text_(kPadding, '\0'), offsets_{0} {}

std::uint32_t FoldedTexts::Append(std::string_view folded) {
    if (Size() % kCounted == 0)
        for (const char c : folded)
            ++frequency_[static_cast<unsigned char>(c)];
    return AppendUncounted(folded);
}

std::uint32_t FoldedTexts::AppendUncounted(std::string_view folded) {
    const std::size_t start = offsets_.back();
    const std::size_t needed = start + folded.size() + 1 + kPadding;
    if (text_.capacity() < needed)
        text_.reserve(needed + needed / 4);
    text_.resize(needed, '\0');
    std::copy(folded.begin(), folded.end(), text_.begin() + static_cast<std::ptrdiff_t>(start));
    offsets_.push_back(static_cast<std::uint32_t>(start + folded.size() + 1));
    return static_cast<std::uint32_t>(Size() - 1);
}

ByteScan::Probe FoldedTexts::RarestBytes(std::string_view needle) const {
    std::array<std::size_t, kProbed> places = {};
    const auto end = places.begin() + static_cast<std::ptrdiff_t>(std::min(kProbed, needle.size()));
    std::iota(places.begin(), end, std::size_t{0});
    const auto rarest = std::min(places.begin() + ByteScan::kBytes, end);
    std::partial_sort(places.begin(), rarest, end, [&](std::size_t left, std::size_t right) {
        return frequency_[static_cast<unsigned char>(needle[left])] <
               frequency_[static_cast<unsigned char>(needle[right])];
    });
    std::fill(rarest, places.begin() + ByteScan::kBytes, places[0]); // a short needle's bytes are looked for twice
    ByteScan::Probe probe;
    for (std::size_t k = 0; k < ByteScan::kBytes; ++k) {
        probe.offsets[k] = places[k];
        probe.bytes[k] = needle[places[k]];
    }
    return probe;
}

std::size_t FoldedTexts::TextAt(std::size_t position, std::size_t from) const {
    std::size_t step = 1;
    while (from + step < Size() && offsets_[from + step] <= position) {
        from += step;
        step *= 2;
    }
    const auto begin = offsets_.begin() + static_cast<std::ptrdiff_t>(from);
    const auto end = offsets_.begin() + static_cast<std::ptrdiff_t>(std::min(from + step, Size()));
    return static_cast<std::size_t>(std::upper_bound(begin, end, static_cast<std::uint32_t>(position)) -
                                    offsets_.begin()) -
           1;
}

void FoldedTexts::FindContaining(std::string_view needle, BitSet& hits) const {
    if (needle.empty()) {
        for (std::size_t i = 0; i < Size(); ++i)
            hits.Set(i);
        return;
    }
    const std::size_t used = offsets_.back();
    if (needle.size() > used)
        return;
    const ByteScan::Probe probe = RarestBytes(needle);
    // Most candidates differ in the first eight bytes already; these are compared without a call.
    std::uint64_t beginning = 0;
    std::uint64_t compared = 0;
    const std::size_t beginningSize = std::min(sizeof beginning, needle.size());
    std::memcpy(&beginning, needle.data(), beginningSize);
    std::memset(&compared, 0xFF, beginningSize);
    std::array<std::uint64_t, kBlocksAtOnce> masks;
    std::size_t text = 0;
    std::size_t next = 0; // everything before belongs to a text that is a hit already
    for (std::size_t start = 0; start < used; start += kBlocksAtOnce * ByteScan::kBlock) {
        const std::size_t blocks = std::min(kBlocksAtOnce, (used - start + ByteScan::kBlock - 1) / ByteScan::kBlock);
        ByteScan::FindProbe(text_.data() + start, blocks, probe, masks.data());
        for (std::size_t b = 0; b < blocks; ++b) {
            for (std::uint64_t mask = masks[b]; mask != 0; mask &= mask - 1) {
                const std::size_t found =
                    start + b * ByteScan::kBlock + static_cast<std::size_t>(std::countr_zero(mask));
                if (found < next || found + needle.size() > used ||
                    ((Beginning(text_.data() + found) ^ beginning) & compared) != 0 ||
                    std::memcmp(text_.data() + found, needle.data(), needle.size()) != 0)
                    continue;
                text = TextAt(found, text);
                hits.Set(text);
                next = offsets_[text + 1];
            }
        }
    }
}

void FoldedTexts::FindMatching(const LikePattern& pattern, BitSet& hits) const {
    if (pattern.IsContains()) {
        FindContaining(pattern.LongestPiece(), hits);
        return;
    }
    BitSet candidates(Size());
    FindContaining(pattern.LongestPiece(), candidates);
    candidates.ForEach([&](std::size_t i) {
        if (pattern.Matches(At(i)))
            hits.Set(i);
    });
}

FoldedTexts FoldedTexts::Reordered(std::span<const std::uint32_t> order) const {
    std::size_t length = 0;
    for (const std::uint32_t index : order)
        length += At(index).size() + 1;
    FoldedTexts reordered;
    reordered.text_.reserve(WithSpareRoom(length + kPadding));
    reordered.offsets_.reserve(WithSpareRoom(order.size()));
    for (const std::uint32_t index : order)
        reordered.AppendUncounted(At(index));
    reordered.frequency_ = frequency_;
    return reordered;
}

void FoldedTexts::Trim() {
    text_.shrink_to_fit();
    offsets_.shrink_to_fit();
}

} // namespace kalvo
