#include "playlists/PlaylistIntake.h"

#include "audio/TimedWait.h"
#include "base/Settings.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace kalvo {

namespace {

constexpr std::chrono::milliseconds lookInterval(50);
constexpr std::chrono::milliseconds endPatience(1000);

QStringList PathsOf(const QList<TitleRecord>& titles) {
    QStringList paths;
    paths.reserve(titles.size());
    for (const TitleRecord& title : titles)
        paths.append(title.Pfad);
    return paths;
}

} // namespace

struct PlaylistIntake::Job {
    struct Shared {
        FileProgress progress;
        std::mutex mutex; ///< guards what follows
        std::condition_variable changed;
        bool isDone = false;
        Answer answer;
    };

    explicit Job(Work work);
    ~Job();
    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;
    bool IsDone(std::chrono::milliseconds patience) const;

    std::shared_ptr<Shared> shared = std::make_shared<Shared>();
    std::thread thread;
};

PlaylistIntake::Job::Job(Work work) {
    const auto run = [shared = shared, work = std::move(work)] {
        Answer answer = work(shared->progress);
        const std::lock_guard lock(shared->mutex);
        shared->answer = std::move(answer);
        shared->isDone = true;
        shared->changed.notify_all();
    };
    try {
        thread = std::thread(run);
    } catch (const std::system_error&) { // no further thread
        run();
    }
}

PlaylistIntake::Job::~Job() {
    shared->progress.cancelled = true;
    if (thread.joinable())
        IsDone(endPatience) ? thread.join() : thread.detach();
}

bool PlaylistIntake::Job::IsDone(std::chrono::milliseconds patience) const {
    std::unique_lock lock(shared->mutex);
    audio::TimedWait(shared->changed, lock, patience, [this] { return shared->isDone; });
    return shared->isDone;
}

PlaylistIntake::PlaylistIntake(PlaylistActions& lists, const Settings& settings, QObject* parent)
    : QObject(parent), lists_(lists), settings_(settings) {
    looking_.setInterval(lookInterval);
    connect(&looking_, &QTimer::timeout, this, &PlaylistIntake::Look);
}

PlaylistIntake::~PlaylistIntake() {
    Cancel();
}

void PlaylistIntake::AddTitles(int number, const QList<TitleRecord>& titles, int row, EntryOrigin origin) {
    Run([this, number, titles, origin, place = Keep(number, row)](FileProgress& progress) -> Answer {
        const QSet<QString> missing = MissingFiles(PathsOf(titles), progress);
        return [this, number, titles, missing, origin, place] {
            lists_.AddTitles(number, titles, missing, place(), origin);
        };
    });
}

void PlaylistIntake::Distribute(const QList<TitleRecord>& titles) {
    Run([this, titles](FileProgress& progress) -> Answer {
        const QSet<QString> missing = MissingFiles(PathsOf(titles), progress);
        return [this, titles, missing] { lists_.Distribute(titles, missing); };
    });
}

void PlaylistIntake::AddFiles(int number, const QStringList& paths, int row, const Gathered& done) {
    const bool takesTexts = settings_.GetSwitch(QStringLiteral("Mixer"), QStringLiteral("ID3WL"), false);
    Run([this, number, paths, takesTexts, done, place = Keep(number, row)](FileProgress& progress) -> Answer {
        const GatheredFiles files = GatherFiles(paths, takesTexts, progress);
        return [this, number, files, done, place] {
            done(files);
            if (!files.entries.isEmpty())
                lists_.AddEntries(number, files.entries, place());
        };
    });
}

void PlaylistIntake::Run(Work work) {
    auto job = std::make_unique<Job>(std::move(work));
    if (job->IsDone(patience_)) {
        const Answer answer = std::move(job->shared->answer);
        job.reset();
        answer();
        return;
    }
    jobs_.push_back(std::move(job));
    looking_.start();
}

void PlaylistIntake::Look() {
    const auto isDone = [](const std::unique_ptr<Job>& job) { return job->IsDone(std::chrono::milliseconds(0)); };
    for (auto done = std::find_if(jobs_.begin(), jobs_.end(), isDone); done != jobs_.end();
         done = std::find_if(jobs_.begin(), jobs_.end(), isDone)) {
        const std::unique_ptr<Job> job = std::move(*done);
        jobs_.erase(done); // before the answer, whose questions let the timer go on
        if (!job->shared->progress.cancelled)
            job->shared->answer();
    }
    const auto isCancelled = [](const std::unique_ptr<Job>& job) { return bool(job->shared->progress.cancelled); };
    int filesDone = 0, files = 0;
    for (const std::unique_ptr<Job>& job : jobs_) {
        filesDone += isCancelled(job) ? 0 : job->shared->progress.done.load();
        files += isCancelled(job) ? 0 : job->shared->progress.total.load();
    }
    if (jobs_.empty())
        looking_.stop();
    if (std::all_of(jobs_.begin(), jobs_.end(), isCancelled))
        Q_EMIT Finished();
    else
        Q_EMIT Progress(filesDone, files);
}

void PlaylistIntake::Cancel() {
    for (const std::unique_ptr<Job>& job : jobs_)
        job->shared->progress.cancelled = true;
}

std::function<int()> PlaylistIntake::Keep(int number, int row) {
    Playlist& list = lists_.List(number);
    const quint64 before = row >= 0 && row < list.Count() ? list.At(row).id : 0;
    return [&list, row, before] {
        if (row < 0)
            return -1;
        const QList<PlaylistEntry>& entries = list.Entries();
        const auto found = std::find_if(entries.begin(), entries.end(),
                                        [before](const PlaylistEntry& entry) { return entry.id == before; });
        const int gone = before == 0 ? list.Count() : std::min(row, list.Count());
        return found == entries.end() ? gone : static_cast<int>(found - entries.begin());
    };
}

} // namespace kalvo
