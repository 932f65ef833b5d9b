#include "archive/BackgroundRun.h"

#include <chrono>
#include <thread>

namespace kalvo {

namespace {

constexpr std::chrono::seconds kPatience{3};

} // namespace

void BackgroundRun::Begin(std::function<void(BackgroundRun&)> work) {
    working_ = true;
    std::thread([self = shared_from_this(), work = std::move(work)]() mutable {
        work(*self);
        work = nullptr;
        const std::lock_guard lock(self->mutex_);
        self->working_ = false;
        self->ended_.notify_all();
    }).detach();
}

void BackgroundRun::Post(std::function<void()> call) {
    const std::lock_guard lock(mutex_);
    if (stopped_)
        return;
    const auto checked = [self = shared_from_this(), call = std::move(call)] {
        if (!self->Stopped())
            call();
    };
    QMetaObject::invokeMethod(&receiver_, checked, Qt::QueuedConnection);
}

void BackgroundRun::Stop() {
    const std::lock_guard lock(mutex_);
    stopped_ = true;
}

void BackgroundRun::WaitBriefly() {
    std::unique_lock lock(mutex_);
    ended_.wait_for(lock, kPatience, [this] { return !working_; });
}

} // namespace kalvo
