#pragma once

#include "audio/ByteSource.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <thread>

namespace kalvo::audio {

/**
 * A file whose bytes are read ahead, so that a share that stalls for a few seconds is not heard.
 *
 * Ownership: a reader thread owns the byte source and fills a window of blocks; this object and the thread share the
 * window. One cycle: the reader waits until the window has room (it holds fewer than kWindowBlocks, or its oldest
 * block lies more than kKeptBlocks behind the place being read), reads the next block without holding the lock, and
 * appends it. Reading at a place that is neither in the window nor next to it starts a new window there.
 *
 * Threads: Cancel() from any thread; everything else from the one thread that decodes. Only that thread and the
 * reader ever wait for the file system.
 */
class ReadAheadFile {
public:
    static constexpr std::size_t kBlockBytes = 65536;
    /** 6 MiB: more than half a minute of a CD's rate, ten seconds of 24 bit at 96 kHz. */
    static constexpr std::size_t kWindowBlocks = 96;
    static constexpr std::int64_t kKeptBlocks = 8;

    /** Starts opening. Throws std::system_error when there can be no further thread. */
    explicit ReadAheadFile(std::unique_ptr<ByteSource> source);
    /** Joins the reader unless the file system hangs: then the reader ends by itself as soon as it comes back. */
    ~ReadAheadFile();
    ReadAheadFile(const ReadAheadFile&) = delete;
    ReadAheadFile& operator=(const ReadAheadFile&) = delete;

    /** Waits until the file is open; false when it cannot be opened or after Cancel(). */
    bool WaitUntilOpen();
    /** Makes every present and later wait fail at once. */
    void Cancel() noexcept;

    /** Bytes; becomes smaller when the file turns out to have been cut meanwhile. */
    std::int64_t Size() const noexcept;
    std::int64_t Tell() const noexcept { return position_; }
    /** Any place from 0 on; reading beyond the end gives 0 bytes. False for a negative one. */
    bool Seek(std::int64_t position) noexcept;
    /** Seek in the manner of lseek: the new position, -1 on failure. */
    std::int64_t Seek(std::int64_t offset, int whence) noexcept;
    /** Waits for up to `bytes` bytes, fewer only at the end; 0 at the end, -1 on failure or after Cancel(). */
    std::int64_t Read(void* buffer, std::size_t bytes) noexcept;
    /** True once a Read() has failed. */
    bool Failed() const noexcept { return failed_; }

private:
    struct Window;

    std::int64_t ReadPiece(std::byte* buffer, std::size_t bytes) noexcept;

    std::shared_ptr<Window> window_;
    std::thread reader_;
    std::int64_t position_ = 0;
    bool failed_ = false;
};

} // namespace kalvo::audio
