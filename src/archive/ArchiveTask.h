#pragma once

#include "archive/Archive.h"
#include "archive/BackgroundRun.h"

namespace kalvo {

/**
 * Long work over the whole archive on a thread and a connection of its own, begun as soon as the archive's index is
 * there. UI thread. Signals come by queued calls.
 */
class ArchiveTask : public QObject {
    Q_OBJECT

public:
    /** The archive outlives the task. */
    explicit ArchiveTask(Archive& archive, QObject* parent = nullptr);
    /** Work that runs is stopped without a signal. */
    ~ArchiveTask() override;

    bool IsRunning() const { return run_ != nullptr; }
    /** The end is told within the call. Does nothing when idle. */
    void Cancel();

protected:
    /** False while it runs already. */
    bool StartTask();
    /** The index is there. Gives the work; what it captures it owns. */
    virtual std::function<void(BackgroundRun&)> Prepare() = 0;
    /** The archive cannot be read, or, with cancelled, Cancel() was called. The task is idle already. */
    virtual void TellAbandoned(bool cancelled) = 0;
    /** To be called when the work is done, before it is told. */
    void EndTask() { run_.reset(); }
    Archive& GetArchive() { return archive_; }

private:
    void Proceed();
    void Abandon(bool cancelled);

    Archive& archive_;
    bool waiting_ = false;                ///< for the archive's index
    std::shared_ptr<BackgroundRun> run_;  ///< shared with its thread; null when idle
    std::shared_ptr<BackgroundRun> last_; ///< may still be on its way to its end
};

} // namespace kalvo
