// The part of MemoryIndex that finds titles by their paths.

#include "archive/MemoryIndex.h"
#include "archive/SplitPath.h"
#include "archive/TextFolding.h"

namespace kalvo {

namespace {

/** Rows that are compared one by one, rather than ranked first or searched for. */
constexpr std::size_t kSingly = 4096;

std::uint32_t HashPath(std::uint64_t hashOfFolder, std::string_view name) {
    return static_cast<std::uint32_t>(HashText(name, hashOfFolder) >> 32);
}

} // namespace

void MemoryIndex::AddPath(std::uint32_t row) {
    paths_.Add(HashPath(HashText(FolderOf(row)), names_.At(row)), row);
}

void MemoryIndex::FillPathTable() {
    const Column& folders = ColumnOf(ArchiveField::Pfad);
    const FoldedTexts& folderTexts = folders.dictionary.Values();
    std::vector<std::uint64_t> hashes(folderTexts.Size());
    for (std::size_t code = 0; code < hashes.size(); ++code)
        hashes[code] = HashText(folderTexts.At(code));
    std::vector<std::uint32_t> rows(ids_.size());
    for (std::size_t row = 0; row < rows.size(); ++row)
        rows[row] = HashPath(hashes[folders.codes[row]], names_.At(row));
    paths_ = PathTable(rows);
}

std::optional<std::uint32_t> MemoryIndex::RowOfPath(std::string_view folded) const {
    const SplitPath path(folded);
    std::optional<std::uint32_t> found;
    paths_.Find(HashPath(HashText(path.folder), path.name), [&](std::uint32_t row) {
        if (!alive_.Test(row) || names_.At(row) != path.name || FolderOf(row) != path.folder)
            return false;
        found = row;
        return true;
    });
    return found;
}

std::optional<qint64> MemoryIndex::FindPath(const QString& path) const {
    const auto row = RowOfPath(TextFolding::Folded(path));
    return row ? std::optional(ids_[*row]) : std::nullopt;
}

bool MemoryIndex::HoldsPathLike(const QString& path) {
    QString wild = path;
    wild.replace(u'\'', u'*');
    const std::string folded = TextFolding::Folded(wild);
    if (FindPath(path))
        return true;
    const std::size_t firstStar = folded.find('*');
    if (firstStar == std::string::npos)
        return false;
    const std::size_t name = folded.find_last_of("/\\") + 1;
    if (folded.find('*', name) == std::string::npos)
        return HoldsName(std::string_view(folded).substr(0, name), std::string_view(folded).substr(name));
    return HoldsPathFrom(std::string_view(folded).substr(0, firstStar), LikePattern(folded, true));
}

/** folder: a pattern; name: a plain file name. */
bool MemoryIndex::HoldsName(std::string_view folder, std::string_view name) {
    const FoldedTexts& folders = ColumnOf(ArchiveField::Pfad).dictionary.Values();
    if (folderMatches_.pattern != folder)
        folderMatches_ = {std::string(folder), {}, 0};
    const LikePattern pattern(folder, true);
    for (; folderMatches_.searched < folders.Size(); ++folderMatches_.searched)
        if (pattern.Matches(folders.At(folderMatches_.searched)))
            folderMatches_.codes.push_back(static_cast<std::uint32_t>(folderMatches_.searched));
    return std::any_of(folderMatches_.codes.begin(), folderMatches_.codes.end(), [&](std::uint32_t code) {
        return RowOfPath(std::string(folders.At(code)).append(name)).has_value();
    });
}

/** start: what the pattern begins with; looked up in the order of the paths, where its titles are neighbours. */
bool MemoryIndex::HoldsPathFrom(std::string_view start, const LikePattern& pattern) {
    if (ids_.size() - pathRanks_.Size() > kSingly)
        RankPaths();
    const auto matches = [&](std::uint32_t row) { return alive_.Test(row) && pattern.Matches(PathOf(row)); };
    const auto begins = [&](std::uint32_t row) {
        const std::string_view folder = FolderOf(row);
        const std::size_t common = std::min(folder.size(), start.size());
        return folder.substr(0, common) == start.substr(0, common) && names_.At(row).starts_with(start.substr(common));
    };
    for (auto row = static_cast<std::uint32_t>(pathRanks_.Size()); row < ids_.size(); ++row)
        if (begins(row) && matches(row))
            return true;
    const std::string key = TextFolding::SortKey(start);
    const auto order = pathRanks_.Order();
    const auto cut = [&](std::uint32_t row) { return TextFolding::SortKey(PathOf(row)).substr(0, key.size()); };
    const auto begin = std::partition_point(order.begin(), order.end(), [&](auto row) { return cut(row) < key; });
    const auto end = std::partition_point(begin, order.end(), [&](auto row) { return cut(row) == key; });
    if (static_cast<std::size_t>(end - begin) <= kSingly)
        return std::any_of(begin, end, matches);
    BitSet rows(ids_.size());
    MatchPath(pattern, rows);
    return !(rows &= alive_).None();
}

} // namespace kalvo
