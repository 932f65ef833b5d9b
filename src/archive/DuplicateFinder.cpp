#include "archive/DuplicateFinder.h"

#include "archive/ArchiveStatements.h"
#include "archive/DuplicateGroups.h"
#include "archive/MissingFiles.h"
#include "archive/TextFolding.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;
using Numbers = std::vector<qint64>;
using Outcome = DuplicateReport::Outcome;

/** Titles between two reports. */
constexpr std::size_t kBetween = 500;

/** One search from the reading of the archive to the report; on the run's thread. */
class Search {
public:
    /** candidates: in the order in which they are searched for; order: that of a group's titles. */
    Search(DuplicateMode mode, QString path, Numbers candidates, Numbers order)
        : mode_(mode), path_(std::move(path)), candidates_(std::move(candidates)), order_(std::move(order)) {}

    /** tell: a text and its percentage. */
    DuplicateReport Run(const BackgroundRun& run, const std::function<void(const QString&, int)>& tell) {
        if (candidates_.empty())
            return {Outcome::NoTitles, {}};
        SqliteDatabase database;
        if (database.Open(path_, SqliteDatabase::Mode::ReadOnly) != SqliteDatabase::Outcome::Opened ||
            !ReadTitles(database, run, tell))
            return {};
        Arrange();
        if (Numbers stale = StaleTitles(); !stale.empty())
            return {Outcome::StalePaths, std::move(stale)};
        return {Outcome::Found, NumbersOf(FindGroups(run, tell))};
    }

private:
    /** Files are asked for beside the reading of the next titles. False when stopped or failed. */
    bool ReadTitles(SqliteDatabase& database, const BackgroundRun& run,
                    const std::function<void(const QString&, int)>& tell) {
        const ArchiveField field = mode_ == DuplicateMode::FileNames ? ArchiveField::Pfad : ArchiveField::Titel;
        SqliteStatement select =
            database.Prepare(u"SELECT Nr, Pfad, %1 FROM \"Daten\" ORDER BY Nr"_s.arg(FieldName(field)));
        MissingFiles files;
        std::vector<std::string> paths;
        std::string folded;
        while (!run.Stopped() && select.Step()) {
            if (numbers_.size() % kBetween == 0) {
                const std::size_t percent = std::min<std::size_t>(100, 100 * numbers_.size() / candidates_.size());
                tell(DuplicateTexts::Preparing(static_cast<int>(percent)), static_cast<int>(percent));
                files.Add(std::exchange(paths, {}));
            }
            paths.emplace_back(select.Utf8(1));
            numbers_.push_back(select.Number(0));
            folded.clear();
            TextFolding::AppendFolded(select.Utf8(2), folded);
            texts_.Append(folded);
        }
        if (run.Stopped() || select.Failed())
            return false;
        files.Add(std::move(paths));
        missing_ = files.Finish();
        return !run.Stopped();
    }

    /** Numbers ascend by one but for gaps, so that a number's place is not behind its distance from the first. */
    std::optional<std::uint32_t> PlaceOf(qint64 number) const {
        if (numbers_.empty() || number < numbers_.front() || number > numbers_.back())
            return std::nullopt;
        const auto distance = static_cast<std::uint64_t>(number) - static_cast<std::uint64_t>(numbers_.front());
        const std::size_t latest = std::min<std::uint64_t>(distance, numbers_.size() - 1);
        if (numbers_[latest] == number)
            return static_cast<std::uint32_t>(latest);
        const auto end = numbers_.begin() + static_cast<std::ptrdiff_t>(latest);
        const auto found = std::lower_bound(numbers_.begin(), end, number);
        return *found == number ? std::optional(static_cast<std::uint32_t>(found - numbers_.begin())) : std::nullopt;
    }

    /** Brings everything into the order of the candidates; titles deleted or added meanwhile are left out. */
    void Arrange() {
        std::vector<std::uint32_t> places;
        std::vector<std::uint32_t> rows(numbers_.size());
        for (const qint64 number : candidates_)
            if (const auto place = PlaceOf(number)) {
                rows[*place] = static_cast<std::uint32_t>(places.size());
                places.push_back(*place);
            }
        for (const qint64 number : order_)
            if (const auto place = PlaceOf(number))
                groupOrder_.push_back(rows[*place]);
        texts_ = texts_.Reordered(places);
        const Numbers numbers = std::move(numbers_);
        const std::vector<bool> missing = std::move(missing_);
        numbers_.clear();
        missing_.clear();
        for (const std::uint32_t place : places) {
            numbers_.push_back(numbers[place]);
            missing_.push_back(missing[place]);
        }
    }

    Numbers StaleTitles() const {
        Numbers stale;
        for (std::size_t row = 0; row < missing_.size(); ++row)
            if (missing_[row])
                stale.push_back(numbers_[row]);
        return stale;
    }

    /** With a 0 after each group. */
    Numbers NumbersOf(const DuplicateGroups::Groups& groups) const {
        Numbers numbers;
        for (const std::vector<std::uint32_t>& group : groups) {
            for (const std::uint32_t row : group)
                numbers.push_back(numbers_[row]);
            numbers.push_back(0);
        }
        return numbers;
    }

    DuplicateGroups::Groups FindGroups(const BackgroundRun& run,
                                       const std::function<void(const QString&, int)>& tell) const {
        const auto goOn = [&](int percent) {
            tell(DuplicateTexts::Searching(percent), percent);
            return !run.Stopped();
        };
        return mode_ == DuplicateMode::FileNames ? DuplicateGroups::ByFileName(texts_, groupOrder_, goOn)
                                                 : DuplicateGroups::ByTitle(texts_, goOn);
    }

    DuplicateMode mode_;
    QString path_;
    Numbers candidates_;
    Numbers order_;
    std::vector<std::uint32_t> groupOrder_;
    Numbers numbers_; ///< by number while read, then by row
    std::vector<bool> missing_;
    FoldedTexts texts_;
};

} // namespace

void DuplicateFinder::Start(DuplicateMode mode) {
    if (IsRunning())
        return;
    mode_ = mode;
    StartTask();
}

std::function<void(BackgroundRun&)> DuplicateFinder::Prepare() {
    const QString order = mode_ == DuplicateMode::FileNames ? ArchiveStatements::FileNameDuplicates({})
                                                            : ArchiveStatements::DuplicateCandidates();
    const auto search = std::make_shared<Search>(mode_, GetArchive().Path(),
                                                 GetArchive().Select(ArchiveStatements::DuplicateCandidates()),
                                                 GetArchive().Select(order));
    return [this, search](BackgroundRun& run) {
        const auto tell = [this, &run](const QString& text, int percent) {
            run.Post([this, text, percent] { Q_EMIT Progress(text, percent); });
        };
        const DuplicateReport report = search->Run(run, tell);
        run.Post([this, report] {
            EndTask();
            Q_EMIT Finished(report);
        });
    };
}

void DuplicateFinder::TellAbandoned(bool cancelled) {
    Q_EMIT Finished({cancelled ? Outcome::Cancelled : Outcome::Failed, {}});
}

} // namespace kalvo
