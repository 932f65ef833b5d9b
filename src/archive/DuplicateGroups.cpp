#include "archive/DuplicateGroups.h"

#include "archive/NameKeys.h"
#include "archive/PatternSweep.h"
#include "archive/SplitPath.h"
#include "archive/TextDictionary.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <tuple>
#include <utility>

namespace kalvo::DuplicateGroups {

namespace {

constexpr std::size_t kRowsBetween = 4096;
/** Shares of the whole, in percent: where the sweep for patterns and the collecting of groups begin. */
constexpr int kSorted = 40;
constexpr int kSwept = 80;
constexpr int kWhole = 100;

bool IsPattern(std::string_view key) {
    return key.find_first_of("'*") != std::string_view::npos;
}

std::string PatternOf(std::string_view key) {
    std::string pattern(key);
    std::replace(pattern.begin(), pattern.end(), '\'', '*');
    return pattern;
}

/** Tells a share of the work, between two percentages, every few thousand rows. */
class Share {
public:
    Share(const Tell& tell, std::size_t rows, int from, int to) : tell_(tell), rows_(rows), from_(from), to_(to) {}

    bool At(std::size_t row) const {
        return row % kRowsBetween != 0 || tell_(from_ + static_cast<int>(static_cast<std::size_t>(to_ - from_) * row /
                                                                         std::max<std::size_t>(1, rows_)));
    }

private:
    const Tell& tell_;
    std::size_t rows_;
    int from_;
    int to_;
};

/** The groups so far; takes each row once. */
class Collector {
public:
    explicit Collector(std::size_t rows) : listed_(rows) {}

    /** Of two or more rows that one key found, those not listed yet in their order. */
    void Take(std::vector<std::uint32_t> rows) {
        std::erase_if(rows, [this](std::uint32_t row) { return listed_.Test(row); });
        for (const std::uint32_t row : rows)
            listed_.Set(row);
        if (!rows.empty())
            groups_.push_back(std::move(rows));
    }

    Groups Result() { return std::move(groups_); }

private:
    BitSet listed_;
    Groups groups_;
};

/** Rows by a number each has, ascending within a number. */
class RowsByNumber {
public:
    RowsByNumber() = default;
    RowsByNumber(const std::vector<std::uint32_t>& numbers, std::size_t distinct)
        : starts_(distinct + 1, 0), rows_(numbers.size()) {
        for (const std::uint32_t number : numbers)
            ++starts_[number + 1];
        std::partial_sum(starts_.begin(), starts_.end(), starts_.begin());
        std::vector<std::uint32_t> next(starts_.begin(), starts_.end() - 1);
        for (std::uint32_t row = 0; row < numbers.size(); ++row)
            rows_[next[numbers[row]]++] = row;
    }

    std::span<const std::uint32_t> Of(std::size_t number) const {
        return std::span(rows_).subspan(starts_[number], starts_[number + 1] - starts_[number]);
    }

private:
    std::vector<std::uint32_t> starts_;
    std::vector<std::uint32_t> rows_;
};

/** Patterns of the keys that hold a wildcard, and what matches each. */
class PatternKeys {
public:
    /** keys: in them a wildcard may stand; sample: texts like those that Find() gets; around: what keys are put in. */
    PatternKeys(const FoldedTexts& sample, const std::vector<std::string_view>& keys, const std::string& around)
        : sweep_(sample), numbers_(keys.size(), 0) {
        for (std::size_t key = 0; key < keys.size(); ++key)
            if (IsPattern(keys[key]))
                numbers_[key] = sweep_.Add(std::string(around).append(PatternOf(keys[key])).append(around));
        found_.resize(sweep_.Size());
    }

    bool IsEmpty() const { return found_.empty(); }

    /** Notes each number under the patterns that its whole text matches, where a part of it holds their piece. */
    template<typename Numbers, typename WholeOf>
    void Find(std::string_view part, const Numbers& numbers, const WholeOf& wholeOf) {
        met_.clear();
        sweep_.FindIn(part, met_);
        for (const std::uint32_t pattern : met_)
            for (const std::uint32_t number : numbers)
                if (sweep_.At(pattern).Matches(wholeOf(number)))
                    found_[pattern].push_back(number);
    }

    /** What the key's pattern found, ascending; nothing when the pattern was asked for before. */
    std::vector<std::uint32_t> TakeFoundBy(std::uint32_t key) {
        std::vector<std::uint32_t> found = std::exchange(found_[numbers_[key]], {});
        std::sort(found.begin(), found.end());
        found.erase(std::unique(found.begin(), found.end()), found.end());
        return found;
    }

private:
    PatternSweep sweep_;
    std::vector<std::uint32_t> numbers_; ///< of patterns, by key
    std::vector<std::vector<std::uint32_t>> found_;
    std::vector<std::uint32_t> met_;
};

class FileNameSearch {
public:
    FileNameSearch(const FoldedTexts& paths, const std::vector<std::uint32_t>& order)
        : paths_(paths), ranks_(order.size()), collector_(paths.Size()) {
        for (std::uint32_t i = 0; i < order.size(); ++i)
            ranks_[order[i]] = i;
        TextDictionary folders;
        std::vector<std::uint32_t> codes;
        for (std::size_t row = 0; row < paths.Size(); ++row) {
            const SplitPath path(paths.At(row));
            names_.push_back(path.name);
            codes.push_back(folders.CodeOf(path.folder));
        }
        folders_ = folders.Values();
        rowsOfFolder_ = RowsByNumber(codes, folders_.Size());
    }

    Groups Run(const Tell& tell) {
        std::vector<bool> isKey(names_.size());
        std::transform(names_.begin(), names_.end(), isKey.begin(), [](auto name) { return !IsPattern(name); });
        const NameKeys keys(names_, isKey);
        if (!tell(kSorted / 2) || !FindInside(keys, Share(tell, names_.size(), kSorted / 2, kSorted)))
            return {};
        PatternKeys patterns(paths_, names_, "*");
        if (!patterns.IsEmpty() && !FindPatterns(patterns, Share(tell, names_.size(), kSorted, kSwept)))
            return {};
        Collect(keys, isKey, patterns, Share(tell, names_.size(), kSwept, kWhole));
        return collector_.Result();
    }

private:
    /** A key found where no name ends in it: within a name, or in a folder. */
    struct Inside {
        std::uint32_t key;
        std::uint32_t row;
        bool operator==(const Inside&) const = default;
        bool operator<(const Inside& other) const { return std::tie(key, row) < std::tie(other.key, other.row); }
    };

    bool FindInside(const NameKeys& keys, const Share& share) {
        for (std::uint32_t row = 0; row < names_.size(); ++row) {
            if (!share.At(row))
                return false;
            keys.FindInside(names_[row], [&](std::uint32_t key) { inside_.push_back({key, row}); });
        }
        for (std::size_t code = 0; code < folders_.Size(); ++code)
            keys.FindInside(folders_.At(code), [&](std::uint32_t key) {
                for (const std::uint32_t row : rowsOfFolder_.Of(code))
                    inside_.push_back({key, row});
            });
        std::sort(inside_.begin(), inside_.end());
        inside_.erase(std::unique(inside_.begin(), inside_.end()), inside_.end());
        return true;
    }

    /** A name's pattern has no separator in its pieces: none of them begins in a folder and ends in a name. */
    bool FindPatterns(PatternKeys& patterns, const Share& share) const {
        const auto pathOf = [this](std::uint32_t row) { return paths_.At(row); };
        for (std::uint32_t row = 0; row < names_.size(); ++row) {
            if (!share.At(row))
                return false;
            patterns.Find(names_[row], std::array{row}, pathOf);
        }
        for (std::size_t code = 0; code < folders_.Size(); ++code)
            patterns.Find(folders_.At(code), rowsOfFolder_.Of(code), pathOf);
        return true;
    }

    void Collect(const NameKeys& keys, const std::vector<bool>& isKey, PatternKeys& patterns, const Share& share) {
        done_.Resize(keys.Size());
        next_.resize(names_.size() + 1);
        std::iota(next_.begin(), next_.end(), 0U);
        for (std::uint32_t row = 0; row < names_.size() && share.At(row); ++row) {
            std::vector<std::uint32_t> rows =
                isKey[row] ? TakeRowsOf(keys, keys.KeyOf(row)) : patterns.TakeFoundBy(row);
            if (!isKey[row] && rows.size() < 2)
                continue;
            std::sort(rows.begin(), rows.end(), [this](auto left, auto right) { return ranks_[left] < ranks_[right]; });
            collector_.Take(std::move(rows));
        }
    }

    /** Rows found by a key but listed ones; none when it finds a single one or was asked for before. */
    std::vector<std::uint32_t> TakeRowsOf(const NameKeys& keys, std::uint32_t key) {
        if (done_.Test(key))
            return {};
        done_.Set(key);
        const NameKeys::Range range = keys.NamesEndingIn(key);
        const std::uint32_t own = keys.Sorted()[range.begin];
        auto inside = std::lower_bound(inside_.begin(), inside_.end(), Inside{key, 0});
        std::vector<std::uint32_t> rows;
        bool several = range.end - range.begin > 1;
        std::vector<std::uint32_t> others;
        for (; inside != inside_.end() && inside->key == key; ++inside) {
            several = several || inside->row != own;
            others.push_back(inside->row);
        }
        if (!several)
            return {};
        for (std::uint32_t i = NextPlace(range.begin); i < range.end; i = NextPlace(i)) {
            rows.push_back(keys.Sorted()[i]);
            next_[i] = i + 1;
        }
        rows.insert(rows.end(), others.begin(), others.end());
        std::sort(rows.begin(), rows.end());
        rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
        return rows;
    }

    /** The first place from this one on whose row no key has taken yet. */
    std::uint32_t NextPlace(std::uint32_t place) {
        std::uint32_t next = place;
        while (next_[next] != next)
            next = next_[next];
        while (next_[place] != next)
            place = std::exchange(next_[place], next);
        return next;
    }

    const FoldedTexts& paths_;
    std::vector<std::uint32_t> ranks_; ///< of rows, within a group
    std::vector<std::string_view> names_;
    FoldedTexts folders_; ///< the distinct ones
    RowsByNumber rowsOfFolder_;
    std::vector<Inside> inside_;
    BitSet done_;                     ///< keys
    std::vector<std::uint32_t> next_; ///< by place in the sorted names: where to look for one not taken
    Collector collector_;
};

} // namespace

Groups ByFileName(const FoldedTexts& paths, const std::vector<std::uint32_t>& order, const Tell& tell) {
    return FileNameSearch(paths, order).Run(tell);
}

Groups ByTitle(const FoldedTexts& titles, const Tell& tell) {
    TextDictionary values;
    std::vector<std::uint32_t> codes;
    const Share coding(tell, titles.Size(), 0, kSorted);
    for (std::size_t row = 0; row < titles.Size(); ++row) {
        if (!coding.At(row))
            return {};
        codes.push_back(values.CodeOf(titles.At(row)));
    }
    const FoldedTexts& distinct = values.Values();
    const RowsByNumber rowsOf(codes, distinct.Size());
    std::vector<std::string_view> keys;
    for (std::size_t code = 0; code < distinct.Size(); ++code)
        keys.push_back(distinct.At(code));
    PatternKeys patterns(distinct, keys, "");
    const Share sweeping(tell, distinct.Size(), kSorted, kSwept);
    for (std::uint32_t code = 0; code < distinct.Size() && !patterns.IsEmpty(); ++code) {
        if (!sweeping.At(code))
            return {};
        patterns.Find(keys[code], std::array{code}, [&](std::uint32_t value) { return keys[value]; });
    }
    Collector collector(titles.Size());
    const Share collecting(tell, titles.Size(), kSwept, kWhole);
    for (std::uint32_t row = 0; row < titles.Size() && collecting.At(row); ++row) {
        const std::uint32_t code = codes[row];
        if (rowsOf.Of(code).front() != row)
            continue;
        std::vector<std::uint32_t> rows;
        for (const std::uint32_t value : IsPattern(keys[code]) ? patterns.TakeFoundBy(code) : std::vector{code})
            rows.insert(rows.end(), rowsOf.Of(value).begin(), rowsOf.Of(value).end());
        std::sort(rows.begin(), rows.end());
        if (rows.size() > 1)
            collector.Take(std::move(rows));
    }
    return collector.Result();
}

} // namespace kalvo::DuplicateGroups
