#pragma once

#include "tags/TitleRecord.h"

#include <memory>
#include <optional>
#include <thread>
#include <vector>

namespace kalvo {

/** What was read from a file; without a record the reason is a German text. */
struct ReadTitle {
    std::optional<TitleRecord> record;
    QString reason;
};

/**
 * Reads the tags of files on a few threads of its own and gives the results out in the order of the requests. All calls
 * come from one thread; the threads share nothing with it but the two queues, which a mutex guards.
 */
class TagReaders {
public:
    TagReaders();
    /** Drops what is not read yet. Waits for files being read, but not for a file system that hangs. */
    ~TagReaders();
    TagReaders(const TagReaders&) = delete;
    TagReaders& operator=(const TagReaders&) = delete;

    void Request(const QString& path);
    /** Requests whose results have not been taken. */
    int Pending() const { return requested_ - taken_; }
    /** The result of the oldest request that has not been taken. None when it is not there yet and wait is false. */
    std::optional<ReadTitle> Take(bool wait);

private:
    struct Shared;
    static void Work(const std::shared_ptr<Shared>& shared);

    std::shared_ptr<Shared> shared_;
    std::vector<std::thread> threads_;
    int requested_ = 0;
    int taken_ = 0;
};

} // namespace kalvo
