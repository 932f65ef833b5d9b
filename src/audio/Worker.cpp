#include "audio/Worker.h"

#include "audio/TimedWait.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

namespace kalvo::audio {

struct Worker::Shared {
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> jobs; // guarded by mutex, as are the flags
    bool ending = false;
    bool ended = false;

    void Run() {
        std::unique_lock lock(mutex);
        for (;;) {
            changed.wait(lock, [this] { return ending || !jobs.empty(); });
            if (jobs.empty())
                break;
            const auto job = std::move(jobs.front());
            jobs.pop_front();
            lock.unlock();
            job();
            lock.lock();
        }
        ended = true;
        changed.notify_all();
    }
};

Worker::Worker() : shared_(std::make_shared<Shared>()) {
    std::thread([shared = shared_] { shared->Run(); }).detach();
}

Worker::~Worker() {
    std::unique_lock lock(shared_->mutex);
    shared_->ending = true;
    shared_->changed.notify_all();
    TimedWait(shared_->changed, lock, std::chrono::seconds(2), [this] { return shared_->ended; });
}

void Worker::Post(std::function<void()> job) {
    {
        const std::lock_guard lock(shared_->mutex);
        shared_->jobs.push_back(std::move(job));
    }
    shared_->changed.notify_all();
}

} // namespace kalvo::audio
