#include "archive/TagReaders.h"

#include "tags/TitleFields.h"
#include "tags/clsAudioGenie.h"

#include <QFile>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <iterator>
#include <map>
#include <mutex>

namespace kalvo {

namespace {

constexpr unsigned kMaximumThreads = 4;
/** Files that a thread takes at once: taking and waking costs more than reading a small tag. */
constexpr std::size_t kBatch = 8;
/** How long the end waits for files being read. */
constexpr std::chrono::milliseconds kReaderPatience{1000};

using Numbered = std::pair<int, QString>; ///< a path by the number of its request

ReadTitle ReadFile(clsAudioGenie& tags, const QString& path) {
    if (auto record = ReadTitleFields(tags, path))
        return {std::move(record), {}};
    const bool readable = QFile(path).open(QIODevice::ReadOnly);
    return {std::nullopt, readable ? QStringLiteral("Die Datei enthält keinen lesbaren Ton.")
                                   : QStringLiteral("Die Datei kann nicht gelesen werden.")};
}

} // namespace

struct TagReaders::Shared {
    std::mutex mutex; ///< guards everything below
    std::condition_variable wake;
    std::condition_variable ready;
    std::deque<Numbered> requests;
    std::map<int, ReadTitle> results;
    std::atomic<bool> stop = false; ///< read without the mutex between two files
    unsigned working = 0;           ///< threads that have not ended
};

TagReaders::TagReaders() : shared_(std::make_shared<Shared>()) {
    shared_->working = std::clamp(std::thread::hardware_concurrency(), 1U, kMaximumThreads);
    for (unsigned i = shared_->working; i > 0; --i)
        threads_.emplace_back([shared = shared_] { Work(shared); });
}

TagReaders::~TagReaders() {
    std::unique_lock lock(shared_->mutex);
    shared_->stop = true;
    shared_->wake.notify_all();
    const bool ended = shared_->ready.wait_for(lock, kReaderPatience, [this] { return shared_->working == 0; });
    lock.unlock();
    for (std::thread& thread : threads_)
        ended ? thread.join() : thread.detach();
}

void TagReaders::Work(const std::shared_ptr<Shared>& shared) {
    clsAudioGenie tags;
    std::unique_lock lock(shared->mutex);
    while (true) {
        shared->wake.wait(lock, [&] { return shared->stop || !shared->requests.empty(); });
        if (shared->stop)
            break;
        const auto taken = static_cast<std::ptrdiff_t>(std::min(kBatch, shared->requests.size()));
        const std::vector<Numbered> batch(shared->requests.begin(), shared->requests.begin() + taken);
        shared->requests.erase(shared->requests.begin(), shared->requests.begin() + taken);
        lock.unlock();
        std::vector<std::pair<int, ReadTitle>> titles;
        for (const auto& [number, path] : batch) {
            if (!shared->stop)
                titles.emplace_back(number, ReadFile(tags, path));
        }
        lock.lock();
        shared->results.insert(std::make_move_iterator(titles.begin()), std::make_move_iterator(titles.end()));
        shared->ready.notify_all();
    }
    --shared->working;
    shared->ready.notify_all();
}

void TagReaders::Request(const QString& path) {
    const std::lock_guard lock(shared_->mutex);
    shared_->requests.emplace_back(requested_++, path);
    shared_->wake.notify_one();
}

std::optional<ReadTitle> TagReaders::Take(bool wait) {
    if (Pending() == 0)
        return std::nullopt;
    std::unique_lock lock(shared_->mutex);
    if (wait)
        shared_->ready.wait(lock, [this] { return shared_->results.contains(taken_); });
    auto found = shared_->results.extract(taken_);
    if (found.empty())
        return std::nullopt;
    ++taken_;
    return std::move(found.mapped());
}

} // namespace kalvo
