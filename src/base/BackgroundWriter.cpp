#include "base/BackgroundWriter.h"

#include "base/AtomicFile.h"

#include <QFile>

namespace kalvo {

BackgroundWriter::BackgroundWriter() : thread_([this] { Run(); }) {}

BackgroundWriter::~BackgroundWriter() {
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

void BackgroundWriter::Write(const QString& path, const QByteArray& bytes) {
    Add(path, bytes);
}

void BackgroundWriter::Remove(const QString& path) {
    Add(path, std::nullopt);
}

void BackgroundWriter::Add(const QString& path, Content content) {
    {
        const std::lock_guard lock(mutex_);
        waiting_[path] = std::move(content);
    }
    changed_.notify_all();
}

void BackgroundWriter::Flush() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return waiting_.empty() && !busy_; });
}

void BackgroundWriter::Run() {
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return ending_ || !waiting_.empty(); });
        if (waiting_.empty()) {
            return;
        }
        const auto next = waiting_.extract(waiting_.begin());
        busy_ = true;
        lock.unlock();
        if (next.mapped()) {
            WriteAtomically(next.key(), *next.mapped());
        } else {
            QFile::remove(next.key());
        }
        lock.lock();
        busy_ = false;
        changed_.notify_all();
    }
}

} // namespace kalvo
