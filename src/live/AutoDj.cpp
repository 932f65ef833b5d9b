#include "live/AutoDj.h"

#include "archive/ArchiveStatements.h"
#include "base/RandomSource.h"
#include "live/TitleVersion.h"
#include "playlists/EveningLog.h"
#include "playlists/ListCaption.h"
#include "playlists/PlaylistActions.h"

#include <algorithm>

namespace kalvo {

namespace {

constexpr int kMisses = 100;
/** Titles without a playing time would go on for ever. */
constexpr int kMostTitles = 10000;
constexpr std::size_t kReadAtOnce = 32;
constexpr std::size_t kRemembered = 2'000'000;

std::size_t IndexOf(int list) {
    return static_cast<std::size_t>(list - 1);
}

/** The artists of the lists as they come in turn, the last titles of all lists at the end. */
QStringList ArtistsInTurn(const AutoDjTask& task) {
    QStringList artists;
    for (qsizetype back = 0; back < task.selection.rules.artistDistance; ++back) {
        for (const int list : task.lists) {
            const QList<PlaylistEntry>& held = task.held.at(IndexOf(list));
            if (back < held.size())
                artists.prepend(ArtistKey(held.at(held.size() - 1 - back).artist));
        }
    }
    return artists;
}

PlaylistEntry DrawnEntry(const TitleRecord& title) {
    PlaylistEntry entry = EntryOf(title);
    entry.origin = EntryOrigin::Automatic;
    return entry;
}

} // namespace

AutoDj::AutoDj(AutoDjTask task, const TitleSource& source, RandomSource& random)
    : task_(std::move(task)), source_(source), random_(random), artists_(ArtistsInTurn(task_)) {
    for (const std::size_t list : {0U, 1U}) {
        for (const PlaylistEntry& entry : task_.held.at(list)) {
            paths_.at(list).insert(entry.path);
            if (task_.selection.rules.skipOtherVersions)
                versions_.insert(VersionKey(entry.artist, entry.title));
        }
    }
}

AutoDj::State AutoDj::Step() {
    if (IsReached())
        return State::Reached;
    if (task_.selection.values.isEmpty())
        return State::NothingLeft;
    if (misses_ < kMisses)
        return Draw();
    return collected_ < task_.selection.values.size() ? Collect() : LookThrough();
}

bool AutoDj::IsReached() const {
    return (task_.seconds >= 0 && seconds_ > task_.seconds) || (task_.titles >= 0 && Titles() >= task_.titles) ||
           Titles() >= kMostTitles;
}

int AutoDj::Percent() const {
    if (IsReached())
        return 100;
    const double share = task_.seconds > 0  ? static_cast<double>(seconds_) / static_cast<double>(task_.seconds)
                         : task_.titles > 0 ? static_cast<double>(Titles()) / task_.titles
                                            : 0;
    return std::min(99, static_cast<int>(100 * share));
}

QString AutoDj::Message(qint64 seconds) {
    return QStringLiteral("Titel mit einer Gesamtspielzeit von: ") + HoursText(seconds) +
           QStringLiteral(" der Wiedergabeliste hinzugefügt");
}

AutoDj::State AutoDj::Draw() {
    const QStringList& values = task_.selection.values;
    const std::vector<qint64>& numbers = Matching(values.at(static_cast<qsizetype>(Below(values.size()))));
    const QList<TitleRecord> titles =
        numbers.empty() ? QList<TitleRecord>() : source_.Read({numbers.at(Below(numbers.size()))});
    const bool isTaken = !titles.isEmpty() && Judge(titles.constFirst()) == Verdict::Taken;
    misses_ = isTaken ? 0 : misses_ + 1;
    return IsReached() ? State::Reached : State::Running;
}

/** The titles of one more value are put among those to be looked at. */
AutoDj::State AutoDj::Collect() {
    const std::vector<qint64>& numbers = Matching(task_.selection.values.at(collected_++));
    left_.insert(left_.end(), numbers.begin(), numbers.end());
    if (collected_ == task_.selection.values.size()) {
        std::sort(left_.begin(), left_.end());
        left_.erase(std::unique(left_.begin(), left_.end()), left_.end());
        for (std::size_t end = left_.size(); end > 1; --end)
            std::swap(left_[end - 1], left_[Below(end)]);
        matching_.clear();
        titlesAtPass_ = Titles();
    }
    return State::Running;
}

AutoDj::State AutoDj::LookThrough() {
    if (left_.empty() && (later_.empty() || titlesAtPass_ == Titles()))
        return State::NothingLeft;
    if (left_.empty()) {
        left_.swap(later_);
        titlesAtPass_ = Titles();
    }
    const auto from = left_.end() - static_cast<std::ptrdiff_t>(std::min(kReadAtOnce, left_.size()));
    const QList<TitleRecord> titles = source_.Read(QList<qint64>(from, left_.end()));
    left_.erase(from, left_.end());
    for (const TitleRecord& title : titles) {
        if (Judge(title) == Verdict::NotNow)
            later_.push_back(title.Nr);
        if (IsReached())
            return State::Reached;
    }
    return State::Running;
}

const std::vector<qint64>& AutoDj::Matching(const QString& value) {
    if (const auto known = matching_.constFind(value); known != matching_.cend())
        return *known;
    std::vector<qint64> numbers = source_.Select(ArchiveStatements::DrawnTitles(task_.selection.field, value));
    if (remembered_ + numbers.size() > kRemembered) {
        matching_.clear();
        remembered_ = 0;
    }
    remembered_ += numbers.size();
    return matching_[value] = std::move(numbers);
}

/** A title that may come is taken. */
AutoDj::Verdict AutoDj::Judge(const TitleRecord& title) {
    const AutoDjRules& rules = task_.selection.rules;
    if (paths_.at(IndexOf(Target())).contains(title.Pfad))
        return task_.lists.size() > 1 ? Verdict::NotNow : Verdict::Never; // the other list may still take it
    if ((rules.skipPlayedToday && WasPlayedToday(title.Extra2)) ||
        (rules.skipOtherVersions && versions_.contains(VersionKey(title.Interpret, title.Titel))))
        return Verdict::Never;
    if (rules.artistDistance > 0 && IsArtistNear(title.Interpret))
        return Verdict::NotNow;
    Take(title);
    return Verdict::Taken;
}

bool AutoDj::IsArtistNear(const QString& artist) const {
    const QString key = ArtistKey(artist);
    const qsizetype from = std::max<qsizetype>(0, artists_.size() - task_.selection.rules.artistDistance);
    return !key.isEmpty() && artists_.indexOf(key, from) >= 0;
}

bool AutoDj::WasPlayedToday(const QString& stamp) const {
    QDateTime moment = QDateTime::fromString(stamp, QStringLiteral("yyyy.MM.dd, HH:mm"));
    if (!moment.isValid())
        moment = QDateTime::fromString(stamp, QStringLiteral("dd.MM.yyyy HH:mm:ss"));
    return moment.isValid() && EveningLog::EveningOf(moment) == EveningLog::EveningOf(task_.now);
}

void AutoDj::Take(const TitleRecord& title) {
    const std::size_t list = IndexOf(Target());
    drawn_.at(list).append(DrawnEntry(title));
    paths_.at(list).insert(title.Pfad);
    artists_.append(ArtistKey(title.Interpret));
    if (task_.selection.rules.skipOtherVersions)
        versions_.insert(VersionKey(title.Interpret, title.Titel));
    seconds_ += DurationSeconds(title.Zeit);
    ++turn_;
}

/** Int(r x count) for a fresh r in [0, 1). */
std::size_t AutoDj::Below(std::size_t count) {
    return std::min(count - 1, static_cast<std::size_t>(random_.Uniform() * static_cast<double>(count)));
}

} // namespace kalvo
