// The part of MemoryIndex that answers record sources.

#include "archive/MemoryIndex.h"
#include "archive/TextFolding.h"

#include <charconv>
#include <future>
#include <utility>

namespace kalvo {

namespace {

/** A field that has been sorted by before decides nothing any more. */
QList<RecordOrder> WithoutRepeats(const QList<RecordOrder>& order) {
    QList<RecordOrder> kept;
    for (const RecordOrder& key : order) {
        const bool repeated = std::any_of(kept.begin(), kept.end(),
                                          [&](const RecordOrder& earlier) { return earlier.field == key.field; });
        if (!repeated)
            kept.append(key);
    }
    return kept;
}

/** Drops keys at the end that the default order, from which sorting starts, sees to already. */
void DropDefaultTail(QList<RecordOrder>& order) {
    const RecordOrder title{ArchiveField::Titel, false};
    if (order.size() > 1 && order.last() == title && order.at(order.size() - 2).field == ArchiveField::Interpret)
        order.removeLast();
    if (!order.isEmpty() && order.last() == RecordOrder{ArchiveField::Interpret, false})
        order.removeLast();
}

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

/** Rows that are worth a second thread. */
constexpr std::size_t kWorthThread = 150'000;

/** Calls work(half, begin, end) for half 0 and half 1 of so many rows; at the same time where they are many. */
template<typename Work>
void InHalves(std::size_t rows, Work work) {
    const std::size_t middle = rows < kWorthThread ? rows : rows / 2;
    std::future<void> second;
    if (middle < rows)
        second = std::async(work, 1, middle, rows); // runs in get() when there is no thread to be had
    work(0, 0, middle);
    if (second.valid())
        second.get();
}

/** A row with its rank in the field that it is sorted by next. */
struct RankedRow {
    std::uint32_t row;
    std::uint32_t rank;
};

/** Stable. distinct: number of ranks; valueOf(row): what is put into its place. */
template<typename Value, typename ValueOf>
std::vector<Value> SortedByRank(std::vector<RankedRow> rows, std::size_t distinct, ValueOf valueOf) {
    std::vector<Value> sorted(rows.size());
    if (rows.size() < distinct / 8) {
        std::stable_sort(rows.begin(), rows.end(),
                         [](const RankedRow& left, const RankedRow& right) { return left.rank < right.rank; });
        std::transform(rows.begin(), rows.end(), sorted.begin(),
                       [&](const RankedRow& one) { return valueOf(one.row); });
        return sorted;
    }
    std::array<std::vector<std::uint32_t>, 2> next; // by half: how many rows a rank has, then where its next one goes
    next.fill(std::vector<std::uint32_t>(distinct, 0));
    InHalves(rows.size(), [&](std::size_t half, std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i)
            ++next[half][rows[i].rank];
    });
    std::uint32_t place = 0;
    for (std::size_t rank = 0; rank < distinct; ++rank)
        for (std::vector<std::uint32_t>& half : next)
            place += std::exchange(half[rank], place);
    InHalves(rows.size(), [&](std::size_t half, std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i)
            sorted[next[half][rows[i].rank]++] = valueOf(rows[i].row);
    });
    return sorted;
}

} // namespace

std::vector<qint64> MemoryIndex::Select(const RecordSource& source) {
    Settle();
    QList<RecordOrder> order = WithoutRepeats(source.order);
    DropDefaultTail(order);
    const bool wholeTexts =
        order.size() == 1 && (order.first().field == ArchiveField::Titel || order.first().field == ArchiveField::Pfad);
    if (source.conditions.isEmpty() && wholeTexts && IsPacked())
        return AllRanked(order.first().field == ArchiveField::Titel ? titleRanks_ : pathRanks_,
                         order.first().descending);
    return Sorted(order, InDefaultOrder(Matching(source.conditions)));
}

/** Every row by its own rank, whose order is there already; equal ones stay in the default order. */
std::vector<qint64> MemoryIndex::AllRanked(const SortRanks& ranks, bool descending) const {
    const auto order = ranks.Order();
    std::vector<qint64> numbers(order.size());
    InHalves(order.size(), [&](std::size_t, std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i)
            numbers[descending ? order.size() - 1 - i : i] = ids_[order[i]];
    });
    for (std::size_t end = order.size(), begin = 0; descending && end > 0; end = begin) {
        begin = end - 1;
        while (ranks.IsTied(begin))
            --begin;
        if (end - begin > 1)
            std::reverse(numbers.end() - static_cast<std::ptrdiff_t>(end),
                         numbers.end() - static_cast<std::ptrdiff_t>(begin));
    }
    return numbers;
}

BitSet MemoryIndex::Matching(const QList<RecordCondition>& conditions) const {
    if (conditions.isEmpty())
        return alive_;
    BitSet rows(ids_.size());
    for (const RecordCondition& condition : conditions) {
        const LikePattern pattern(TextFolding::Folded(condition.text), condition.like);
        if (pattern.IsContains() && pattern.LongestPiece().empty())
            return alive_;
        MatchField(condition.field, pattern, rows);
    }
    return rows &= alive_;
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

std::vector<std::uint32_t> MemoryIndex::NumberRanks() const {
    std::vector<std::uint32_t> rows(ids_.size());
    std::iota(rows.begin(), rows.end(), 0U);
    std::sort(rows.begin(), rows.end(),
              [this](std::uint32_t left, std::uint32_t right) { return ids_[left] < ids_[right]; });
    std::vector<std::uint32_t> ranks(rows.size());
    for (std::uint32_t i = 0; i < rows.size(); ++i)
        ranks[rows[i]] = i;
    return ranks;
}

MemoryIndex::RankedKey MemoryIndex::KeyOf(const RecordOrder& key, std::vector<std::uint32_t>& numberRanks) const {
    if (key.field == ArchiveField::Nr) {
        numberRanks = NumberRanks();
        return {{}, numberRanks, numberRanks.size(), key.descending};
    }
    if (key.field == ArchiveField::Titel)
        return {{}, titleRanks_.Ranks(), titleRanks_.Distinct(), key.descending};
    if (key.field == ArchiveField::Pfad)
        return {{}, pathRanks_.Ranks(), pathRanks_.Distinct(), key.descending};
    const Column& column = ColumnOf(key.field);
    return {column.codes, column.dictionary.Ranks().Ranks(), column.dictionary.Ranks().Distinct(), key.descending};
}

/**
 * The numbers of the rows, which come in the default order. Sorted by the last field first; the ranks of the next one
 * are fetched while the rows still stand in an order in which that is quick.
 */
std::vector<qint64> MemoryIndex::Sorted(const QList<RecordOrder>& order, const std::vector<std::uint32_t>& rows) const {
    std::vector<std::uint32_t> numberRanks; // a field is named once
    std::vector<RankedKey> keys;
    for (auto key = order.crbegin(); key != order.crend(); ++key)
        keys.push_back(KeyOf(*key, numberRanks));
    if (keys.empty())
        return NumbersOf(rows);
    const auto rankedBy = [&keys](std::size_t key) {
        return [&keys, key](std::uint32_t row) { return RankedRow{row, keys[key].RankOf(row)}; };
    };
    std::vector<RankedRow> ranked(rows.size());
    InHalves(rows.size(), [&, rank = rankedBy(0)](std::size_t, std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i)
            ranked[i] = rank(rows[i]);
    });
    for (std::size_t key = 0; key + 1 < keys.size(); ++key)
        ranked = SortedByRank<RankedRow>(std::move(ranked), keys[key].distinct, rankedBy(key + 1));
    return SortedByRank<qint64>(std::move(ranked), keys.back().distinct,
                                [this](std::uint32_t row) { return ids_[row]; });
}

std::vector<qint64> MemoryIndex::NumbersOf(const std::vector<std::uint32_t>& rows) const {
    std::vector<qint64> numbers(rows.size());
    std::transform(rows.begin(), rows.end(), numbers.begin(), [this](std::uint32_t row) { return ids_[row]; });
    return numbers;
}

} // namespace kalvo
