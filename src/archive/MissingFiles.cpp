#include "archive/MissingFiles.h"

#include "archive/FilePresence.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace kalvo {

namespace {

constexpr unsigned kMostCores = 8;
/** Pieces that may wait: more would only take memory. */
constexpr std::size_t kWaiting = 8;

} // namespace

MissingFiles::MissingFiles() {
    const unsigned cores = std::clamp(std::thread::hardware_concurrency(), 2U, kMostCores);
    try {
        for (unsigned i = 1; i < cores; ++i)
            workers_.emplace_back([this] { Work(); });
    } catch (const std::system_error&) { // no further thread: the one that adds asks for more itself
    }
}

MissingFiles::~MissingFiles() {
    {
        const std::lock_guard lock(mutex_);
        begun_ = pieces_.size();
    }
    Close();
}

void MissingFiles::Add(std::vector<std::string> paths) {
    std::unique_lock lock(mutex_);
    pieces_.push_back({std::move(paths), {}});
    changed_.notify_one();
    if (pieces_.size() - begun_ > kWaiting)
        AskNext(lock);
}

std::vector<bool> MissingFiles::Finish() {
    {
        std::unique_lock lock(mutex_);
        while (begun_ < pieces_.size())
            AskNext(lock);
    }
    Close();
    std::vector<bool> missing;
    for (const Piece& piece : pieces_)
        missing.insert(missing.end(), piece.missing.begin(), piece.missing.end());
    return missing;
}

void MissingFiles::Work() {
    std::unique_lock lock(mutex_);
    while (true) {
        changed_.wait(lock, [this] { return closed_ || begun_ < pieces_.size(); });
        if (begun_ == pieces_.size())
            return;
        AskNext(lock);
    }
}

/** The lock is released meanwhile; there is a piece to begin. */
void MissingFiles::AskNext(std::unique_lock<std::mutex>& lock) {
    Piece& piece = pieces_[begun_++]; // stays in its place while others are added
    lock.unlock();
    piece.missing = FilePresence::Missing(std::exchange(piece.paths, {}));
    lock.lock();
}

void MissingFiles::Close() {
    {
        const std::lock_guard lock(mutex_);
        closed_ = true;
        changed_.notify_all();
    }
    for (std::thread& worker : workers_)
        worker.join();
    workers_.clear();
}

} // namespace kalvo
