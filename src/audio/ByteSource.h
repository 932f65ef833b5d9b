#pragma once

#include "audio/AudioTypes.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace kalvo::audio {

/** Where a file's bytes come from. Used by one thread at a time; every call may hang as long as the file system does.
 */
class ByteSource {
public:
    ByteSource() = default;
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;
    virtual ~ByteSource() = default;

    /** Called once, before anything else. False when the file is missing, unreadable or no regular file. */
    virtual bool Open() = 0;
    /** Bytes, as found by Open(). */
    virtual std::int64_t Size() const = 0;
    /** `bytes` bytes from `position`, fewer only at the file's present end, 0 beyond it; -1 on failure. */
    virtual std::int64_t ReadAt(std::int64_t position, void* buffer, std::size_t bytes) = 0;
    /** A further access to the same bytes, not open yet, for another thread; null where there is none. Any thread. */
    virtual std::unique_ptr<ByteSource> Another() const { return nullptr; }
};

/** A file on disk. path: the file system's raw bytes. */
std::unique_ptr<ByteSource> MakeFileSource(const std::string& path);
/** A file in memory; not null. */
std::unique_ptr<ByteSource> MakeHeldSource(HeldFile file);

} // namespace kalvo::audio
