#pragma once

#include "audio/ByteSink.h"

#include <condition_variable>
#include <mutex>
#include <vector>

namespace kalvo::test {

/** A file in memory on a disk that can be full, or hang. */
class FakeDisk {
public:
    /** Bytes that the file may have. */
    void SetRoom(std::size_t bytes);
    /** Writing waits until Release(). */
    void Hang();
    void Release();
    std::vector<char> Content() const;
    bool Removed() const;

    /** Makes the disk's one file. */
    audio::SinkOpener Opener();

private:
    class File;

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<char> content_;
    std::size_t room_ = SIZE_MAX;
    bool hanging_ = false;
    bool removed_ = false;
};

} // namespace kalvo::test
