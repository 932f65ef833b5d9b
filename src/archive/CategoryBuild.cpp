#include "archive/CategoryBuild.h"

#include "archive/ArchiveStatements.h"
#include "archive/CategoryLists.h"
#include "archive/SqliteDatabase.h"
#include "archive/TextDictionary.h"

#include <algorithm>
#include <array>
#include <limits>
#include <unordered_map>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

/** Titles between two reports. */
constexpr std::size_t kTitlesBetween = 5000;

/** The distinct values of one field, each with the place of the first title that has it. */
class DistinctValues {
public:
    void Take(std::string_view value, std::size_t place) {
        if (const auto known = places_.find(value); known != places_.end())
            known->second = std::min(known->second, place);
        else
            places_.emplace(value, place);
    }

    QStringList InOrder() const {
        std::vector<std::pair<std::size_t, const std::string*>> order;
        order.reserve(places_.size());
        for (const auto& [value, place] : places_)
            order.emplace_back(place, &value);
        std::sort(order.begin(), order.end());
        QStringList values;
        values.reserve(static_cast<qsizetype>(order.size()));
        for (const auto& [place, value] : order)
            values.append(QString::fromStdString(*value));
        return values;
    }

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return HashText(text); }
    };
    std::unordered_map<std::string, std::size_t, Hash, std::equal_to<>> places_;
};

/** Where each title stands in the order; asked for by ascending numbers. */
class Places {
public:
    explicit Places(const std::vector<qint64>& order) {
        places_.reserve(order.size());
        for (std::size_t i = 0; i < order.size(); ++i)
            places_.emplace_back(order[i], i);
        std::sort(places_.begin(), places_.end());
    }

    std::size_t Size() const { return places_.size(); }

    /** One that came after the order was made stands at its end. */
    std::size_t Of(qint64 number) {
        while (next_ < places_.size() && places_[next_].first < number)
            ++next_;
        const bool known = next_ < places_.size() && places_[next_].first == number;
        return known ? places_[next_].second : std::numeric_limits<std::size_t>::max();
    }

private:
    std::vector<std::pair<qint64, std::size_t>> places_;
    std::size_t next_ = 0;
};

/** The values of every category; empty when the archive could not be read or the run was stopped. */
std::vector<QStringList> Collect(const QString& path, const std::vector<qint64>& order, BackgroundRun& run,
                                 const std::function<void(int)>& tell) {
    SqliteDatabase database;
    if (database.Open(path, SqliteDatabase::Mode::ReadOnly) != SqliteDatabase::Outcome::Opened)
        return {};
    QString fields = u"Nr"_s;
    for (const ArchiveField field : CategoryLists::kFields)
        fields += u", "_s + FieldName(field);
    SqliteStatement select = database.Prepare(u"SELECT %1 FROM \"Daten\" ORDER BY Nr"_s.arg(fields));
    std::array<DistinctValues, CategoryLists::kFields.size()> values;
    Places places(order);
    for (std::size_t done = 0; !run.Stopped() && select.Step(); ++done) {
        if (done % kTitlesBetween == 0)
            tell(static_cast<int>(100 * std::min(done, places.Size()) / std::max<std::size_t>(1, places.Size())));
        const std::size_t place = places.Of(select.Number(0));
        for (std::size_t i = 0; i < values.size(); ++i)
            values[i].Take(select.Utf8(static_cast<int>(i) + 1), place);
    }
    if (run.Stopped() || select.Failed())
        return {};
    std::vector<QStringList> lists;
    lists.reserve(values.size());
    for (const DistinctValues& one : values)
        lists.push_back(one.InOrder());
    return lists;
}

} // namespace

CategoryBuild::CategoryBuild(Archive& archive, const DataFolder& folder, QObject* parent)
    : ArchiveTask(archive, parent), folder_(folder) {}

std::function<void(BackgroundRun&)> CategoryBuild::Prepare() {
    return [this, path = GetArchive().Path(),
            order = GetArchive().Select(ArchiveStatements::Categories())](BackgroundRun& run) {
        const auto tell = [this, &run](int percent) { run.Post([this, percent] { Q_EMIT Progress(percent); }); };
        auto lists = Collect(path, order, run, tell);
        run.Post([this, lists = std::move(lists)] { Write(lists); });
    };
}

void CategoryBuild::Write(const std::vector<QStringList>& lists) {
    EndTask();
    if (lists.empty()) {
        TellAbandoned(false);
        return;
    }
    for (std::size_t i = 0; i < lists.size(); ++i) {
        const ArchiveField field = CategoryLists::kFields[i];
        if (!CategoryLists::Write(folder_, field, lists[i])) {
            Q_EMIT Finished(Outcome::Failed,
                            u"Die Datei kann nicht geschrieben werden: "_s + CategoryLists::Name(field));
            return;
        }
    }
    Q_EMIT Progress(100);
    Q_EMIT Finished(Outcome::Written, {});
}

void CategoryBuild::TellAbandoned(bool cancelled) {
    Q_EMIT Finished(cancelled ? Outcome::Cancelled : Outcome::Failed,
                    cancelled ? QString() : u"Das Musikarchiv kann nicht gelesen werden."_s);
}

} // namespace kalvo
