#pragma once

#include <QByteArray>
#include <QString>

#include <condition_variable>
#include <map>
#include <mutex>
#include <optional>
#include <thread>

namespace kalvo {

/**
 * Writes small files without making the caller wait for the disk: a thread of its own replaces each of them atomically.
 * Of several contents given for one file before its turn only the last is written. What fails is passed over: the next
 * content comes soon. The destructor writes what is still waiting.
 *
 * UI thread: Write, Remove. Any thread: Flush. Writer thread: the disk. `mutex_` guards all that both touch.
 */
class BackgroundWriter {
public:
    BackgroundWriter();
    ~BackgroundWriter();
    BackgroundWriter(const BackgroundWriter&) = delete;
    BackgroundWriter& operator=(const BackgroundWriter&) = delete;

    void Write(const QString& path, const QByteArray& bytes);
    /** Deletes the file in its turn. */
    void Remove(const QString& path);
    /** Waits until everything given so far is on the disk. */
    void Flush();

private:
    /** Content of a file; none: it is to be deleted. */
    using Content = std::optional<QByteArray>;

    void Add(const QString& path, Content content);
    void Run();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::map<QString, Content> waiting_;
    bool busy_ = false; ///< the writer is at the disk
    bool ending_ = false;
    std::thread thread_; ///< last: starts when the rest is there
};

} // namespace kalvo
