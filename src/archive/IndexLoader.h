#pragma once

#include "archive/MemoryIndex.h"
#include "archive/SqliteDatabase.h"

#include <QObject>

#include <functional>
#include <future>
#include <memory>
#include <thread>

namespace kalvo {

/**
 * Reads the archive into a memory index on a thread of its own, over a connection of its own, and checks the file's
 * health afterwards. The destructor stops and joins the thread.
 */
class IndexLoader {
public:
    using Index = std::shared_ptr<MemoryIndex>; ///< shared only because queued calls copy what they carry

    /**
     * Starts at once. Called by the event loop of the thread that makes the loader: `loaded` once, with null when the
     * archive could not be read; `damaged` when the check found the file broken. Neither after the destructor.
     */
    IndexLoader(const QString& path, std::function<void(Index)> loaded, std::function<void()> damaged);

    /** Waits for the index; null when the archive could not be read. */
    Index Wait() const { return result_.get(); }

private:
    void Run(const std::stop_token& stop, std::promise<Index> promise);

    QString path_;
    std::function<void(Index)> loaded_;
    std::function<void()> damaged_;
    std::shared_future<Index> result_;
    QObject receiver_;    ///< takes the calls that wait with it
    std::jthread thread_; ///< last: joined before the rest goes
};

} // namespace kalvo
