#pragma once

#include <functional>
#include <memory>
#include <thread>

namespace kalvo {

/**
 * One thread that does jobs one after another, for what may wait for a file system. A job returns its answer, a
 * function, which is called on the thread that owns the worker, by its event loop.
 *
 * Threads: everything here belongs to the owner's thread. Jobs run on the worker's and share nothing with it but what
 * they were given. The end drops what is waiting and all answers; it waits for a running job, but not for a file system
 * that hangs: the thread then ends by itself.
 */
class BackgroundWorker {
public:
    using Answer = std::function<void()>;
    using Job = std::function<Answer()>;

    BackgroundWorker();
    ~BackgroundWorker();
    BackgroundWorker(const BackgroundWorker&) = delete;
    BackgroundWorker& operator=(const BackgroundWorker&) = delete;

    void Do(Job job);
    /** Jobs that have not begun are not done. */
    void DropWaiting();

private:
    struct Shared;
    static void Work(const std::shared_ptr<Shared>& shared);

    std::shared_ptr<Shared> shared_;
    std::thread thread_;
};

} // namespace kalvo
