#include "live/AutoDjRefill.h"

#include "base/Clock.h"
#include "playlists/ListCaption.h"
#include "playlists/Playlist.h"

#include <algorithm>

namespace kalvo {

namespace {

constexpr int kAgain = 30'000; // ms

/** What is still to come, and the title that is playing. */
QList<PlaylistEntry> Coming(const Playlist& list) {
    QList<PlaylistEntry> coming;
    for (int row = 0; row < list.Count(); ++row) {
        if (row >= list.CurrentRow() || list.At(row).icon == EntryIcon::PlayNext)
            coming.append(list.At(row));
    }
    return coming;
}

} // namespace

AutoDjRefill::AutoDjRefill(std::array<Playlist*, 2> lists, const TitleSource& source, RandomSource& random,
                           const Clock& clock, QObject* parent)
    : QObject(parent), lists_(lists), clock_(clock), runner_(source, random) {
    look_.setSingleShot(true);
    look_.setInterval(0);
    connect(&look_, &QTimer::timeout, this, &AutoDjRefill::Check);
    again_.setSingleShot(true);
    again_.setInterval(kAgain);
    connect(&again_, &QTimer::timeout, this, [this] {
        stuck_ = {};
        Check();
    });
    for (Playlist* list : lists_) {
        connect(list, &Playlist::Changed, &look_, qOverload<>(&QTimer::start));
        connect(list, &Playlist::CurrentChanged, &look_, qOverload<>(&QTimer::start));
    }
    connect(&runner_, &AutoDjRunner::Finished, this, [this](const AutoDj& run) { Take(run); });
}

void AutoDjRefill::SetOptions(const AutoDjRefillOptions& options) {
    options_ = options;
    options_.isOn = options.isOn && !options.selection.values.isEmpty();
    runner_.Cancel();
    again_.stop();
    stuck_ = {};
    ShowState();
    Q_EMIT Changed();
    look_.start();
}

int AutoDjRefill::Missing(int list) const {
    return options_.below - static_cast<int>(ComingSeconds(List(list)).size());
}

void AutoDjRefill::Check() {
    if (!options_.isOn || runner_.IsRunning())
        return;
    for (const int list : {1, 2}) {
        const bool isWanted = list == 1 || options_.selection.bothLists;
        if (isWanted && !stuck_.at(static_cast<std::size_t>(list - 1)) && Missing(list) > 0)
            return Draw(list, false);
    }
}

void AutoDjRefill::Draw(int list, bool repeats) {
    list_ = list;
    repeats_ = repeats;
    AutoDjTask task;
    task.selection = options_.selection;
    task.lists = {list};
    task.titles = std::max(1, Missing(list));
    task.now = clock_.Now();
    task.held = {lists_[0]->Entries(), lists_[1]->Entries()};
    if (repeats)
        task.held = {Coming(*lists_[0]), Coming(*lists_[1])};
    runner_.Start(task);
}

void AutoDjRefill::Take(const AutoDj& run) {
    const QList<PlaylistEntry>& drawn = run.Drawn(list_);
    if (drawn.isEmpty() && !repeats_)
        return Draw(list_, true);
    stuck_.at(static_cast<std::size_t>(list_ - 1)) = drawn.isEmpty();
    if (drawn.isEmpty())
        again_.start();
    else
        List(list_).Insert(List(list_).Count(), drawn);
    ShowState();
    look_.start();
}

void AutoDjRefill::ShowState() {
    QString state = options_.isOn ? QStringLiteral("an") : QStringLiteral("aus");
    if (IsStuck())
        state += QStringLiteral(", aber kein passender Titel für Wiedergabeliste %1").arg(stuck_[0] ? 1 : 2);
    if (state == state_)
        return;
    state_ = state;
    if (IsStuck())
        Q_EMIT Told(QStringLiteral("Nachfüllen: ") + state);
    Q_EMIT Changed();
}

} // namespace kalvo
