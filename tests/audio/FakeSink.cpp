#include "FakeSink.h"

#include <algorithm>
#include <memory>

namespace kalvo::test {

using audio::EncodeError;

class FakeDisk::File final : public audio::ByteSink {
public:
    explicit File(FakeDisk& disk) : disk_(disk) {}

    std::int64_t Size() const override {
        const std::lock_guard lock(disk_.mutex_);
        return std::int64_t(disk_.content_.size());
    }
    EncodeError WriteAt(std::int64_t position, const void* bytes, std::size_t count) override {
        std::unique_lock lock(disk_.mutex_);
        disk_.changed_.wait(lock, [this] { return !disk_.hanging_; });
        const std::size_t end = std::size_t(position) + count;
        if (end > disk_.room_)
            return EncodeError::DiskFull;
        disk_.content_.resize(std::max(disk_.content_.size(), end));
        std::copy_n(static_cast<const char*>(bytes), count, disk_.content_.begin() + position);
        return EncodeError::None;
    }
    EncodeError Sync() override { return EncodeError::None; }
    void Discard() override { disk_.removed_ = true; }

private:
    FakeDisk& disk_;
};

void FakeDisk::SetHanging(bool hanging) {
    const std::lock_guard lock(mutex_);
    hanging_ = hanging;
    changed_.notify_all();
}

std::vector<char> FakeDisk::Content() const {
    const std::lock_guard lock(mutex_);
    return content_;
}

audio::SinkOpener FakeDisk::Opener() {
    return [this](const std::string&, EncodeError& error) {
        error = EncodeError::None;
        return std::make_unique<File>(*this);
    };
}

} // namespace kalvo::test
