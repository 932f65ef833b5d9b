#include "audio/ByteSink.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace kalvo::audio {

namespace {

EncodeError FromSystem(int number) {
    if (number == ENOSPC || number == EDQUOT || number == EFBIG)
        return EncodeError::DiskFull;
    return number == EEXIST ? EncodeError::Exists : EncodeError::File;
}

class FileSink final : public ByteSink {
public:
    FileSink(int file, std::string path) : file_(file), path_(std::move(path)) {}
    ~FileSink() override { ::close(file_); }

    std::int64_t Size() const override { return size_; }

    EncodeError WriteAt(std::int64_t position, const void* bytes, std::size_t count) override {
        const auto* from = static_cast<const char*>(bytes);
        for (std::size_t done = 0; done < count;) {
            const ssize_t got = ::pwrite(file_, from + done, count - done, position + std::int64_t(done));
            if (got < 0 && errno == EINTR)
                continue;
            if (got <= 0) {
                const EncodeError error = FromSystem(got < 0 ? errno : EIO);
                return ::ftruncate(file_, size_) == 0 ? error : EncodeError::File;
            }
            done += std::size_t(got);
        }
        size_ = std::max(size_, position + std::int64_t(count));
        return EncodeError::None;
    }

    EncodeError Sync() override { return ::fdatasync(file_) == 0 ? EncodeError::None : FromSystem(errno); }
    void Discard() override { ::unlink(path_.c_str()); }

private:
    int file_;
    std::string path_;
    std::int64_t size_ = 0;
};

} // namespace

std::unique_ptr<ByteSink> CreateFileSink(const std::string& path, EncodeError& error) {
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file < 0) {
        error = FromSystem(errno);
        return nullptr;
    }
    error = EncodeError::None;
    return std::make_unique<FileSink>(file, path);
}

} // namespace kalvo::audio
