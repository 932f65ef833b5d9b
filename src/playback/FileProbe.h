#pragma once

#include <QString>

#include <chrono>
#include <memory>
#include <vector>

namespace kalvo {

/**
 * Tells whether a file is there without ever waiting long: a share that does not answer must not hold up the desk.
 *
 * Ownership: one thread asks the file system. When it does not answer in time it is left to itself with its question
 * and ends as soon as it comes back; the next question gets a new one. While it hangs, nothing else in its folder is
 * asked for.
 *
 * Threads: UI thread; the asking thread touches only what it shares under a mutex.
 */
class FileProbe {
public:
    FileProbe();
    ~FileProbe();
    FileProbe(const FileProbe&) = delete;
    FileProbe& operator=(const FileProbe&) = delete;

    /** How long Exists() may wait. */
    void SetPatience(std::chrono::milliseconds patience) { patience_ = patience; }
    /** Whether there is such a file (a folder is none). True when there is no answer: opening it will tell. */
    bool Exists(const QString& path);

private:
    struct Asking;

    bool Hangs(const QString& folder);

    std::chrono::milliseconds patience_{40};
    std::shared_ptr<Asking> asking_;
    std::vector<std::shared_ptr<Asking>> hanging_;
};

} // namespace kalvo
