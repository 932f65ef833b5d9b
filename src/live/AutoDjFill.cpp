#include "live/AutoDjFill.h"

#include "base/Clock.h"
#include "playlists/PlaylistActions.h"

namespace kalvo {

namespace {

constexpr double kHour = 3600; // seconds

} // namespace

AutoDjFill::AutoDjFill(const TitleSource& source, RandomSource& random, PlaylistActions& lists, const Clock& clock,
                       QObject* parent)
    : QObject(parent), runner_(source, random), lists_(lists), clock_(clock) {
    connect(&runner_, &AutoDjRunner::Progress, this, &AutoDjFill::Progress);
    connect(&runner_, &AutoDjRunner::Finished, this, &AutoDjFill::Take);
}

void AutoDjFill::Start(const AutoDjSelection& selection) {
    AutoDjTask task;
    task.selection = selection;
    task.lists = selection.bothLists ? QList<int>{1, 2} : QList<int>{1};
    task.seconds = static_cast<qint64>(selection.hours * kHour);
    task.held = {lists_.List(1).Entries(), lists_.List(2).Entries()};
    task.now = clock_.Now();
    runner_.Start(task);
}

void AutoDjFill::Take(const AutoDj& run, bool isReached) {
    if (run.Titles() > 0) {
        const ListUndo::Step step(lists_.Undo(), QStringLiteral("Auto DJ"));
        for (const int list : {1, 2}) {
            if (!run.Drawn(list).isEmpty())
                lists_.AddEntries(list, run.Drawn(list));
        }
    }
    Q_EMIT Finished(run.Titles(), run.Seconds(), isReached);
}

} // namespace kalvo
