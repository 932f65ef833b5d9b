#pragma once

#include "audio/EncoderLibrary.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace kalvo::audio {

/** A file being written. One thread at a time. */
class ByteSink {
public:
    ByteSink() = default;
    ByteSink(const ByteSink&) = delete;
    ByteSink& operator=(const ByteSink&) = delete;
    virtual ~ByteSink() = default;

    virtual std::int64_t Size() const = 0;
    /** All of it or nothing: what a full disk took of it is cut off again. */
    virtual EncodeError WriteAt(std::int64_t position, const void* bytes, std::size_t count) = 0;
    /** Makes everything written so far survive a power cut. */
    virtual EncodeError Sync() = 0;
    /** Removes the file. */
    virtual void Discard() = 0;
};

/** Creates a file that must not exist yet; null with the reason in `error`. */
using SinkOpener = std::function<std::unique_ptr<ByteSink>(const std::string& path, EncodeError& error)>;

/** The opener of real files. */
std::unique_ptr<ByteSink> CreateFileSink(const std::string& path, EncodeError& error);

} // namespace kalvo::audio
