#pragma once

#include "archive/ArchiveField.h"
#include "archive/GroupedNumbers.h"
#include "archive/PathTable.h"
#include "archive/RecordSource.h"
#include "archive/TextDictionary.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace kalvo {

/**
 * The archive's texts in memory, made to be searched and sorted: it answers which titles a record source selects and in
 * what order; the texts as the user wrote them stay in the database.
 *
 * Rows are numbered as they come. Titles and file names are swept as whole texts; all other fields, and the folder part
 * of the path, are codes into dictionaries of their distinct values, so that a search looks at each value once. A row
 * whose texts change is marked dead and appended anew; a removed one is marked dead and revived when it is put again.
 * Pack() drops the dead ones and brings the rows into the default order, Interpret and Titel, so that what a search
 * finds is in order already.
 *
 * One thread at a time: the one that loads it, then the UI thread.
 */
class MemoryIndex {
public:
    using Texts = std::array<std::string_view, kTextFields.size()>;

    /** For loading: texts in UTF-8, in the order of kTextFields; the number is new. Pack() is to follow. */
    void Append(qint64 nr, const Texts& texts);
    /** Adds a title or replaces the one of the same number. */
    void Put(const TitleRecord& record) { Put(QList{record}); }
    /** The same for many at once; each number comes once. */
    void Put(const QList<TitleRecord>& records);
    /** Unknown numbers are passed over. */
    void Remove(std::vector<qint64> numbers);
    /** Ranks what has been written since; called by Select() too. */
    void Settle();
    /** Drops dead rows, sorts the rows by Interpret and Titel and gives spare memory back. */
    void Pack();

    /** Titles held. */
    qint64 Count() const { return static_cast<qint64>(ids_.size() - dead_); }

    /** Numbers of the titles that the source selects, in its order; ties by Interpret, Titel, then as they came. */
    std::vector<qint64> Select(const RecordSource& source);

    /** A title with this path, compared without case. */
    std::optional<qint64> FindPath(const QString& path) const;
    /** The same where an apostrophe or "*" in the path stands for any characters. */
    bool HoldsPathLike(const QString& path);
    /** Numbers, ascending, of the titles whose artist + " - " + title holds the text. */
    std::vector<qint64> NumbersHolding(const QString& text) const;

    /** Memory in bytes. */
    std::size_t Bytes() const;

private:
    static constexpr std::uint32_t kNoRow = 0xFFFFFFFFU;

    struct ShortText {
        std::uint64_t text = 0; ///< up to seven bytes as they came, and their number
        std::uint32_t code = 0;
        bool used = false;
    };
    struct Column {
        TextDictionary dictionary;
        std::vector<std::uint32_t> codes; ///< by row
        std::string lastText;             ///< as it came, with its code: neighbours mostly share their values
        std::uint32_t lastCode = 0;
        std::vector<ShortText> shortTexts; ///< by hash, the latest ones: times, tracks and the like are few
    };
    /** The folders that fit the pattern asked for last: an import asks for all files of a folder in turn. */
    struct FolderMatches {
        std::string pattern;
        std::vector<std::uint32_t> codes;
        std::size_t searched = 0; ///< folders looked at
    };
    struct RankedKey {
        std::span<const std::uint32_t> codes; ///< empty: ranks are by row
        std::span<const std::uint32_t> ranks;
        std::size_t distinct = 0;
        bool descending = false;
        std::uint32_t RankOf(std::uint32_t row) const {
            const std::uint32_t rank = ranks[codes.empty() ? row : codes[row]];
            return descending ? static_cast<std::uint32_t>(distinct) - 1 - rank : rank;
        }
    };

    Column& ColumnOf(ArchiveField field) { return columns_[static_cast<std::size_t>(field)]; }
    const Column& ColumnOf(ArchiveField field) const { return columns_[static_cast<std::size_t>(field)]; }
    static std::uint32_t CodeFor(Column& column, std::string_view text);
    static std::uint32_t CodeOfShort(Column& column, std::string_view text);
    std::string_view FolderOf(std::size_t row) const;
    std::string PathOf(std::size_t row) const;
    void AddPath(std::uint32_t row);
    void FillPathTable();
    std::optional<std::uint32_t> RowOfPath(std::string_view folded) const;
    void RankPaths();
    /** Artist + " - " + title. */
    std::string HeadingOf(std::size_t row) const;
    int ComparePaths(std::uint32_t left, std::uint32_t right) const;
    /** The latest row of each number, alive or dead; kNoRow where there is none. */
    std::vector<std::uint32_t> RowsOf(const std::vector<qint64>& numbers) const;
    /** row: the latest of the title's number. A dead one that fits comes back to life. */
    void PutAt(std::uint32_t row, const TitleRecord& record);
    /** Takes the rows that came since the last order into it. */
    void OrderNewRows();
    bool UpdateInPlace(std::size_t row, const Texts& texts);
    void SortAlbums();
    void Reorder(const std::vector<std::uint32_t>& rows);
    std::vector<std::uint32_t> DefaultOrder(std::span<const std::uint32_t> titleOrder) const;

    BitSet Matching(const QList<RecordCondition>& conditions) const;
    void MatchField(ArchiveField field, const LikePattern& pattern, BitSet& rows) const;
    void MatchCodes(const Column& column, const BitSet& codes, BitSet& rows) const;
    void MatchPath(const LikePattern& pattern, BitSet& rows) const;
    void PathContains(std::string_view piece, BitSet& rows) const;
    void MatchNumber(const LikePattern& pattern, BitSet& rows) const;
    bool HoldsName(std::string_view folder, std::string_view name);
    bool HoldsPathFrom(std::string_view start, const LikePattern& pattern);
    std::vector<std::uint32_t> InDefaultOrder(const BitSet& rows) const;
    std::vector<qint64> Sorted(const QList<RecordOrder>& order, std::vector<std::uint32_t> rows) const;
    std::vector<qint64> NumbersOf(const std::vector<std::uint32_t>& rows) const;
    std::optional<std::vector<qint64>> AllReady(const QList<RecordOrder>& order) const;
    std::vector<qint64> AllRanked(const SortRanks& ranks, bool descending) const;
    /** Whether the rows stand in the default order and none is dead. */
    bool IsPacked() const { return dead_ == 0 && packed_ == ids_.size(); }
    RankedKey KeyOf(const RecordOrder& key, std::vector<std::uint32_t>& numberRanks) const;
    std::vector<std::uint32_t> NumberRanks() const;

    std::vector<qint64> ids_;      ///< by row
    qint64 highest_ = 0;           ///< of ids_
    bool haveShortNumbers_ = true; ///< all of ids_ fit 32 bits, unsigned
    BitSet alive_;
    std::size_t dead_ = 0;
    std::size_t packed_ = 0;                  ///< rows at the last Pack()
    FoldedTexts titles_;                      ///< by row
    FoldedTexts names_;                       ///< file names, by row
    std::array<Column, kFieldCount> columns_; ///< that of Pfad holds the folders; Nr and Titel have none
    PathTable paths_;
    FolderMatches folderMatches_;
    SortRanks titleRanks_;
    SortRanks pathRanks_;
    GroupedNumbers albums_;               ///< all by album and track at the last Pack(); none when one's have changed
    std::vector<std::uint32_t> order_;    ///< all rows by Interpret, Titel
    std::vector<std::uint32_t> position_; ///< of a row in order_
};

} // namespace kalvo
