// The part of MemoryIndex that answers record sources.

#include "archive/InHalves.h"
#include "archive/MemoryIndex.h"
#include "archive/TextFolding.h"

#include <charconv>

namespace kalvo {

namespace {

/** Rows from which on a second thread helps to search them. */
constexpr std::size_t kWorthSearchThread = 50'000;

/** Between artist and title. */
constexpr std::string_view kSeparator = " - ";

/** Whether the needle can be found in parts before and behind the separator, or in it. */
bool MayCrossSeparator(std::string_view needle) {
    for (std::size_t begin = 1; begin < kSeparator.size(); ++begin)
        if (needle.starts_with(kSeparator.substr(begin)))
            return true;
    for (std::size_t begin = 0; begin < needle.size(); ++begin)
        if (needle.substr(begin).starts_with(kSeparator.substr(0, needle.size() - begin)))
            return true;
    return false;
}

} // namespace

BitSet MemoryIndex::Matching(const QList<RecordCondition>& conditions) const {
    if (conditions.isEmpty())
        return alive_;
    std::vector<std::pair<ArchiveField, LikePattern>> patterns;
    for (const RecordCondition& condition : conditions) {
        const auto& [field, pattern] =
            patterns.emplace_back(condition.field, LikePattern(TextFolding::Folded(condition.text), condition.like));
        if (pattern.IsContains() && pattern.LongestPiece().empty())
            return alive_;
    }
    std::array<BitSet, 2> found{BitSet(ids_.size()), BitSet(ids_.size())};
    InHalves(
        patterns.size(), ids_.size(),
        [&](std::size_t half, std::size_t begin, std::size_t end) {
            for (std::size_t i = begin; i < end; ++i)
                MatchField(patterns[i].first, patterns[i].second, found.at(half));
        },
        kWorthSearchThread);
    found.front() |= found.back();
    return found.front() &= alive_;
}

void MemoryIndex::MatchField(ArchiveField field, const LikePattern& pattern, BitSet& rows) const {
    if (field == ArchiveField::Nr) {
        MatchNumber(pattern, rows);
    } else if (field == ArchiveField::Titel) {
        titles_.FindMatching(pattern, rows);
    } else if (field == ArchiveField::Pfad) {
        MatchPath(pattern, rows);
    } else {
        const Column& column = ColumnOf(field);
        BitSet codes(column.dictionary.Values().Size());
        column.dictionary.Values().FindMatching(pattern, codes);
        MatchCodes(column, codes, rows);
    }
}

void MemoryIndex::MatchCodes(const Column& column, const BitSet& codes, BitSet& rows) const {
    if (codes.None())
        return;
    std::vector<std::uint8_t> matches(codes.Size(), 0);
    codes.ForEach([&](std::size_t code) { matches[code] = 1; });
    const std::size_t count = column.codes.size();
    for (std::size_t start = 0; start < count; start += 64) {
        std::uint64_t word = 0;
        const std::size_t end = std::min<std::size_t>(64, count - start);
        for (std::size_t i = 0; i < end; ++i)
            word |= std::uint64_t{matches[column.codes[start + i]]} << i;
        rows.Words()[start / 64] |= word;
    }
}

void MemoryIndex::MatchPath(const LikePattern& pattern, BitSet& rows) const {
    if (pattern.IsContains()) {
        PathContains(pattern.LongestPiece(), rows);
        return;
    }
    BitSet candidates(ids_.size());
    PathContains(pattern.LongestPiece(), candidates);
    candidates.ForEach([&](std::size_t row) {
        if (pattern.Matches(PathOf(row)))
            rows.Set(row);
    });
}

void MemoryIndex::PathContains(std::string_view piece, BitSet& rows) const {
    const Column& folders = ColumnOf(ArchiveField::Pfad);
    const FoldedTexts& folderTexts = folders.dictionary.Values();
    BitSet inside(folderTexts.Size());
    folderTexts.FindContaining(piece, inside);
    MatchCodes(folders, inside, rows);

    const std::size_t head = piece.find_last_of("/\\") + 1;
    if (head == 0) {
        names_.FindContaining(piece, rows);
        return;
    }
    BitSet ending(folderTexts.Size());
    folderTexts.FindContaining(piece.substr(0, head), ending);
    ending.ForEach([&](std::size_t code) {
        if (!folderTexts.At(code).ends_with(piece.substr(0, head)))
            ending.Clear(code);
    });
    BitSet crossing(ids_.size());
    MatchCodes(folders, ending, crossing);
    crossing.ForEach([&](std::size_t row) {
        if (names_.At(row).starts_with(piece.substr(head)))
            rows.Set(row);
    });
}

void MemoryIndex::MatchNumber(const LikePattern& pattern, BitSet& rows) const {
    std::array<char, 24> digits;
    for (std::size_t row = 0; row < ids_.size(); ++row) {
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), ids_[row]).ptr;
        if (pattern.Matches({digits.data(), static_cast<std::size_t>(end - digits.data())}))
            rows.Set(row);
    }
}

std::vector<qint64> MemoryIndex::NumbersHolding(const QString& text) const {
    const std::string needle = TextFolding::Folded(text);
    const Column& artists = ColumnOf(ArchiveField::Interpret);
    BitSet rows(ids_.size());
    titles_.FindContaining(needle, rows);
    BitSet codes(artists.dictionary.Values().Size());
    artists.dictionary.Values().FindContaining(needle, codes);
    MatchCodes(artists, codes, rows);
    rows &= alive_;
    const bool crosses = MayCrossSeparator(needle);
    std::vector<qint64> numbers;
    alive_.ForEach([&](std::size_t row) {
        if (rows.Test(row) || (crosses && HeadingOf(row).find(needle) != std::string::npos))
            numbers.push_back(ids_[row]);
    });
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

std::string MemoryIndex::HeadingOf(std::size_t row) const {
    const Column& artists = ColumnOf(ArchiveField::Interpret);
    return std::string(artists.dictionary.Values().At(artists.codes[row])).append(kSeparator).append(titles_.At(row));
}

std::vector<std::uint32_t> MemoryIndex::InDefaultOrder(const BitSet& rows) const {
    const std::size_t count = rows.Count();
    if (count == ids_.size())
        return order_;
    std::vector<std::uint32_t> found;
    found.reserve(count);
    if (count < ids_.size() / 16) {
        rows.ForEach([&](std::size_t row) { found.push_back(static_cast<std::uint32_t>(row)); });
        const auto before = [this](std::uint32_t left, std::uint32_t right) {
            return position_[left] < position_[right];
        };
        if (!std::is_sorted(found.begin(), found.end(), before)) // packed rows are in order
            std::sort(found.begin(), found.end(), before);
        return found;
    }
    for (const std::uint32_t row : order_)
        if (rows.Test(row))
            found.push_back(row);
    return found;
}

} // namespace kalvo
