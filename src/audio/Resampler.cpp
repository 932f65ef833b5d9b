#include "audio/Resampler.h"

#include "audio/BlockSize.h"

#include <samplerate.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <new>

namespace kalvo::audio {

namespace {
constexpr std::array<float, kBlockFrames * 2> kSilence{};
}

void Resampler::Deleter::operator()(SRC_STATE_tag* state) const {
    src_delete(state);
}

Resampler::Resampler() {
    int error = 0;
    state_.reset(src_new(SRC_SINC_FASTEST, 2, &error));
    if (!state_)
        throw std::bad_alloc();
}

Resampler::~Resampler() = default;

void Resampler::Start(const FrameBuffer& buffer, std::int64_t position) {
    src_reset(state_.get());
    ratio_ = 0;
    next_ = std::clamp(position - kHistory, buffer.Begin(), position);
    position_ = double(next_);
    std::array<float, kHistory * 2> passed;
    if (next_ < position)
        Process(buffer, passed.data(), std::size_t(position - next_), 1.0);
}

void Resampler::Process(const FrameBuffer& buffer, float* stereo, std::size_t frames, double ratio) {
    for (std::size_t made = 0; made < frames;)
        made += Feed(buffer, stereo + made * 2, frames - made, ratio);
}

std::size_t Resampler::Feed(const FrameBuffer& buffer, float* stereo, std::size_t frames, double ratio) {
    const double lowest = ratio_ > 0 ? std::min(ratio_, ratio) : ratio;
    const double wanted = position_ + double(frames) / lowest + kLookAhead / std::min(lowest, 1.0);
    const auto missing = std::max<std::int64_t>(16, std::int64_t(std::ceil(wanted)) - next_);
    const std::int64_t held = buffer.End() - next_;

    SRC_DATA data{};
    data.data_in = held > 0 ? buffer.At(next_) : kSilence.data();
    data.input_frames = long(held > 0 ? std::min(missing, held) : std::min<std::int64_t>(missing, kBlockFrames));
    data.data_out = stereo;
    data.output_frames = long(frames);
    data.src_ratio = ratio;
    if (src_process(state_.get(), &data) != 0) {
        std::fill_n(stereo, frames * 2, 0.0F);
        return frames;
    }
    next_ += data.input_frames_used;
    Account(std::size_t(data.output_frames_gen), frames, ratio);
    return std::size_t(data.output_frames_gen);
}

// The converter moves its ratio evenly over the frames asked for; a position that is followed the same way stays exact.
void Resampler::Account(std::size_t made, std::size_t asked, double ratio) {
    if (ratio_ <= 0)
        ratio_ = ratio;
    if (std::fabs(ratio - ratio_) <= 1e-10) {
        position_ += double(made) / ratio_;
        return;
    }
    const double first = ratio_;
    for (std::size_t i = 0; i < made; ++i) {
        ratio_ = first + double(i) * (ratio - first) / double(asked);
        position_ += 1.0 / ratio_;
    }
}

} // namespace kalvo::audio
