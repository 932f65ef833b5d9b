#pragma once

#include <functional>
#include <memory>

namespace kalvo::audio {

/** One thread that does its jobs one after the other. */
class Worker {
public:
    Worker();
    /** Lets the jobs given so far finish, but waits two seconds at most; a job that hangs is left to itself. */
    ~Worker();
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    /** Returns at once. What the job refers to must outlive it even when it hangs: capture by value. */
    void Post(std::function<void()> job);

private:
    struct Shared;
    std::shared_ptr<Shared> shared_;
};

} // namespace kalvo::audio
