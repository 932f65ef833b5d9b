#include "audio/ByteSource.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace kalvo::audio {

namespace {

class FileSource final : public ByteSource {
public:
    explicit FileSource(std::string path) : path_(std::move(path)) {}

    ~FileSource() override {
        if (descriptor_ >= 0)
            ::close(descriptor_);
    }

    bool Open() override {
        // Without O_NONBLOCK a pipe without a writer would hang here instead of being refused.
        descriptor_ = ::open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
        struct stat status {};
        if (descriptor_ < 0 || ::fstat(descriptor_, &status) != 0 || !S_ISREG(status.st_mode))
            return false;
        size_ = status.st_size;
        return true;
    }

    std::int64_t Size() const override { return size_; }

    std::int64_t ReadAt(std::int64_t position, void* buffer, std::size_t bytes) override {
        std::size_t done = 0;
        while (done < bytes) {
            const ssize_t got = ::pread(descriptor_, static_cast<char*>(buffer) + done, bytes - done,
                                        position + static_cast<std::int64_t>(done));
            if (got < 0 && errno == EINTR)
                continue;
            if (got < 0)
                return -1;
            if (got == 0)
                break;
            done += static_cast<std::size_t>(got);
        }
        return static_cast<std::int64_t>(done);
    }

    std::unique_ptr<ByteSource> Another() const override { return std::make_unique<FileSource>(path_); }

private:
    std::string path_;
    int descriptor_ = -1;
    std::int64_t size_ = 0;
};

class HeldSource final : public ByteSource {
public:
    explicit HeldSource(HeldFile file) : file_(std::move(file)) {}

    bool Open() override { return true; }
    std::int64_t Size() const override { return static_cast<std::int64_t>(file_->size()); }

    std::int64_t ReadAt(std::int64_t position, void* buffer, std::size_t bytes) override {
        const auto begin = std::min(static_cast<std::size_t>(position), file_->size());
        const std::size_t got = std::min(bytes, file_->size() - begin);
        std::memcpy(buffer, file_->data() + begin, got);
        return static_cast<std::int64_t>(got);
    }

    std::unique_ptr<ByteSource> Another() const override { return std::make_unique<HeldSource>(file_); }

private:
    HeldFile file_;
};

} // namespace

std::unique_ptr<ByteSource> MakeFileSource(const std::string& path) {
    return std::make_unique<FileSource>(path);
}

std::unique_ptr<ByteSource> MakeHeldSource(HeldFile file) {
    return std::make_unique<HeldSource>(std::move(file));
}

} // namespace kalvo::audio
