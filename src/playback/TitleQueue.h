#pragma once

#include "base/BackgroundWorker.h"

#include <QSet>
#include <QString>

#include <atomic>
#include <memory>

namespace kalvo {

/**
 * Titles whose files are looked at one after another, by a thread behind all others, each once however often it is
 * asked for.
 *
 * Threads: everything here belongs to the UI thread; a Look runs on the worker's, its answer on the UI thread.
 */
class TitleQueue {
public:
    /** Shares nothing with the UI thread but what it captures by value. Gives up when cancelled is set. */
    using Look = std::function<BackgroundWorker::Answer(const std::atomic<bool>& cancelled)>;

    TitleQueue();
    ~TitleQueue();

    /** The answer follows, unless it is cancelled before; a path that waits already is not taken twice. */
    void Request(const QString& path, Look look);
    /** Something else to be done in its turn. */
    void Do(BackgroundWorker::Job job) { worker_.Do(std::move(job)); }
    /** What waits is dropped, what runs given up; nothing of it is answered. */
    void Cancel();
    bool IsBusy() const { return !waiting_.isEmpty(); }

private:
    QSet<QString> waiting_;
    std::shared_ptr<std::atomic<bool>> cancelled_ = std::make_shared<std::atomic<bool>>(false);
    BackgroundWorker worker_; ///< last: its thread ends before the rest goes
};

} // namespace kalvo
