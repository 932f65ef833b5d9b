// The part of MemoryIndex that brings rows into the order that a record source asks for.

#include "archive/MemoryIndex.h"
#include "archive/RankSort.h"

#include <memory>

namespace kalvo {

namespace {

constexpr RecordOrder kByTrack{ArchiveField::Extra3, false};

/** Sorts each part of the numbers, which end at these places, by its ranks, of which there are so many. */
void SortWithin(std::span<const RankedNumber> parted, std::span<const std::uint32_t> ends, std::size_t distinct,
                std::span<qint64> sorted) {
    InHalves(ends.size(), parted.size(), [=](std::size_t, std::size_t begin, std::size_t end) {
        GroupSorter sorter(distinct);
        std::size_t place = begin == 0 ? 0 : ends[begin - 1];
        for (std::size_t part = begin; part < end; place = ends[part++])
            sorter.Sort(parted.subspan(place, ends[part] - place), sorted.subspan(place, ends[part] - place));
    });
}

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

} // namespace

std::vector<qint64> MemoryIndex::Select(const RecordSource& source) {
    Settle();
    QList<RecordOrder> order = WithoutRepeats(source.order);
    DropDefaultTail(order);
    if (source.conditions.isEmpty() && IsPacked())
        if (std::optional<std::vector<qint64>> ready = AllReady(order))
            return *std::move(ready);
    std::vector<std::uint32_t> rows = InDefaultOrder(Matching(source.conditions));
    return order.isEmpty() ? NumbersOf(rows) : Sorted(order, std::move(rows));
}

/** All titles in an order that has been made before. */
std::optional<std::vector<qint64>> MemoryIndex::AllReady(const QList<RecordOrder>& order) const {
    if (order.isEmpty())
        return std::nullopt;
    const RecordOrder& first = order.first();
    if (order.size() == 1 && first.field == ArchiveField::Titel)
        return AllRanked(titleRanks_, first.descending);
    if (order.size() == 1 && first.field == ArchiveField::Pfad)
        return AllRanked(pathRanks_, first.descending);
    if (order.size() == 2 && first.field == ArchiveField::Album && order.last() == kByTrack && !albums_.IsEmpty())
        return albums_.All(first.descending);
    return std::nullopt;
}

/** Sorting by album takes two passes: too many for the moment between a click on its head and the rows. */
void MemoryIndex::SortAlbums() {
    albums_.Clear();
    std::vector<std::uint32_t> rows(ids_.size());
    std::iota(rows.begin(), rows.end(), 0U);
    const RecordOrder byAlbum{ArchiveField::Album, false};
    std::vector<std::uint32_t> numberRanks;
    const RankedKey album = KeyOf(byAlbum, numberRanks);
    std::vector<std::uint32_t> ends(album.distinct, 0);
    for (const std::uint32_t row : rows)
        ++ends[album.RankOf(row)];
    std::partial_sum(ends.begin(), ends.end(), ends.begin());
    albums_.Assign(Sorted({byAlbum, kByTrack}, std::move(rows)), std::move(ends));
}

/** Every row by its own rank, whose order is there already; equal ones stay in the default order. */
std::vector<qint64> MemoryIndex::AllRanked(const SortRanks& ranks, bool descending) const {
    const auto order = ranks.Order();
    std::vector<qint64> numbers(order.size());
    InHalves(order.size(), order.size(), [&](std::size_t, std::size_t begin, std::size_t end) {
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
 * The numbers of the rows, which come in the default order. The last field sorts first; but the second one sorts the
 * parts that the first one leaves, which are small and lie together in memory, if the numbers have room there.
 */
std::vector<qint64> MemoryIndex::Sorted(const QList<RecordOrder>& order, std::vector<std::uint32_t> rows) const {
    std::vector<std::uint32_t> numberRanks; // a field is named once
    const auto rowAt = [&rows](std::size_t i) { return rows[i]; };
    const auto numberAt = [this, &rows](std::size_t i) { return ids_[rows[i]]; };
    const auto rankBy = [&rows](const RankedKey& key) {
        return [&rows, &key](std::size_t i) { return key.RankOf(rows[i]); };
    };
    const bool inParts = order.size() > 1 && haveShortNumbers_;
    for (qsizetype i = order.size() - 1; i > (inParts ? 1 : 0); --i) {
        const RankedKey key = KeyOf(order.at(i), numberRanks);
        std::vector<std::uint32_t> sorted(rows.size());
        SortByRank(key.distinct, rankBy(key), rowAt, std::span(sorted));
        rows = std::move(sorted);
    }
    std::vector<qint64> numbers(rows.size());
    const RankedKey first = KeyOf(order.first(), numberRanks);
    if (!inParts) {
        SortByRank(first.distinct, rankBy(first), numberAt, std::span(numbers));
        return numbers;
    }
    const RankedKey second = KeyOf(order.at(1), numberRanks);
    const auto memory = std::make_unique_for_overwrite<RankedNumber[]>(rows.size());
    const std::span<RankedNumber> parted(memory.get(), rows.size());
    const auto ends = SortByRank(
        first.distinct, rankBy(first),
        [&, rank = rankBy(second)](std::size_t i) {
            return RankedNumber{static_cast<std::uint32_t>(numberAt(i)), rank(i)};
        },
        parted);
    SortWithin(parted, ends, second.distinct, numbers);
    return numbers;
}

std::vector<qint64> MemoryIndex::NumbersOf(const std::vector<std::uint32_t>& rows) const {
    std::vector<qint64> numbers(rows.size());
    std::transform(rows.begin(), rows.end(), numbers.begin(), [this](std::uint32_t row) { return ids_[row]; });
    return numbers;
}

} // namespace kalvo
