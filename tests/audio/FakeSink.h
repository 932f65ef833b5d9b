#pragma once

#include "audio/ByteSink.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <mutex>

namespace kalvo::test {

/** A file in memory on a disk that can be full, or hang. */
class FakeDisk {
public:
    /** Bytes that the file may have. */
    void SetRoom(std::size_t bytes) { room_ = bytes; }
    /** Writing waits until Release(). */
    void Hang() { SetHanging(true); }
    void Release() { SetHanging(false); }
    std::vector<char> Content() const {
        const std::lock_guard lock(mutex_);
        return content_;
    }
    bool Removed() const { return removed_; }

    /** Makes the disk's one file. */
    audio::SinkOpener Opener() {
        return [this](const std::string&, audio::EncodeError& error) {
            error = audio::EncodeError::None;
            return std::make_unique<File>(*this);
        };
    }

private:
    class File final : public audio::ByteSink {
    public:
        explicit File(FakeDisk& disk) : disk_(disk) {}

        std::int64_t Size() const override {
            const std::lock_guard lock(disk_.mutex_);
            return std::int64_t(disk_.content_.size());
        }
        audio::EncodeError WriteAt(std::int64_t position, const void* bytes, std::size_t count) override {
            std::unique_lock lock(disk_.mutex_);
            disk_.changed_.wait(lock, [this] { return !disk_.hanging_; });
            const std::size_t end = std::size_t(position) + count;
            if (end > disk_.room_)
                return audio::EncodeError::DiskFull;
            disk_.content_.resize(std::max(disk_.content_.size(), end));
            std::copy_n(static_cast<const char*>(bytes), count, disk_.content_.begin() + position);
            return audio::EncodeError::None;
        }
        audio::EncodeError Sync() override { return audio::EncodeError::None; }
        void Discard() override { disk_.removed_ = true; }

    private:
        FakeDisk& disk_;
    };

    void SetHanging(bool hanging) {
        const std::lock_guard lock(mutex_);
        hanging_ = hanging;
        changed_.notify_all();
    }

    mutable std::mutex mutex_; // content_ and hanging_
    std::condition_variable changed_;
    std::vector<char> content_;
    bool hanging_ = false;
    std::atomic<std::size_t> room_{SIZE_MAX};
    std::atomic<bool> removed_{false};
};

} // namespace kalvo::test
