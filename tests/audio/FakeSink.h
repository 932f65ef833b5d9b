#pragma once

#include "audio/ByteSink.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <vector>

namespace kalvo::test {

/** A file in memory on a disk that can be full, or hang. */
class FakeDisk {
public:
    /** Bytes that the file may have. */
    void SetRoom(std::size_t bytes) { room_ = bytes; }
    /** Writing waits until Release(). */
    void Hang() { SetHanging(true); }
    void Release() { SetHanging(false); }
    std::vector<char> Content() const;
    bool Removed() const { return removed_; }

    /** Makes the disk's one file. */
    audio::SinkOpener Opener();

private:
    class File;
    void SetHanging(bool hanging);

    mutable std::mutex mutex_; // content_ and hanging_
    std::condition_variable changed_;
    std::vector<char> content_;
    bool hanging_ = false;
    std::atomic<std::size_t> room_{SIZE_MAX};
    std::atomic<bool> removed_{false};
};

} // namespace kalvo::test
