#include "base/BackgroundWorker.h"

#include <QMetaObject>
#include <QObject>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>

namespace kalvo {

namespace {

/** How long the end waits for a running job. */
constexpr std::chrono::milliseconds kPatience{1000};

} // namespace

struct BackgroundWorker::Shared {
    std::mutex mutex; ///< guards everything below
    std::condition_variable changed;
    std::deque<Job> jobs;
    std::unique_ptr<QObject> owner = std::make_unique<QObject>(); ///< answers are posted to it; null at the end
    bool ended = false;                                           ///< the thread is about to leave
};

BackgroundWorker::BackgroundWorker()
    : shared_(std::make_shared<Shared>()), thread_([shared = shared_] { Work(shared); }) {}

BackgroundWorker::~BackgroundWorker() {
    std::unique_lock lock(shared_->mutex);
    shared_->jobs.clear();
    shared_->owner.reset();
    shared_->changed.notify_all();
    const bool ended = shared_->changed.wait_until(
        lock, std::chrono::system_clock::now() + kPatience, // a wait that the thread sanitizer knows
        [this] { return shared_->ended; });
    lock.unlock();
    ended ? thread_.join() : thread_.detach();
}

void BackgroundWorker::Work(const std::shared_ptr<Shared>& shared) {
    std::unique_lock lock(shared->mutex);
    while (true) {
        shared->changed.wait(lock, [&] { return !shared->owner || !shared->jobs.empty(); });
        if (!shared->owner)
            break;
        const Job job = std::move(shared->jobs.front());
        shared->jobs.pop_front();
        lock.unlock();
        Answer answer = job();
        lock.lock();
        if (shared->owner && answer)
            QMetaObject::invokeMethod(shared->owner.get(), std::move(answer), Qt::QueuedConnection);
    }
    shared->ended = true;
    shared->changed.notify_all();
}

void BackgroundWorker::Do(Job job) {
    const std::lock_guard lock(shared_->mutex);
    shared_->jobs.push_back(std::move(job));
    shared_->changed.notify_all();
}

void BackgroundWorker::DropWaiting() {
    const std::lock_guard lock(shared_->mutex);
    shared_->jobs.clear();
}

} // namespace kalvo
