#include "audio/SourceReader.h"

#include "audio/BlockSize.h"
#include "audio/Ramp.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace kalvo::audio {

namespace {

constexpr std::size_t kBufferFrames = 8192; // three blocks at the highest speed, the filter's surroundings included
constexpr std::size_t kFramesAfterStarvation = 4096;

// A damaged file must not be able to poison the filters for good.
void ReplaceImpossible(float* samples, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        samples[i] = std::fabs(samples[i]) <= 16 ? samples[i] : 0;
}

} // namespace

SourceReader::SourceReader(std::unique_ptr<FrameSource> source, int busRate)
    : source_(std::move(source)), busRate_(busRate), buffer_(kBufferFrames) {}

void SourceReader::Seek(std::int64_t frame) {
    gate_.Close();
    source_->Seek(frame);
    target_.store(frame, std::memory_order_relaxed);
    generation_.fetch_add(1, std::memory_order_release);
    gate_.Open();
}

std::int64_t SourceReader::Position() const {
    const bool arrived = applied_.load(std::memory_order_acquire) == generation_.load(std::memory_order_relaxed);
    return (arrived ? published_ : target_).load(std::memory_order_relaxed);
}

void SourceReader::ApplySeek() {
    const std::uint32_t generation = generation_.load(std::memory_order_acquire);
    const std::int64_t target = target_.load(std::memory_order_relaxed);
    buffer_.Reset(target);
    position_ = double(target);
    path_ = Path::Untouched;
    ended_ = false;
    Publish();
    applied_.store(generation, std::memory_order_release);
}

bool SourceReader::Ready(double frequency, bool afterStarvation) {
    TopUp(frequency);
    if (ended_)
        return true;
    const double held = Remaining() + double(source_->Available());
    return held >= double(afterStarvation ? kFramesAfterStarvation : FramesWanted(frequency));
}

std::size_t SourceReader::FramesWanted(double frequency) const {
    const double speed = std::max(1.0, frequency / busRate_);
    return std::size_t(speed * (3 * double(kBlockFrames) + 2 * Resampler::kLookAhead));
}

bool SourceReader::TopUp(double frequency) {
    const std::size_t wanted = FramesWanted(frequency);
    const auto held = std::size_t(std::max(0.0, Remaining()));
    if (held < wanted && !ended_ && gate_.TryEnter()) {
        if (!SeekPending()) {
            const std::size_t frames = std::min(wanted - held, buffer_.Room());
            float* tail = buffer_.Tail(frames);
            const std::size_t got = source_->Read(tail, frames);
            ReplaceImpossible(tail, got * 2);
            buffer_.Grow(got);
            ended_ = source_->AtEnd();
        }
        gate_.Leave();
    }
    // Two blocks of the three: one to be played, one for a fade.
    return ended_ || Remaining() * 3 >= double(wanted) * 2;
}

std::size_t SourceReader::Read(float* stereo, std::size_t frames, double frequency) {
    const double ratio = busRate_ / frequency;
    ChoosePath(ratio);
    const std::size_t playable = Playable(frames, path_ == Path::Resampled ? ratio : 1);
    if (path_ == Path::Direct) {
        CopyDirect(stereo, playable);
        position_ += double(playable);
    } else if (path_ == Path::Crossing) {
        CrossOver(stereo, playable);
    } else {
        resampler_.Process(buffer_, stereo, playable, ratio);
        position_ = resampler_.Position();
    }
    if (AtEnd())
        position_ = double(buffer_.End());
    buffer_.DropBefore(std::int64_t(position_) - Resampler::kHistory);
    Publish();
    return playable;
}

std::size_t SourceReader::Playable(std::size_t frames, double ratio) const {
    const double last = std::ceil(Remaining() * ratio - 1e-6);
    return last <= 0 ? 0 : std::min(frames, std::size_t(last));
}

void SourceReader::ChoosePath(double ratio) {
    if (path_ == Path::Untouched && ratio != 1) {
        resampler_.Start(buffer_, std::int64_t(position_));
        path_ = Path::Resampled;
    } else if (path_ == Path::Untouched) {
        path_ = Path::Direct;
    } else if (path_ == Path::Direct && ratio != 1) {
        resampler_.Start(buffer_, std::int64_t(position_));
        path_ = Path::Crossing;
        crossed_ = 0;
    }
}

void SourceReader::CopyDirect(float* stereo, std::size_t frames) const {
    std::copy_n(buffer_.At(std::int64_t(position_)), frames * 2, stereo);
}

void SourceReader::CrossOver(float* stereo, std::size_t frames) {
    std::array<float, kBlockFrames * 2> resampled;
    CopyDirect(stereo, frames);
    resampler_.Process(buffer_, resampled.data(), frames, 1);
    for (std::size_t i = 0; i < frames; ++i, ++crossed_) {
        const auto share = float(RaisedCosine()[std::min(crossed_, kBlockFrames - 1)]);
        for (std::size_t s = 2 * i; s < 2 * i + 2; ++s)
            stereo[s] += (resampled[s] - stereo[s]) * share;
    }
    position_ = std::round(resampler_.Position());
    if (crossed_ >= kBlockFrames)
        path_ = Path::Resampled;
}

void SourceReader::Publish() {
    published_.store(std::int64_t(position_), std::memory_order_relaxed);
}

} // namespace kalvo::audio
