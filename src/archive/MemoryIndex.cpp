#include "archive/MemoryIndex.h"

#include "archive/PathOrder.h"
#include "archive/SplitPath.h"
#include "archive/TextFolding.h"

#include <future>
#include <tuple>
#include <utility>

namespace kalvo {

namespace {

/** Dead rows that are let be. */
constexpr std::size_t kDeadRows = 1000;

/** Short texts whose codes each column keeps at hand; a power of two. */
constexpr std::size_t kShortTexts = 1024;

std::uint32_t FoldedCode(TextDictionary& dictionary, std::string_view text) {
    std::string folded;
    TextFolding::AppendFolded(text, folded);
    return dictionary.CodeOf(folded);
}

constexpr std::size_t PlaceIn(ArchiveField field) {
    return static_cast<std::size_t>(field) - 1;
}

template<typename Value>
std::vector<Value> Picked(const std::vector<Value>& values, const std::vector<std::uint32_t>& rows) {
    std::vector<Value> picked;
    picked.reserve(WithSpareRoom(rows.size()));
    picked.resize(rows.size());
    std::transform(rows.begin(), rows.end(), picked.begin(), [&](std::uint32_t row) { return values[row]; });
    return picked;
}

} // namespace

std::uint32_t MemoryIndex::CodeFor(Column& column, std::string_view text) {
    if (text.size() < sizeof ShortText::text)
        return CodeOfShort(column, text);
    if (column.lastText != text) {
        column.lastCode = FoldedCode(column.dictionary, text);
        column.lastText = text;
    }
    return column.lastCode;
}

std::uint32_t MemoryIndex::CodeOfShort(Column& column, std::string_view text) {
    std::uint64_t bytes = text.size();
    for (const char c : text)
        bytes = bytes << 8 | static_cast<unsigned char>(c);
    column.shortTexts.resize(kShortTexts);
    ShortText& known = column.shortTexts[(bytes * 0x9E3779B97F4A7C15U) >> 32 & (kShortTexts - 1)];
    if (!known.used || known.text != bytes)
        known = {bytes, FoldedCode(column.dictionary, text), true};
    return known.code;
}

void MemoryIndex::Append(qint64 nr, const Texts& texts) {
    const auto row = static_cast<std::uint32_t>(ids_.size());
    ids_.push_back(nr);
    highest_ = std::max(highest_, nr);
    haveShortNumbers_ = haveShortNumbers_ && std::in_range<std::uint32_t>(nr);
    alive_.Resize(ids_.size());
    alive_.Set(row);
    std::string folded;
    TextFolding::AppendFolded(texts[PlaceIn(ArchiveField::Titel)], folded);
    titles_.Append(folded);
    const SplitPath path(texts[PlaceIn(ArchiveField::Pfad)]);
    folded.clear();
    TextFolding::AppendFolded(path.name, folded);
    names_.Append(folded);
    for (const ArchiveField field : kTextFields) {
        if (field == ArchiveField::Titel)
            continue;
        Column& column = ColumnOf(field);
        column.codes.push_back(CodeFor(column, field == ArchiveField::Pfad ? path.folder : texts[PlaceIn(field)]));
    }
}

void MemoryIndex::Put(const QList<TitleRecord>& records) {
    std::vector<qint64> numbers;
    numbers.reserve(static_cast<std::size_t>(records.size()));
    for (const TitleRecord& record : records)
        numbers.push_back(record.Nr);
    const std::vector<std::uint32_t> rows = RowsOf(numbers);
    for (std::size_t i = 0; i < rows.size(); ++i)
        PutAt(rows[i], records.at(static_cast<qsizetype>(i)));
}

void MemoryIndex::PutAt(std::uint32_t row, const TitleRecord& record) {
    std::array<QByteArray, kTextFields.size()> utf8;
    Texts texts;
    for (const ArchiveField field : kTextFields) {
        QByteArray& bytes = utf8[PlaceIn(field)];
        bytes = FieldText(record, field).toUtf8();
        texts[PlaceIn(field)] = {bytes.constData(), static_cast<std::size_t>(bytes.size())};
    }
    const bool isAlive = row != kNoRow && alive_.Test(row);
    if (row != kNoRow && UpdateInPlace(row, texts)) {
        alive_.Set(row);
        dead_ -= isAlive ? 0 : 1;
        return;
    }
    if (isAlive) {
        alive_.Clear(row);
        ++dead_;
    }
    Append(record.Nr, texts);
    AddPath(static_cast<std::uint32_t>(ids_.size() - 1));
}

void MemoryIndex::Remove(std::vector<qint64> numbers) {
    std::sort(numbers.begin(), numbers.end());
    alive_.ForEach([&](std::size_t row) {
        if (!std::binary_search(numbers.begin(), numbers.end(), ids_[row]))
            return;
        alive_.Clear(row);
        ++dead_;
    });
}

/** Of several rows of one number, all but the last are dead. */
std::vector<std::uint32_t> MemoryIndex::RowsOf(const std::vector<qint64>& numbers) const {
    std::vector<std::uint32_t> rows(numbers.size(), kNoRow);
    std::vector<std::pair<qint64, std::size_t>> sorted;
    for (std::size_t i = 0; i < numbers.size(); ++i)
        if (numbers[i] <= highest_)
            sorted.emplace_back(numbers[i], i);
    if (sorted.empty())
        return rows;
    std::sort(sorted.begin(), sorted.end());
    const auto below = [](const auto& entry, qint64 nr) { return entry.first < nr; };
    for (std::uint32_t row = 0; row < ids_.size(); ++row) {
        if (ids_[row] < sorted.front().first || ids_[row] > sorted.back().first)
            continue;
        const auto found = std::lower_bound(sorted.begin(), sorted.end(), ids_[row], below);
        if (found->first == ids_[row])
            rows[found->second] = row;
    }
    return rows;
}

/** Possible where nothing changes that the rows are ordered or found by. */
bool MemoryIndex::UpdateInPlace(std::size_t row, const Texts& texts) {
    const auto folded = [&](ArchiveField field) {
        std::string text;
        TextFolding::AppendFolded(texts[PlaceIn(field)], text);
        return text;
    };
    const Column& artists = ColumnOf(ArchiveField::Interpret);
    if (folded(ArchiveField::Titel) != titles_.At(row) || folded(ArchiveField::Pfad) != PathOf(row) ||
        folded(ArchiveField::Interpret) != artists.dictionary.Values().At(artists.codes[row]))
        return false;
    for (const ArchiveField field : kTextFields) {
        if (field == ArchiveField::Titel || field == ArchiveField::Pfad)
            continue;
        Column& column = ColumnOf(field);
        const std::uint32_t before = std::exchange(column.codes[row], column.dictionary.CodeOf(folded(field)));
        if ((field == ArchiveField::Album || field == ArchiveField::Extra3) && column.codes[row] != before)
            albums_.Clear();
    }
    return true;
}

std::string_view MemoryIndex::FolderOf(std::size_t row) const {
    const Column& folders = ColumnOf(ArchiveField::Pfad);
    return folders.dictionary.Values().At(folders.codes[row]);
}

std::string MemoryIndex::PathOf(std::size_t row) const {
    return std::string(FolderOf(row)).append(names_.At(row));
}

int MemoryIndex::ComparePaths(std::uint32_t left, std::uint32_t right) const {
    const std::vector<std::uint32_t>& folders = ColumnOf(ArchiveField::Pfad).codes;
    if (folders[left] == folders[right])
        return TextFolding::Compare(names_.At(left), names_.At(right));
    return TextFolding::Compare(PathOf(left), PathOf(right));
}

std::vector<std::uint32_t> MemoryIndex::DefaultOrder(std::span<const std::uint32_t> titleOrder) const {
    const Column& artists = ColumnOf(ArchiveField::Interpret);
    const SortRanks& ranks = artists.dictionary.Ranks();
    std::vector<std::uint32_t> next(ranks.Distinct() + 1, 0);
    const auto rankOf = [&](std::uint32_t row) { return ranks.Ranks()[artists.codes[row]]; };
    for (const std::uint32_t row : titleOrder)
        ++next[rankOf(row) + 1];
    std::partial_sum(next.begin(), next.end(), next.begin());
    std::vector<std::uint32_t> order(titleOrder.size());
    for (const std::uint32_t row : titleOrder)
        order[next[rankOf(row)]++] = row;
    return order;
}

void MemoryIndex::Settle() {
    const std::size_t ranked = order_.size();
    if (dead_ > ids_.size() / 4 + kDeadRows || ids_.size() > ranked * 2) {
        Pack();
        return;
    }
    for (Column& column : columns_)
        column.dictionary.Settle();
    if (ids_.size() == ranked)
        return;
    titleRanks_.Extend(ids_.size(), [this](std::uint32_t left, std::uint32_t right) {
        return TextFolding::Compare(titles_.At(left), titles_.At(right));
    });
    RankPaths();
    OrderNewRows();
    position_.resize(order_.size());
    for (std::uint32_t i = 0; i < order_.size(); ++i)
        position_[order_[i]] = i;
}

void MemoryIndex::OrderNewRows() {
    std::vector<std::uint32_t> added(ids_.size() - order_.size());
    std::iota(added.begin(), added.end(), static_cast<std::uint32_t>(order_.size()));
    const Column& artists = ColumnOf(ArchiveField::Interpret);
    const auto artistRanks = artists.dictionary.Ranks().Ranks();
    const auto titleRanks = titleRanks_.Ranks();
    const auto keyOf = [&](std::uint32_t row) {
        return std::tuple(artistRanks[artists.codes[row]], titleRanks[row], row);
    };
    const auto less = [&](std::uint32_t left, std::uint32_t right) { return keyOf(left) < keyOf(right); };
    std::sort(added.begin(), added.end(), less);
    order_ = Merged(order_, added, less);
}

void MemoryIndex::RankPaths() {
    pathRanks_.Extend(ids_.size(), [this](auto left, auto right) { return ComparePaths(left, right); });
}

void MemoryIndex::Pack() {
    auto titles = std::async(std::launch::async, [this] { return SortedTexts(titles_); });
    for (Column& column : columns_)
        column.dictionary.Settle();
    const Column& folders = ColumnOf(ArchiveField::Pfad);
    std::vector<std::uint32_t> pathOrder = PathOrder(folders.dictionary, folders.codes, names_);
    TextOrder titleOrder = titles.get();
    if (dead_ > 0) {
        std::erase_if(pathOrder, [this](std::uint32_t row) { return !alive_.Test(row); });
        titleOrder.Keep(alive_);
    }
    const std::vector<std::uint32_t> rows = DefaultOrder(titleOrder.order);
    std::vector<std::uint32_t> moved(ids_.size());
    for (std::uint32_t i = 0; i < rows.size(); ++i)
        moved[rows[i]] = i;
    Reorder(rows);
    auto table = std::async(std::launch::async, [this] { FillPathTable(); });
    titleRanks_.Assign(Picked(moved, titleOrder.order), [&](std::size_t place) { return titleOrder.tied.Test(place); });
    pathOrder = Picked(moved, pathOrder);
    pathRanks_.Assign(pathOrder, [&](std::size_t i) { return ComparePaths(pathOrder[i - 1], pathOrder[i]) == 0; });
    SortAlbums();
    table.get();
}

void MemoryIndex::Reorder(const std::vector<std::uint32_t>& rows) {
    auto others = std::async(std::launch::async, [&] {
        names_ = names_.Reordered(rows);
        for (Column& column : columns_) {
            if (!column.codes.empty())
                column.codes = Picked(column.codes, rows);
            column.dictionary.Trim();
        }
    });
    ids_ = Picked(ids_, rows);
    titles_ = titles_.Reordered(rows);
    others.get();
    alive_ = BitSet(rows.size(), true);
    dead_ = 0;
    packed_ = rows.size();
    order_.resize(rows.size());
    std::iota(order_.begin(), order_.end(), 0U);
    position_ = order_;
}

std::size_t MemoryIndex::Bytes() const {
    std::size_t bytes = ids_.capacity() * sizeof(qint64) + alive_.Size() / 8 + titles_.Bytes() + names_.Bytes() +
                        paths_.Bytes() + titleRanks_.Bytes() + pathRanks_.Bytes() + albums_.Bytes() +
                        (order_.capacity() + position_.capacity()) * sizeof(std::uint32_t);
    for (const Column& column : columns_)
        bytes += column.dictionary.Bytes() + column.codes.capacity() * sizeof(std::uint32_t) +
                 column.shortTexts.capacity() * sizeof(ShortText);
    return bytes;
}

} // namespace kalvo
