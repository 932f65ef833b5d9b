#pragma once

#include <QObject>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

namespace kalvo {

/**
 * One piece of work on a thread of its own, shared by that thread and the object that wants the result. The thread is
 * never joined: one that hangs in a dead file system is left behind and ends with its call. All it touches it owns.
 *
 * UI thread: Begin, Stop, WaitBriefly, and the calls that come by Post. Work's thread: Stopped, Post.
 */
class BackgroundRun : public std::enable_shared_from_this<BackgroundRun> {
public:
    /** The receiver lives until Stop() has been called. */
    explicit BackgroundRun(QObject& receiver) : receiver_(receiver) {}

    /** Once. */
    void Begin(std::function<void(BackgroundRun&)> work);

    /** Work looks at this after every item. */
    bool Stopped() const { return stopped_; }
    /** Makes the call on the receiver's thread; none arrives after Stop(). */
    void Post(std::function<void()> call);

    void Stop();
    /** For an owner that goes after Stop(): gives the thread some seconds to end. */
    void WaitBriefly();

private:
    QObject& receiver_;
    std::mutex mutex_; ///< guards receiver_ against Stop() during a Post(), and working_
    std::condition_variable ended_;
    std::atomic<bool> stopped_ = false;
    bool working_ = false;
};

} // namespace kalvo
