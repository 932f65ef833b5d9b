#include "DecodeSupport.h"

#include "audio/OpenDecoder.h"
#include "audio/TimedWait.h"

#include <QFile>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstring>

namespace kalvo::audio::test {

void FakeBytes::Control::HangFrom(std::int64_t position) {
    const std::lock_guard lock(mutex_);
    hang_ = position;
}

void FakeBytes::Control::Release() {
    const std::lock_guard lock(mutex_);
    hang_ = -1;
    changed_.notify_all();
}

void FakeBytes::Control::FailFrom(std::int64_t position) {
    const std::lock_guard lock(mutex_);
    fail_ = position;
}

void FakeBytes::Control::CutAt(std::int64_t position) {
    const std::lock_guard lock(mutex_);
    cut_ = position;
}

bool FakeBytes::Control::AwaitHanging() {
    std::unique_lock lock(mutex_);
    return TimedWait(changed_, lock, std::chrono::seconds(10), [this] { return hanging_ > 0; });
}

std::int64_t FakeBytes::Control::Reached() const {
    const std::lock_guard lock(mutex_);
    return reached_;
}

void FakeBytes::Control::Pass(std::int64_t end) {
    std::unique_lock lock(mutex_);
    reached_ = std::max(reached_, end);
    const auto free = [&] { return hang_ < 0 || end <= hang_; };
    if (free())
        return;
    ++hanging_;
    changed_.notify_all();
    changed_.wait(lock, free);
    --hanging_;
}

FakeBytes::FakeBytes(QByteArray bytes, std::shared_ptr<Control> control, std::shared_ptr<Control> another)
    : bytes_(std::move(bytes)), control_(std::move(control)), another_(std::move(another)) {}

std::unique_ptr<ByteSource> FakeBytes::Another() const {
    return another_ ? std::make_unique<FakeBytes>(bytes_, another_) : nullptr;
}

bool FakeBytes::Open() {
    control_->Pass(1);
    return true;
}

std::int64_t FakeBytes::ReadAt(std::int64_t position, void* buffer, std::size_t bytes) {
    control_->Pass(position + static_cast<std::int64_t>(bytes));
    const std::lock_guard lock(control_->mutex_);
    const auto end = position + static_cast<std::int64_t>(bytes);
    if (control_->fail_ >= 0 && end > control_->fail_)
        return -1;
    const std::int64_t size = control_->cut_ >= 0 ? control_->cut_ : bytes_.size();
    const std::int64_t got = std::max<std::int64_t>(0, std::min(end, size) - position);
    std::memcpy(buffer, bytes_.constData() + position, static_cast<std::size_t>(got));
    return got;
}

OpenedFile::OpenedFile(const QString& path) : OpenedFile(MakeFileSource(QFile::encodeName(path).toStdString())) {}

OpenedFile::OpenedFile(std::unique_ptr<ByteSource> bytes) : file(std::move(bytes)) {
    if (file.WaitUntilOpen())
        decoder = OpenDecoder(file);
}

std::vector<float> DecodeRest(Decoder& decoder, ReadResult* last) {
    std::vector<float> all;
    float piece[2 * 1777];
    std::size_t got = 0;
    ReadResult result = ReadResult::Data;
    while ((result = decoder.Read(piece, 1777, got)) == ReadResult::Data)
        all.insert(all.end(), piece, piece + got * 2);
    if (last != nullptr)
        *last = result;
    return all;
}

float Difference(const std::vector<float>& whole, std::int64_t start, const std::vector<float>& part) {
    const auto offset = static_cast<std::size_t>(start) * 2;
    if (offset + part.size() > whole.size())
        return 9;
    float largest = 0;
    for (std::size_t i = 0; i < part.size(); ++i)
        largest = std::max(largest, std::abs(whole[offset + i] - part[i]));
    return largest;
}

float Peak(const std::vector<float>& stereo, int side, std::int64_t from, std::int64_t to) {
    float peak = 0;
    for (auto frame = static_cast<std::size_t>(from); frame < static_cast<std::size_t>(to); ++frame)
        peak = std::max(peak, std::abs(stereo.at(frame * 2 + static_cast<std::size_t>(side))));
    return peak;
}

} // namespace kalvo::audio::test
